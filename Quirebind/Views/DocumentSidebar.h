// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPushButton>
#include <QWidget>

#include "Quirebind/Look/TextLabel.h"
#include "Quirebind/Views/DocumentList.h"
#include "Quirebind/Views/EmptyStateView.h"

namespace quirebind {

class ContentView;

/// The left column: a caption with the number of documents, and below it either an invitation to
/// drop some or the list of them with its buttons.
class DocumentSidebar : public QWidget {
 public:
    /// `state` must outlive this.
    explicit DocumentSidebar(ContentView& state);

    /// Shows the list or the invitation, the number, and which buttons can be pressed.
    void redraw();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

 private:
    /// Up, Down and Remove, which are enabled and disabled together.
    class ButtonRow : public QWidget {
     public:
        /// `state` must outlive this.
        explicit ButtonRow(ContentView& state);

     private:
        QPushButton up_;
        QPushButton down_;
        QPushButton remove_;
    };

    ContentView& state_;
    TextLabel caption_;
    TextLabel count_;
    EmptyStateView emptyState_;
    DocumentList list_;
    ButtonRow buttons_;
};

}  // namespace quirebind
