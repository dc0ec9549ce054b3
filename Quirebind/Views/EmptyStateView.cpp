// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/EmptyStateView.h"

#include <QResizeEvent>
#include <algorithm>

#include "Quirebind/Views/Layout.h"

namespace quirebind {

namespace {

constexpr int kNarrowest = 300;  // no region is; but what is not laid out yet has some width, too

}  // namespace

EmptyStateView::EmptyStateView(const QString& symbolName, const QString& title,
                               const QString& description)
    : symbol_(symbolName, Tint::secondary, 3.2),
      title_(TextStyle::title2),
      description_(TextStyle::body, Emphasis::secondary) {
    title_.setText(title);
    title_.setBold(QFont::Bold);
    description_.setText(description);
    for (TextLabel* label : {&title_, &description_}) {
        label->setAlignment(Qt::AlignCenter);
        label->setWordWrap(true);
    }
    layout::set(*this, layout::padded({16, 16, 16, 16},
                                      layout::column(8, layout::kStretch,
                                                     layout::Aligned{symbol_, Qt::AlignHCenter},
                                                     title_, description_, layout::kStretch)));
}

QSize EmptyStateView::minimumSizeHint() const {
    const QSize least = QWidget::minimumSizeHint();
    return {least.width(), std::max(least.height(), heightForWidth(std::max(width(), kNarrowest)))};
}

void EmptyStateView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // What is around it does not ask for a height that goes with a width.
    if (event->size().width() != event->oldSize().width()) updateGeometry();
}

}  // namespace quirebind
