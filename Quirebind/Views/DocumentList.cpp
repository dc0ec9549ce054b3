// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/DocumentList.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>
#include <memory>
#include <utility>

#include "Quirebind/Desktop/HandOver.h"
#include "Quirebind/Look/Colours.h"
#include "Quirebind/Look/Symbol.h"
#include "Quirebind/Look/Texts.h"
#include "Quirebind/Workflow/ContentView.h"

namespace quirebind {

namespace {

constexpr int kBesidePointer = 12;

QString rowType() {
    return QStringLiteral("application/x-quirebind-row");
}

}  // namespace

DocumentList::DocumentList(ContentView& state) : state_(state) {
    setModel(&model_);
    setItemDelegate(&delegate_);
    setSelectionMode(SingleSelection);
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(NoFrame);
    viewport()->setBackgroundRole(QPalette::Window);
    setMouseTracking(true);
    setDragEnabled(true);
    setDropIndicatorShown(false);  // it has a line of its own
    setDragDropMode(InternalMove);
    setAcceptDrops(false);
    viewport()->setAcceptDrops(false);
    setAttribute(Qt::WA_MacShowFocusRect, false);
    setAccessibleName(text::yourDocuments());
}

void DocumentList::redraw() {
    const QScopedValueRollback following(followingState_, true);
    model_.sync(state_.files());
    const auto& selection = state_.selection();
    const QModelIndex selected = selection ? model_.indexOf(*selection) : QModelIndex();
    if (!selected.isValid()) {
        selectionModel()->clear();
    } else if (!selectionModel()->isSelected(selected) || currentIndex() != selected) {
        selectionModel()->setCurrentIndex(selected, QItemSelectionModel::ClearAndSelect);
        scrollTo(selected);
    }
}

void DocumentList::selectionChanged(const QItemSelection& selected,
                                    const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    if (followingState_) return;
    const QModelIndexList rows = selectionModel()->selectedIndexes();
    state_.setSelection(rows.isEmpty() ? std::nullopt : model_.idAt(rows.constFirst()));
}

void DocumentList::mousePressEvent(QMouseEvent* event) {
    if (!indexAt(event->position().toPoint()).isValid()) selectionModel()->clear();
    QListView::mousePressEvent(event);
}

void DocumentList::keyPressEvent(QKeyEvent* event) {
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool plain = modifiers == Qt::NoModifier;
    const bool alt = modifiers == Qt::AltModifier;
    const bool selected = state_.selection().has_value();
    switch (event->key()) {
        case Qt::Key_Delete:
            if (!plain) break;
            if (selected) state_.removeSelected();
            return;
        case Qt::Key_Up:
            if (!alt) break;
            if (selected) state_.move(-1);
            return;
        case Qt::Key_Down:
            if (!alt) break;
            if (selected) state_.move(1);
            return;
        default:
            break;
    }
    QListView::keyPressEvent(event);
}

void DocumentList::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex row = byMouse ? indexAt(event->pos()) : currentIndex();
    if (!row.isValid()) return;
    QMenu menu(this);
    const auto offer = [&](const QString& title, const char* icon, const QKeySequence& keys,
                           auto operation) {
        QAction* action = menu.addAction(symbol(QLatin1String(icon), Tint::text), title);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetShortcut);  // shown only: the list has the keys
        action->setShortcutVisibleInContextMenu(true);
        connect(action, &QAction::triggered, this, operation);
    };
    offer(text::up(), "arrow.up", QKeySequence(Qt::ALT | Qt::Key_Up), [this] { state_.move(-1); });
    offer(text::down(), "arrow.down", QKeySequence(Qt::ALT | Qt::Key_Down),
          [this] { state_.move(1); });
    menu.addSeparator();
    offer(text::remove(), "minus", QKeySequence(Qt::Key_Delete),
          [this] { state_.removeSelected(); });
    const QPoint below = viewport()->mapToGlobal(visualRect(row).center());
    menu.exec(byMouse ? event->globalPos() : below);
}

// Reordering.

void DocumentList::startDrag(Qt::DropActions) {
    const QModelIndex row = currentIndex();
    const auto id = model_.idAt(row);
    if (!id) return;
    drag_ = OwnDrag{*id, std::nullopt, std::nullopt};
    viewport()->setAcceptDrops(true);
    auto content = std::make_unique<QMimeData>();
    content->setData(rowType(), {});
    auto drag = std::make_unique<QDrag>(this);
    drag->setMimeData(handOver(std::move(content)));  // the drag owns it
    drag->setPixmap(picture(row));
    drag->setHotSpot({-kBesidePointer, -kBesidePointer});
    handOver(std::move(drag))->exec(Qt::MoveAction);  // the toolkit deletes it
    viewport()->setAcceptDrops(false);

    const OwnDrag ended = *std::exchange(drag_, std::nullopt);
    viewport()->update();
    const QModelIndex source = model_.indexOf(ended.id);  // where it is by now
    if (ended.destination && source.isValid())
        state_.move({static_cast<std::size_t>(source.row())},
                    static_cast<std::size_t>(*ended.destination));
}

QPixmap DocumentList::picture(const QModelIndex& row) const {
    // Narrow, and beside the pointer: the line that shows where the row would go stays in sight.
    QRect rect = visualRect(row);
    rect.setWidth(rect.width() / 2);
    QPixmap pixmap(rect.size() * devicePixelRatioF());
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setOpacity(0.85);
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = QRect(QPoint(), rect.size());
    option.state |= QStyle::State_Selected | QStyle::State_Active | QStyle::State_Enabled;
    delegate_.paint(&painter, option, row);
    return pixmap;
}

int DocumentList::insertionAt(const QPoint& point) const {
    for (int row = std::max(0, indexAt(point).row()); row < model_.rowCount(); ++row)
        if (visualRect(model_.index(row)).center().y() > point.y()) return row;
    return model_.rowCount();
}

void DocumentList::setInsertion(std::optional<int> row) {
    if (!drag_ || drag_->insertion == row) return;
    drag_->insertion = row;
    viewport()->update();
}

void DocumentList::dragEnterEvent(QDragEnterEvent* event) {
    event->ignore();
    if (!drag_ || !event->mimeData()->hasFormat(rowType())) return;
    event->setDropAction(Qt::MoveAction);
    event->accept();
}

void DocumentList::dragMoveEvent(QDragMoveEvent* event) {
    QListView::dragMoveEvent(event);  // scrolls near the edges
    event->ignore();
    if (!drag_ || !event->mimeData()->hasFormat(rowType())) return;
    setInsertion(insertionAt(event->position().toPoint()));
    event->setDropAction(Qt::MoveAction);
    event->accept();
}

void DocumentList::dragLeaveEvent(QDragLeaveEvent* event) {
    QListView::dragLeaveEvent(event);
    setInsertion(std::nullopt);
}

void DocumentList::dropEvent(QDropEvent* event) {
    event->ignore();
    QDragLeaveEvent left;
    QListView::dragLeaveEvent(&left);  // ends scrolling
    if (!drag_ || !event->mimeData()->hasFormat(rowType())) return;
    drag_->destination = insertionAt(event->position().toPoint());
    setInsertion(std::nullopt);
    event->setDropAction(Qt::MoveAction);
    event->accept();
}

void DocumentList::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    if (!drag_ || !drag_->insertion || model_.rowCount() == 0) return;
    const bool behindAll = *drag_->insertion == model_.rowCount();
    const QRect row = visualRect(model_.index(*drag_->insertion - (behindAll ? 1 : 0)));
    const double y = behindAll ? row.bottom() + 1 : std::max(row.top(), 2);
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor colour = accent(palette());
    painter.setPen(QPen(colour, 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(row.left() + 18, y), QPointF(row.right() - 12, y));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawEllipse(QPointF(row.left() + 14, y), 3, 3);
}

void DocumentList::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ApplicationFontChange) scheduleDelayedItemsLayout();
    QListView::changeEvent(event);
}

}  // namespace quirebind
