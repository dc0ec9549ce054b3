// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QIcon>
#include <QStyledItemDelegate>

namespace quirebind {

/// Draws a row of the document list: a symbol, and the file's name above its number of pages. A
/// name that is too long loses its middle, so that its beginning and its suffix stay readable.
class DocumentRowDelegate : public QStyledItemDelegate {
 public:
    /// For a view of a DocumentListModel.
    DocumentRowDelegate();

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

    /// Tells the full name, and the folders that it is in.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

 private:
    QIcon icon_;
};

}  // namespace quirebind
