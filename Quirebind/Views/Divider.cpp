// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/Divider.h"

#include <QPainter>

#include "Quirebind/Look/Colours.h"

namespace quirebind {

Divider::Divider() {
    setFixedHeight(1);
}

void Divider::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), separator(palette()));
}

}  // namespace quirebind
