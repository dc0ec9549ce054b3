// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProgressBar>
#include <QTimer>

namespace quirebind {

/// Spins while something is going on of which nobody knows how long it takes, or stands still where
/// the user wants nothing to move. Says so to assistive technology as a progress bar without a
/// value.
class ActivityIndicator : public QProgressBar {
 public:
    /// Moves while it is shown.
    ActivityIndicator();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

 private:
    [[nodiscard]] bool mayMove() const;

    QTimer timer_;
    int step_ = 0;
};

}  // namespace quirebind
