// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/MergeBar.h"

#include <QEvent>
#include <QShortcut>
#include <algorithm>
#include <memory>

#include "Quirebind/Desktop/FileURLs.h"
#include "Quirebind/Desktop/HandOver.h"
#include "Quirebind/Look/ControlStyle.h"
#include "Quirebind/Look/Texts.h"
#include "Quirebind/Views/Layout.h"
#include "Quirebind/Workflow/ContentView.h"

namespace quirebind {

namespace {

constexpr std::size_t kFewestToMerge = 2;
constexpr int kInset = 20;
constexpr int kWidestRow = 1280;  // so that a window fits on a small screen

}  // namespace

MergeBar::MergeBar(ContentView& state)
    : state_(state),
      summary_(TextStyle::headline),
      privacy_(TextStyle::caption, Emphasis::secondary) {
    privacy_.setText(text::privacy());
    showInFinder_.setText(text::showInFinder());
    showInFinder_.setAutoDefault(false);
    showInFinder_.hide();
    connect(&showInFinder_, &QPushButton::clicked, this, [this] { state_.showInFinder(); });
    activity_.hide();
    mergeButton_.setProperty(kProminent, true);
    mergeButton_.setAutoDefault(false);
    connect(&mergeButton_, &QPushButton::clicked, this, [this] { state_.merge(); });
    // As children of the button they are enabled when it is.
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto shortcut = std::make_unique<QShortcut>(QKeySequence(Qt::CTRL | key), &mergeButton_);
        connect(shortcut.get(), &QShortcut::activated, &mergeButton_,
                [this] { mergeButton_.animateClick(); });
        handOver(std::move(shortcut));  // the button owns it
    }
    layout::set(*this,
                layout::padded({kInset, kInset, kInset, kInset},
                               layout::row(layout::kSpacing, layout::column(4, summary_, privacy_),
                                           layout::row(layout::kSpacing, layout::kStretch,
                                                       showInFinder_, activity_, mergeButton_))));
    arrange();
}

int MergeBar::textsWidth() const {
    return std::max(summary_.minimumSizeHint().width(), privacy_.minimumSizeHint().width());
}

int MergeBar::buttonsWidth() const {
    return showInFinder_.minimumSizeHint().width() + activity_.minimumSizeHint().width() +
           mergeButton_.minimumSizeHint().width() + 2 * layout::kSpacing;
}

void MergeBar::arrange() {
    const int row = textsWidth() + layout::kSpacing + buttonsWidth() + 2 * kInset;
    if (auto* content = qobject_cast<QBoxLayout*>(layout()))
        content->setDirection(row > kWidestRow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

QSize MergeBar::minimumSizeHint() const {
    const QSize shown = QWidget::minimumSizeHint();
    const auto* content = qobject_cast<const QBoxLayout*>(layout());
    const bool row = content != nullptr && content->direction() == QBoxLayout::LeftToRight;
    const int width = row ? textsWidth() + layout::kSpacing + buttonsWidth()
                          : std::max(textsWidth(), buttonsWidth());
    return {std::max(shown.width(), width + 2 * kInset), shown.height()};
}

bool MergeBar::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) arrange();
    return QWidget::event(event);
}

void MergeBar::redraw() {
    const auto documents = state_.files().size();
    const bool merging = state_.merging();
    summary_.setText(text::summary(static_cast<std::int64_t>(documents), state_.pageCount()));
    const auto& output = state_.output();
    showInFinder_.setVisible(output.has_value());
    showInFinder_.setAccessibleDescription(output ? displayName(*output) : QString());
    activity_.setVisible(merging);
    mergeButton_.setText(merging ? text::merging() : text::mergePDFs());
    mergeButton_.setEnabled(documents >= kFewestToMerge && !merging);
}

}  // namespace quirebind
