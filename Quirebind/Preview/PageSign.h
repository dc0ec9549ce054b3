// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QIcon>
#include <QPainter>
#include <QRectF>

namespace quirebind {

/// What a page shows that cannot be drawn: a quiet sign, so that it is not taken for an empty one.
class PageSign {
 public:
    /// Needs the QApplication.
    PageSign();

    /// Draws it in the middle of what shows of `page` in `view`, so that it is also seen of a page
    /// that is longer than the view. Both in the painter's coordinates.
    void draw(QPainter& painter, const QRectF& page, const QRectF& view) const;

 private:
    QIcon icon_;
};

}  // namespace quirebind
