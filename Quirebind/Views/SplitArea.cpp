// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/SplitArea.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QSplitterHandle>
#include <memory>

#include "Quirebind/Desktop/FileURLs.h"
#include "Quirebind/Desktop/HandOver.h"
#include "Quirebind/Look/Colours.h"
#include "Quirebind/Look/Texts.h"
#include "Quirebind/Views/Layout.h"
#include "Quirebind/Workflow/ContentView.h"

namespace quirebind {

namespace {

constexpr int kStep = 16;  // that an arrow key moves the divider by

/// A hairline with a wider grip, which also takes the focus and is a bar then.
class Handle : public QSplitterHandle {
 public:
    explicit Handle(QSplitter* parent) : QSplitterHandle(Qt::Horizontal, parent) {
        setFocusPolicy(Qt::TabFocus);
        setAccessibleName(text::divider());
    }

 protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        if (hasFocus())
            painter.fillRect(bar(), accent(palette()));
        else
            painter.fillRect(contentsRect(), separator(palette()));
    }

    void resizeEvent(QResizeEvent* event) override {
        QSplitterHandle::resizeEvent(event);
        // The toolkit has given it a mask that only the hairline shows through. One that changed
        // with the focus would leave the bar's edges behind on what lies under them.
        setMask(bar());
    }

    void keyPressEvent(QKeyEvent* event) override {
        const bool left = event->key() == Qt::Key_Left;
        if (!left && event->key() != Qt::Key_Right) {
            QSplitterHandle::keyPressEvent(event);
            return;
        }
        const QList<int> widths = splitter()->sizes();
        const int wider = left == isRightToLeft() ? kStep : -kStep;  // the leading column
        splitter()->setSizes({widths.first() + wider, widths.last() - wider});
    }

    void focusInEvent(QFocusEvent* event) override {
        QSplitterHandle::focusInEvent(event);
        update();
    }

    void focusOutEvent(QFocusEvent* event) override {
        QSplitterHandle::focusOutEvent(event);
        update();
    }

 private:
    /// What shows of it with the focus: the hairline, and a pixel to either side.
    [[nodiscard]] QRect bar() const { return contentsRect().adjusted(-1, 0, 1, 0); }
};

/// Takes the drag as a copy, whatever else it could be: the originals stay where they are.
void accept(QDropEvent& event) {
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

}  // namespace

QSplitterHandle* SplitArea::Splitter::createHandle() {
    return handOver(std::make_unique<Handle>(this));  // the splitter owns it
}

SplitArea::SplitArea(ContentView& state, QWidget& leading, QWidget& trailing)
    : state_(state), highlight_(*this) {
    setAcceptDrops(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    splitter_.setHandleWidth(1);
    splitter_.setChildrenCollapsible(false);
    splitter_.addWidget(&leading);
    splitter_.addWidget(&trailing);
    leading.lower();  // assistive technology goes by the order in which they lie upon each other
    splitter_.setStretchFactor(0, 0);
    splitter_.setStretchFactor(1, 1);
    layout::set(*this, layout::column(0, splitter_));
    // The tab key goes in the order of reading: the divider comes between the columns.
    QWidget* before = splitter_.handle(1);
    for (QWidget* child : trailing.findChildren<QWidget*>()) {
        if ((child->focusPolicy() & Qt::TabFocus) != Qt::TabFocus) continue;
        setTabOrder(before, child);
        before = child;
    }
    highlight_.raise();
}

SplitArea::~SplitArea() {
    // The columns belong to whoever passed them in.
    for (const int column : {1, 0})
        if (QWidget* widget = splitter_.widget(column)) widget->setParent(nullptr);
}

void SplitArea::redraw() {
    highlight_.setVisible(state_.targeted());
}

void SplitArea::dragEnterEvent(QDragEnterEvent* event) {
    event->ignore();
    const QMimeData& dragged = *event->mimeData();
    if (fileURLs(dragged).empty() && !FileTransfer::isNeeded(dragged)) return;
    state_.setTargeted(true);
    accept(*event);
}

void SplitArea::dragMoveEvent(QDragMoveEvent* event) {
    accept(*event);
}

void SplitArea::dragLeaveEvent(QDragLeaveEvent*) {
    state_.setTargeted(false);
}

void SplitArea::dropEvent(QDropEvent* event) {
    event->ignore();
    const QMimeData& dragged = *event->mimeData();
    state_.setTargeted(false);
    if (!FileTransfer::isNeeded(dragged)) {
        if (state_.drop(fileURLs(dragged))) accept(*event);
    } else if (!state_.merging()) {
        transfer_.retrieve(dragged, [this](const auto& urls) { (void)state_.drop(urls); });
        accept(*event);
    }
}

}  // namespace quirebind
