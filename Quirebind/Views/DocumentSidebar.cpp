// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/DocumentSidebar.h"

#include <algorithm>

#include "Quirebind/Look/Symbol.h"
#include "Quirebind/Look/Texts.h"
#include "Quirebind/Views/Layout.h"
#include "Quirebind/Workflow/ContentView.h"

namespace quirebind {

namespace {

constexpr int kMinimumWidth = 310;
constexpr int kIdealWidth = 360;

}  // namespace

DocumentSidebar::ButtonRow::ButtonRow(ContentView& state) {
    const auto prepare = [this](QPushButton& button, const QString& title, const char* icon,
                                auto operation) {
        button.setText(title);
        button.setIcon(symbol(QLatin1String(icon), Tint::text));
        button.setAutoDefault(false);
        connect(&button, &QPushButton::clicked, this, operation);
    };
    prepare(up_, text::up(), "arrow.up", [&state] { state.move(-1); });
    prepare(down_, text::down(), "arrow.down", [&state] { state.move(1); });
    prepare(remove_, text::remove(), "minus", [&state] { state.removeSelected(); });
    layout::set(*this, layout::padded({12, 0, 12, 12}, layout::row(layout::kSpacing, up_, down_,
                                                                   layout::kStretch, remove_)));
}

DocumentSidebar::DocumentSidebar(ContentView& state)
    : state_(state),
      caption_(TextStyle::caption, Emphasis::secondary),
      count_(TextStyle::body, Emphasis::secondary),
      emptyState_(QStringLiteral("doc.badge.plus"), text::dropTitle(), text::dropDescription()),
      list_(state),
      buttons_(state) {
    caption_.setText(text::yourDocuments());
    caption_.setBold(QFont::DemiBold);
    emptyState_.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    list_.hide();
    buttons_.hide();
    layout::set(*this, layout::column(
                           12,
                           layout::padded({16, 16, 16, 0}, layout::row(layout::kSpacing, caption_,
                                                                       layout::kStretch, count_)),
                           emptyState_, list_, buttons_));
}

QSize DocumentSidebar::sizeHint() const {
    return {std::max(kIdealWidth, minimumSizeHint().width()), QWidget::sizeHint().height()};
}

QSize DocumentSidebar::minimumSizeHint() const {
    // The buttons count while they are hidden, too, so that the first document moves no divider.
    return {std::max(kMinimumWidth, buttons_.minimumSizeHint().width()),
            QWidget::minimumSizeHint().height()};
}

void DocumentSidebar::redraw() {
    const auto& files = state_.files();
    count_.setText(text::documentCount(std::ssize(files)));
    list_.redraw();
    buttons_.setEnabled(state_.selection().has_value());
    // What goes is hidden before what comes is shown, so that both never claim space at once.
    const bool empty = files.empty();
    (empty ? static_cast<QWidget&>(list_) : emptyState_).hide();
    if (empty) buttons_.hide();
    emptyState_.setVisible(empty);
    list_.setVisible(!empty);
    buttons_.setVisible(!empty);
}

}  // namespace quirebind
