// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/HeaderBar.h"

#include <QKeySequence>

#include "Quirebind/Look/Texts.h"
#include "Quirebind/Views/Layout.h"
#include "Quirebind/Workflow/ContentView.h"

namespace quirebind {

HeaderBar::HeaderBar(ContentView& state)
    : icon_(QStringLiteral("doc.on.doc.fill"), Tint::accent, 2.3),
      title_(TextStyle::title),
      tagline_(TextStyle::body, Emphasis::secondary) {
    title_.setText(text::applicationName());
    title_.setBold(QFont::Bold);
    tagline_.setText(text::tagline());

    addButton_.setText(text::addPDFs());
    addButton_.setIcon(symbol(QStringLiteral("plus"), Tint::text));
    addButton_.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    addButton_.setAutoDefault(false);
    connect(&addButton_, &QPushButton::clicked, this, [&state] { state.chooseFiles(); });

    layout::set(*this,
                layout::padded({24, 24, 24, 24}, layout::row(layout::kSpacing + 4, icon_,
                                                             layout::column(3, title_, tagline_),
                                                             layout::kStretch, addButton_)));
}

}  // namespace quirebind
