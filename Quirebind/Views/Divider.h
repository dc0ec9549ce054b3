// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

namespace quirebind {

/// A hairline between two regions, across the whole width.
class Divider : public QWidget {
 public:
    /// One pixel high, whatever the layout around it.
    Divider();

 protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace quirebind
