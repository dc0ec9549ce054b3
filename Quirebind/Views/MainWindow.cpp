// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QScreen>
#include <array>

#include "Quirebind/Desktop/HandOver.h"
#include "Quirebind/Desktop/ScreenRoom.h"
#include "Quirebind/Look/Texts.h"
#include "Quirebind/Views/Layout.h"

namespace quirebind {

namespace {

constexpr QSize kMinimumSize{760, 520};
constexpr QSize kDefaultSize{940, 640};

bool contains(const QWidget& region, const QWidget* widget) {
    return widget != nullptr && (&region == widget || region.isAncestorOf(widget));
}

/// What the tab key would reach first of a region; null where there is nothing.
QWidget* firstToFocus(QWidget& region) {
    QWidget* widget = &region;
    do {
        const bool takesFocus = contains(region, widget) && widget->isEnabled() &&
                                widget->isVisible() &&
                                (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
        if (takesFocus) return widget;
        widget = widget->nextInFocusChain();
    } while (widget != &region);
    return nullptr;
}

}  // namespace

MainWindow::MainWindow(const WindowServices& services)
    : services_(services),
      desktop_(services.makeDesktop(*this)),
      redraws_(services.mainThread, [this] { redraw(); }),
      state_({services.mainThread, *desktop_, services.background, services.merge}, redraws_),
      header_(state_),
      sidebar_(state_),
      preview_(state_, services.renderer),
      split_(state_, sidebar_, preview_),
      mergeBar_(state_),
      announcement_(state_),
      alert_(state_, *this),
      closing_(this) {
    setWindowTitle(text::applicationName());
    layout::set(content_,
                layout::column(0, header_, upperDivider_, split_, lowerDivider_, mergeBar_));
    setCentralWidget(&content_);
    announcement_.setParent(this);  // not of the content, which is disabled during a merge
    keepRoom();
    resize(kDefaultSize.boundedTo(roomOn(*screen())).expandedTo(minimumSize()));

    closing_.setWindowModality(Qt::WindowModal);
    closing_.setWindowTitle(text::applicationName());
    closing_.setText(text::closingTitle());
    closing_.setInformativeText(text::closingDescription());
    QPushButton* keepOpen = closing_.addButton(text::keepOpen(), QMessageBox::RejectRole);
    closing_.setEscapeButton(keepOpen);
    connect(&closing_, &QDialog::finished, this, [this] { closesAfterMerge_ = false; });

    addShortcuts();
    redraw();
    header_.addButton().setFocus();
}

void MainWindow::keepRoom() {
    setMinimumSize(kMinimumSize.boundedTo(roomOn(*screen())).expandedTo(minimumSizeHint()));
}

bool MainWindow::event(QEvent* event) {
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::LayoutRequest) keepRoom();
    return handled;
}

void MainWindow::redraw() {
    if (state_.merging() && content_.isEnabled()) {
        focusBeforeMerge_ = focusWidget();
        content_.setEnabled(false);
    }
    // What of the sidebar has the focus goes with the last document.
    if (state_.files().empty() && contains(sidebar_, focusWidget())) header_.addButton().setFocus();
    sidebar_.redraw();
    preview_.redraw();
    split_.redraw();
    mergeBar_.redraw();
    announcement_.redraw();
    if (!state_.merging() && !content_.isEnabled()) {
        content_.setEnabled(true);
        if (focusBeforeMerge_ != nullptr) focusBeforeMerge_->setFocus();
    }
    if (!state_.merging() && closesAfterMerge_) {
        closing_.hide();
        closesAfterMerge_ = false;
        if (!state_.error()) {
            close();
            return;
        }
    }
    alert_.redraw();
}

void MainWindow::addShortcuts() {
    const auto onKeys = [this](const QList<QKeySequence>& keys, auto operation) {
        auto action = std::make_unique<QAction>(this);
        action->setShortcuts(keys);
        connect(action.get(), &QAction::triggered, this, operation);
        addAction(handOver(std::move(action)));  // the window owns it
    };
    onKeys({QKeySequence(Qt::CTRL | Qt::Key_N)}, [this] { services_.openWindow(); });
    onKeys({QKeySequence(Qt::CTRL | Qt::Key_W)}, [this] { close(); });
    onKeys({QKeySequence(Qt::CTRL | Qt::Key_Q)}, [this] { services_.quit(); });
    onKeys({QKeySequence(Qt::SHIFT | Qt::Key_F10)}, [this] { openMenu(); });
    onKeys({QKeySequence(Qt::Key_F6)}, [this] { focusRegion(1); });
    onKeys({QKeySequence(Qt::SHIFT | Qt::Key_F6)}, [this] { focusRegion(-1); });
}

void MainWindow::focusRegion(int direction) {
    const std::array<QWidget*, 4> regions{&header_, &sidebar_, &preview_, &mergeBar_};
    const auto count = static_cast<int>(regions.size());
    int at = direction > 0 ? count - 1 : 0;  // where nothing has the focus, begin at the end
    for (int i = 0; i < count; ++i)
        if (contains(*regions[static_cast<std::size_t>(i)], focusWidget())) at = i;
    for (int tried = 0; tried < count; ++tried) {
        at = (at + direction + count) % count;
        if (QWidget* target = firstToFocus(*regions[static_cast<std::size_t>(at)])) {
            setAttribute(Qt::WA_KeyboardFocusChange);  // shows where the focus is
            target->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (state_.merging()) {
        event->ignore();
        waitToClose();
        return;
    }
    event->accept();
    closeMenu();
    services_.closed(*this);
}

void MainWindow::waitToClose() {
    closesAfterMerge_ = true;
    closing_.open();
}

void MainWindow::openMenu() {
    QWidget* target = focusWidget();
    if (target == nullptr) return;
    const QPoint centre = target->rect().center();
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, centre, target->mapToGlobal(centre));
    QApplication::sendEvent(target, &asked);
}

void MainWindow::closeMenu() const {
    QWidget* menu = QApplication::activePopupWidget();
    const QWidget* owner = menu != nullptr ? menu->parentWidget() : nullptr;
    if (owner != nullptr && owner->window() == this) menu->close();
}

}  // namespace quirebind
