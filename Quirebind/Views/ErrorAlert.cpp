// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/ErrorAlert.h"

#include <QAccessible>
#include <QApplication>
#include <QScreen>
#include <QTextDocument>
#include <QTextOption>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <memory>

#include "Quirebind/Look/AccessibleRole.h"
#include "Quirebind/Look/Texts.h"
#include "Quirebind/Views/Layout.h"
#include "Quirebind/Workflow/ContentView.h"

namespace quirebind {

namespace {

constexpr int kTextWidth = 400;

}  // namespace

ErrorAlert::Message::Message() {
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setAccessibleRole(*this, QAccessible::StaticText);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document()->setDocumentMargin(0);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    viewport()->setAutoFillBackground(false);
    align();
    recolour();
}

void ErrorAlert::Message::setText(const QString& text) {
    setPlainText(text);
    setAccessibleName(text);
    const bool scrolls = textHeight() > sizeHint().height();
    // So that the keyboard scrolls it, or copies what is selected at least.
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::ClickFocus);
    updateGeometry();
}

int ErrorAlert::Message::textHeight() const {
    const std::unique_ptr<QTextDocument> laidOut(document()->clone());
    laidOut->setTextWidth(kTextWidth);
    return static_cast<int>(std::ceil(laidOut->size().height()));
}

QSize ErrorAlert::Message::sizeHint() const {
    const int most = std::min(360, screen()->availableGeometry().height() / 2);
    return {kTextWidth, std::min(most, textHeight())};
}

void ErrorAlert::Message::align() {
    QTextOption option = document()->defaultTextOption();
    const auto side = layoutDirection() == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
    option.setAlignment(Qt::AlignAbsolute | side);
    document()->setDefaultTextOption(option);
}

void ErrorAlert::Message::recolour() {
    QPalette colours;
    colours.setBrush(QPalette::Text, QApplication::palette().windowText());
    setPalette(colours);
}

void ErrorAlert::Message::changeEvent(QEvent* event) {
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) recolour();
    if (event->type() == QEvent::LayoutDirectionChange) align();
    if (event->type() == QEvent::FontChange) updateGeometry();
}

void ErrorAlert::Message::wheelEvent(QWheelEvent* event) {
    // With this key, a text would make its letters larger than those around it.
    if (event->modifiers().testFlag(Qt::ControlModifier))
        event->ignore();
    else
        QTextEdit::wheelEvent(event);
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
