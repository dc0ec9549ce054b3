// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>

namespace quirebind::benchmarks {

[[nodiscard]] inline double milliseconds(const QElapsedTimer& timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Measures how long each event takes to be handled: for so long the window answers nobody.
class MeasuredApplication : public QApplication {
 public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        if (depth_ > 0) return QApplication::notify(receiver, event);
        ++depth_;
        QElapsedTimer timer;
        timer.start();
        const bool handled = QApplication::notify(receiver, event);
        longest = std::max(longest, milliseconds(timer));
        --depth_;
        return handled;
    }

    double longest = 0;  ///< In milliseconds, since somebody last set it to 0.

 private:
    int depth_ = 0;
};

}  // namespace quirebind::benchmarks
