// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "Quirebind/Look/Texts.h"
#include "Quirebind/Preview/OrNothing.h"
#include "Quirebind/Preview/PDFPreview.h"
#include "Quirebind/Preview/RenderService.h"

// What the user does with a document that is shown: scroll, select, copy, follow links.

namespace quirebind {

namespace {

constexpr double kOverlap = 40;      // of what was in sight, that stays so when it is paged
constexpr double kLine = 40;         // pixels that an arrow key scrolls by
constexpr double kWheelNotch = 120;  // the toolkit's units for one notch of a wheel
constexpr double kZoomOfNotch = 1.25;

}  // namespace

void PDFPreview::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copy();
        return;
    }
    if (event->matches(QKeySequence::SelectAll)) {
        selection_.selectAll();
        viewport()->update();
        service_.wake();
        return;
    }
    if (event->matches(QKeySequence::Back)) {
        goBack();
        return;
    }
    const bool enters = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enters && focusedLinkShows()) {
        followFocusedLink();
        return;
    }
    const double page = std::max(viewport()->height() - kOverlap, kLine);
    const bool shift = (event->modifiers() & Qt::ShiftModifier) != 0;
    switch (event->key()) {
        case Qt::Key_Home:
            scrollTo(0);
            return;
        case Qt::Key_End:
            scrollTo(column_.height());
            return;
        case Qt::Key_PageUp:
            scrollTo(top() - page);
            return;
        case Qt::Key_PageDown:
            scrollTo(top() + page);
            return;
        case Qt::Key_Space:
            scrollTo(top() + (shift ? -page : page));
            return;
        case Qt::Key_Up:
            scrollTo(top() - kLine);
            return;
        case Qt::Key_Down:
            scrollTo(top() + kLine);
            return;
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

void PDFPreview::wheelEvent(QWheelEvent* event) {
    event->accept();
    if ((event->modifiers() & Qt::ControlModifier) != 0) {
        zoomBy(std::pow(kZoomOfNotch, event->angleDelta().y() / kWheelNotch), event->position());
        return;
    }
    // A touchpad says how many pixels; a wheel, how many notches.
    const bool fine = !event->pixelDelta().isNull();
    const double lines = QApplication::wheelScrollLines();
    QPointF by = fine ? QPointF(event->pixelDelta())
                      : QPointF(event->angleDelta()) / kWheelNotch * lines * kLine / 2;
    if ((event->modifiers() & Qt::ShiftModifier) != 0) by = by.transposed();
    if (by.y() != 0) scrollTo(top() - by.y());
    if (by.x() != 0) scrollAcrossTo(left() - by.x());
}

// Selecting.

TextSelection::Position PDFPreview::positionAt(const QPointF& point) const {
    const std::size_t page = column_.pageAt(top() + point.y());
    return {page, (point - pageRect(page).topLeft()) / column_.scale()};
}

void PDFPreview::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || column_.count() == 0) return;
    const TextSelection::Position position = positionAt(event->position());
    linkFocus_.reset();
    selecting_ = true;
    pressed_ = event->position();
    const bool third = sinceDoubleClick_.isValid() &&
                       !sinceDoubleClick_.hasExpired(QApplication::doubleClickInterval());
    sinceDoubleClick_.invalidate();
    if (third)
        selection_.begin(position, TextSelection::Unit::line);
    else if ((event->modifiers() & Qt::ShiftModifier) != 0 && !selection_.isEmpty())
        selection_.extend(position);
    else
        selection_.begin(position);
    viewport()->update();
    service_.wake();
}

void PDFPreview::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || column_.count() == 0) return;
    sinceDoubleClick_.start();
    selection_.begin(positionAt(event->position()), TextSelection::Unit::word);
    viewport()->update();
    service_.wake();
}

/// A hand over a link, a text cursor over text.
void PDFPreview::showPointer(const QPointF& point) {
    const TextSelection::Position position = positionAt(point);
    if (!selecting_ && links_.isAt(*document_, position.page, position.point)) {
        viewport()->setCursor(Qt::PointingHandCursor);
        return;
    }
    const PageText* text = selection_.pageText(position.page);
    const bool over = text != nullptr && std::ranges::any_of(text->areas, [&](const QRectF& area) {
                          return area.contains(position.point);
                      });
    viewport()->setCursor(over ? Qt::IBeamCursor : Qt::ArrowCursor);
}

void PDFPreview::mouseMoveEvent(QMouseEvent* event) {
    if (column_.count() == 0) return;
    showPointer(event->position());
    if (!selecting_) return;
    const double y = event->position().y();
    if (y < 0) scrollTo(top() + y);
    if (y > viewport()->height()) scrollTo(top() + y - viewport()->height());
    selection_.extend(positionAt(event->position()));
    viewport()->update();
    service_.wake();
}

void PDFPreview::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const bool clicked = selecting_ && (event->position() - pressed_).manhattanLength() <
                                           QApplication::startDragDistance();
    selecting_ = false;
    if (!clicked || column_.count() == 0 || event->modifiers() != Qt::NoModifier) return;
    const TextSelection::Position position = positionAt(event->position());
    if (const auto target = links_.target(*document_, position.page, position.point)) goTo(*target);
}

// Links.

void PDFPreview::goTo(const PagePosition& target) {
    wayBack_.push_back(column_.anchorAt(top()));
    scrollTo(column_.pageTop(target.page) + target.y * column_.scale() - PageColumn::kGap);
}

QRectF PDFPreview::linkRect(const LinkFocus::Link& link) const {
    const double scale = column_.scale();
    const QRectF area(link.area.x * scale, link.area.y * scale, link.area.width * scale,
                      link.area.height * scale);
    return area.translated(pageRect(link.page).topLeft());
}

bool PDFPreview::focusedLinkShows() const {
    const auto& link = linkFocus_.current();
    return link && linkRect(*link).intersects(QRectF(viewport()->rect()));
}

std::vector<LinkFocus::Link> PDFPreview::linksInSight() const {
    if (column_.count() == 0) return {};
    return orNothing([this] {
        std::vector<LinkFocus::Link> found;
        const QRectF view(viewport()->rect());
        const Range pages = visible();
        for (std::size_t page = pages.first; page <= pages.last; ++page) {
            for (PageLink& area : document_->pageLinks(page)) {
                LinkFocus::Link link{page, std::move(area)};
                if (linkRect(link).intersects(view) && document_->positionOf(link.area))
                    found.push_back(std::move(link));
            }
        }
        return found;
    });
}

std::optional<PagePosition> PDFPreview::targetOf(const PageLink& link) const {
    return orNothing([&] { return document_->positionOf(link); });
}

bool PDFPreview::focusNextPrevChild(bool next) {
    const bool atLink = linkFocus_.current().has_value();
    const bool moved = (next || atLink) && linkFocus_.move(linksInSight(), next);
    viewport()->update();
    tellPosition();
    // Before the first link comes the view itself.
    return moved || (!next && atLink) || QAbstractScrollArea::focusNextPrevChild(next);
}

void PDFPreview::followFocusedLink() {
    if (const auto target = targetOf(linkFocus_.current()->area)) goTo(*target);
}

void PDFPreview::goBack() {
    if (wayBack_.empty()) return;
    scrollTo(column_.positionOf(wayBack_.back()));
    wayBack_.pop_back();
}

void PDFPreview::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    QAction* copyAction = menu.addAction(text::copy());
    copyAction->setShortcut(QKeySequence::Copy);
    copyAction->setShortcutVisibleInContextMenu(true);
    copyAction->setEnabled(!selection_.isEmpty());
    connect(copyAction, &QAction::triggered, this, [this] { copy(); });
    menu.addSeparator();
    // Assistive technology takes an action for an item of one menu only, which is soon gone.
    for (QAction* action : {&zoomIn_, &zoomOut_, &fitWidth_}) {
        QAction* item = menu.addAction(action->text());
        item->setShortcut(action->shortcut());
        item->setShortcutVisibleInContextMenu(true);
        item->setEnabled(action->isEnabled());
        connect(item, &QAction::triggered, action, &QAction::trigger);
    }
    menu.exec(event->globalPos());
}

void PDFPreview::copy() {
    copying_ = !selection_.isEmpty();
    if (copying_) finishCopying();
    service_.wake();
}

void PDFPreview::finishCopying() {
    const auto text = selection_.text();
    if (!text) return;  // the rest is still to come
    copying_ = false;
    if (!text->isEmpty()) QApplication::clipboard()->setText(*text);
}

// What is told to assistive technology.

void PDFPreview::tellPosition() {
    if (column_.count() == 0) return;
    const auto told = [this](std::size_t page) {
        return text::pagePosition(static_cast<std::int64_t>(page) + 1,
                                  static_cast<std::int64_t>(column_.count()));
    };
    // Of a link, where it leads.
    if (hasFocus() && focusedLinkShows()) {
        if (const auto target = targetOf(linkFocus_.current()->area)) {
            setAccessibleDescription(told(target->page));
            return;
        }
    }
    QString position = told(currentPage());
    if (cannotBeDrawn(currentPage())) position += QLatin1Char('\n') + text::alertTitle();
    const QString words = currentPageText();
    setAccessibleDescription(words.isEmpty() ? position : position + QLatin1Char('\n') + words);
}

void PDFPreview::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) recolour();
    viewport()->update();
}

void PDFPreview::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    // Who comes from behind comes by the last link first.
    if (event->reason() == Qt::BacktabFocusReason) linkFocus_.move(linksInSight(), false);
    tellPosition();
    viewport()->update();
}

void PDFPreview::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    tellPosition();
    viewport()->update();
}

bool PDFPreview::event(QEvent* event) {
    if (event->type() == QEvent::Show || event->type() == QEvent::ScreenChangeInternal)
        service_.wake();
    return QAbstractScrollArea::event(event);
}

}  // namespace quirebind
