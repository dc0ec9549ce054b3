// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QListView>
#include <optional>

#include "Quirebind/Views/DocumentListModel.h"
#include "Quirebind/Views/DocumentRowDelegate.h"

namespace quirebind {

class ContentView;

/// The list of documents: selecting one, reordering by drag, and the keys and the context menu that
/// offer the operations of the buttons below it.
///
/// A drag carries a type of its own, which only this list accepts and only during its own drag, so
/// that it never competes for files with the drop area around it. Dropping does nothing by itself:
/// it notes where, and once the drag is over the state is asked to reorder.
class DocumentList : public QListView {
 public:
    /// `state` must outlive this.
    explicit DocumentList(ContentView& state);

    /// Brings rows and selection in line with the state.
    void redraw();

 protected:
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

 private:
    struct OwnDrag {
        UUID id;                         // the row that is dragged
        std::optional<int> insertion;    // where the pointer would put it, counted as it is listed
        std::optional<int> destination;  // where it was dropped
    };

    [[nodiscard]] QPixmap picture(const QModelIndex& row) const;
    /// The first row whose centre is below the point; the number of rows where there is none.
    [[nodiscard]] int insertionAt(const QPoint& point) const;
    void setInsertion(std::optional<int> row);

    ContentView& state_;
    DocumentListModel model_;
    DocumentRowDelegate delegate_;
    std::optional<OwnDrag> drag_;
    bool followingState_ = false;
};

}  // namespace quirebind
