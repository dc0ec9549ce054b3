// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QSplitter>
#include <QWidget>

#include "Quirebind/Desktop/FileTransfer.h"
#include "Quirebind/Views/DropHighlight.h"

namespace quirebind {

class ContentView;

/// The middle of the window: two columns beside each other with a divider that the user drags, or
/// moves with the arrow keys; together they are where files are dropped.
class SplitArea : public QWidget {
 public:
    /// `leading` keeps its width when the window is resized, `trailing` takes the rest. All must
    /// outlive this.
    SplitArea(ContentView& state, QWidget& leading, QWidget& trailing);
    SplitArea(const SplitArea&) = delete;
    SplitArea& operator=(const SplitArea&) = delete;
    SplitArea(SplitArea&&) = delete;
    SplitArea& operator=(SplitArea&&) = delete;
    ~SplitArea() override;

    /// Shows the outline exactly while files hover.
    void redraw();

 protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

 private:
    class Splitter : public QSplitter {
     protected:
        QSplitterHandle* createHandle() override;
    };

    ContentView& state_;
    FileTransfer transfer_;
    Splitter splitter_;
    DropHighlight highlight_;
};

}  // namespace quirebind
