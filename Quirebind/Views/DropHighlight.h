// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

namespace quirebind {

/// The teal outline around both columns while files hover over them. Lies on top of them and takes
/// no part in clicks or drops.
class DropHighlight : public QWidget {
 public:
    /// Covers `covered`, of which it becomes a child.
    explicit DropHighlight(QWidget& covered);

 protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace quirebind
