// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/ZoomActions.h"

#include <utility>

#include "Quirebind/Look/Texts.h"
#include "Quirebind/Preview/PageScroller.h"

namespace quirebind {

namespace {

constexpr double kStep = 1.25;

}  // namespace

ZoomActions::ZoomActions(QWidget& view, Calls calls) {
    zoomIn_.setText(text::zoomIn());
    // On many keyboards the plus sign is above the equals sign.
    zoomIn_.setShortcuts(QKeySequence::keyBindings(QKeySequence::ZoomIn)
                         << QKeySequence(Qt::CTRL | Qt::Key_Equal));
    zoomOut_.setText(text::zoomOut());
    zoomOut_.setShortcuts(QKeySequence::ZoomOut);
    fitWidth_.setText(text::fitWidth());
    fitWidth_.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_0));

    const auto zoomBy = std::move(calls.zoomBy);
    QObject::connect(&zoomIn_, &QAction::triggered, &view, [zoomBy] { zoomBy(kStep); });
    QObject::connect(&zoomOut_, &QAction::triggered, &view, [zoomBy] { zoomBy(1 / kStep); });
    QObject::connect(&fitWidth_, &QAction::triggered, &view, std::move(calls.fit));
    view.addActions({&zoomIn_, &zoomOut_, &fitWidth_});
    show(PageScroller::kFitting);
}

void ZoomActions::show(double zoom) {
    zoomIn_.setEnabled(zoom < PageScroller::kLargest);
    zoomOut_.setEnabled(zoom > PageScroller::kSmallest);
    fitWidth_.setEnabled(zoom != PageScroller::kFitting);
}

void ZoomActions::addTo(QMenu& menu) {
    // Assistive technology takes an action for an item of one menu only, which is soon gone.
    for (QAction* action : {&zoomIn_, &zoomOut_, &fitWidth_}) {
        QAction* item = menu.addAction(action->text());
        item->setShortcut(action->shortcut());
        item->setShortcutVisibleInContextMenu(true);
        item->setEnabled(action->isEnabled());
        QObject::connect(item, &QAction::triggered, action, &QAction::trigger);
    }
}

}  // namespace quirebind
