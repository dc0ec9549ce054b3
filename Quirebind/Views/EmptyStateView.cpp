// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/EmptyStateView.h"

#include "Quirebind/Views/Layout.h"

namespace quirebind {

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

}  // namespace quirebind
