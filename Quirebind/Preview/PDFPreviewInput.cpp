// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
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
    if (actOn(*event)) return;
    if (const auto y = scrollTargetOf(*event))
        scroller_.scrollTo(*y);
    else
        QAbstractScrollArea::keyPressEvent(event);
}

bool PDFPreview::actOn(const QKeyEvent& event) {
    const bool enters = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (event.matches(QKeySequence::Copy)) {
        copy();
    } else if (event.matches(QKeySequence::SelectAll)) {
        selectAll();
    } else if (event.matches(QKeySequence::Back)) {
        goBack();
    } else if (enters && focusedLinkShows()) {
        followFocusedLink();
    } else {
        return false;
    }
    return true;
}

std::optional<double> PDFPreview::scrollTargetOf(const QKeyEvent& event) const {
    const double top = scroller_.top();
    const double page = std::max(viewport()->height() - kOverlap, kLine);
    const bool shift = (event.modifiers() & Qt::ShiftModifier) != 0;
    switch (event.key()) {
        case Qt::Key_Home:
            return 0;
        case Qt::Key_End:
            return column().height();
        case Qt::Key_PageUp:
            return top - page;
        case Qt::Key_PageDown:
            return top + page;
        case Qt::Key_Space:
            return shift ? top - page : top + page;
        case Qt::Key_Up:
            return top - kLine;
        case Qt::Key_Down:
            return top + kLine;
        default:
            return std::nullopt;
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
    if (by.y() != 0) scroller_.scrollTo(scroller_.top() - by.y());
    if (by.x() != 0) scroller_.scrollAcrossTo(scroller_.left() - by.x());
}

// Selecting.

TextSelection::Position PDFPreview::positionAt(const QPointF& point) const {
    const std::size_t page = scroller_.pageAt(point);
    return {page, scroller_.pointOn(page, point)};
}

void PDFPreview::selectAll() {
    selection_.selectAll();
    viewport()->update();
    service_.wake();
}

void PDFPreview::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || column().count() == 0) return;
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
    if (event->button() != Qt::LeftButton || column().count() == 0) return;
    sinceDoubleClick_.start();
    selection_.begin(positionAt(event->position()), TextSelection::Unit::word);
    viewport()->update();
    service_.wake();
}

/// A hand over a link, a text cursor over text.
void PDFPreview::showPointer(const QPointF& point) {
    const TextSelection::Position position = positionAt(point);
    if (!selecting_ && links_.isAt(shown_->pdf(), position.page, position.point)) {
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
    if (column().count() == 0) return;
    showPointer(event->position());
    if (!selecting_) return;
    const double y = event->position().y();
    if (y < 0) scroller_.scrollTo(scroller_.top() + y);
    if (y > viewport()->height()) scroller_.scrollTo(scroller_.top() + y - viewport()->height());
    selection_.extend(positionAt(event->position()));
    viewport()->update();
    service_.wake();
}

void PDFPreview::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const bool clicked = selecting_ && (event->position() - pressed_).manhattanLength() <
                                           QApplication::startDragDistance();
    selecting_ = false;
    if (!clicked || column().count() == 0 || event->modifiers() != Qt::NoModifier) return;
    const TextSelection::Position position = positionAt(event->position());
    if (const auto target = links_.target(shown_->pdf(), position.page, position.point))
        goTo(*target);
}

// Links.

void PDFPreview::goTo(const PagePosition& target) {
    wayBack_.push_back(scroller_.place());
    scroller_.scrollTo(column().pageTop(target.page) + target.y * column().scale() -
                       PageColumn::kGap);
}

QRectF PDFPreview::linkRect(const LinkFocus::Link& link) const {
    const PageLink& area = link.area;
    return scroller_.rectOn(link.page, {area.x, area.y, area.width, area.height});
}

bool PDFPreview::focusedLinkShows() const {
    const auto& link = linkFocus_.current();
    return link && linkRect(*link).intersects(QRectF(viewport()->rect()));
}

std::vector<LinkFocus::Link> PDFPreview::linksInSight() const {
    if (column().count() == 0) return {};
    return orNothing([this] {
        std::vector<LinkFocus::Link> found;
        const QRectF view(viewport()->rect());
        const PageScroller::Range pages = scroller_.visible();
        for (std::size_t page = pages.first; page <= pages.last; ++page) {
            for (PageLink& area : shown_->pdf().pageLinks(page)) {
                LinkFocus::Link link{page, std::move(area)};
                if (linkRect(link).intersects(view) && shown_->pdf().positionOf(link.area))
                    found.push_back(std::move(link));
            }
        }
        return found;
    });
}

std::optional<PagePosition> PDFPreview::targetOf(const PageLink& link) const {
    return orNothing([&] { return shown_->pdf().positionOf(link); });
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
    scroller_.scrollTo(wayBack_.back());
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
    zoomActions_.addTo(menu);
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
    if (column().count() == 0) return;
    const auto told = [this](std::size_t page) {
        return text::pagePosition(static_cast<std::int64_t>(page) + 1,
                                  static_cast<std::int64_t>(column().count()));
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
