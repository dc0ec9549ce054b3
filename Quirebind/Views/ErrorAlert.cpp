// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/ErrorAlert.h"

#include <QAccessible>
#include <QScreen>
#include <algorithm>

#include "Quirebind/Views/AccessibleRole.h"
#include "Quirebind/Views/Layout.h"
#include "Quirebind/Views/Texts.h"
#include "Quirebind/Workflow/ContentView.h"

namespace quirebind {

namespace {

constexpr int kTextWidth = 400;

}  // namespace

ErrorAlert::Message::Message() : label_(TextStyle::body) {
    label_.setWordWrap(true);
    label_.setAlignment((label_.alignment() & Qt::AlignHorizontal_Mask) | Qt::AlignTop);
    label_.setTextInteractionFlags(Qt::TextSelectableByMouse);
    setAccessibleRole(*this, QAccessible::Paragraph);
    setAccessibleName(text::alertTitle());
    setWidget(&label_);
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    viewport()->setAutoFillBackground(false);
    label_.setAutoFillBackground(false);
}

void ErrorAlert::Message::setText(const QString& text) {
    label_.setText(text);
    const bool scrolls = label_.heightForWidth(kTextWidth) > sizeHint().height();
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);  // so that the keyboard scrolls it
    updateGeometry();
}

QSize ErrorAlert::Message::sizeHint() const {
    const int most = std::min(360, screen()->availableGeometry().height() / 2);
    return {kTextWidth, std::min(most, label_.heightForWidth(kTextWidth))};
}

ErrorAlert::ErrorAlert(ContentView& state, QWidget& window)
    : QDialog(&window),
      state_(state),
      icon_(QStringLiteral("exclamationmark.triangle"), Tint::accent, 2.4),
      title_(TextStyle::headline) {
    setWindowModality(Qt::WindowModal);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowTitle(text::applicationName());
    setAccessibleName(text::alertTitle());
    title_.setText(text::alertTitle());
    title_.setWordWrap(true);
    ok_.setText(text::ok());
    ok_.setDefault(true);
    connect(&ok_, &QPushButton::clicked, this, [this] { accept(); });
    // However it is closed, by the button, Escape or the window manager.
    connect(this, &QDialog::finished, this, [this] { state_.dismissError(); });
    auto content = layout::padded(
        {24, 24, 24, 20}, layout::column(20,
                                         layout::row(16, layout::Aligned{icon_, Qt::AlignTop},
                                                     layout::column(8, title_, message_)),
                                         layout::row(layout::kSpacing, layout::kStretch, ok_)));
    content->setSizeConstraint(QLayout::SetFixedSize);
    layout::set(*this, std::move(content));
}

void ErrorAlert::redraw() {
    const auto& error = state_.error();
    if (!error) {
        if (isVisible()) hide();
        return;
    }
    const QString text = QString::fromStdString(*error);
    if (isVisible() && text == shown_) return;
    shown_ = text;
    message_.setText(text);
    setAccessibleDescription(text);
    if (isVisible()) return;
    ok_.setFocus();
    open();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

}  // namespace quirebind
