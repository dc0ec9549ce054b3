// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAction>
#include <QMenu>
#include <QWidget>
#include <functional>

namespace quirebind {

/// The actions that show pages larger and smaller, and as wide as the view again; with their keys,
/// which work in a view. Main thread only.
class ZoomActions {
 public:
    /// What the actions do.
    struct Calls {
        std::function<void(double factor)> zoomBy;
        std::function<void()> fit;
    };

    /// The actions belong to `view`, which must outlive this.
    ZoomActions(QWidget& view, Calls calls);

    /// Enables those that change something at this zoom, 1 being as wide as the view.
    void show(double zoom);

    /// Adds an item for each of them.
    void addTo(QMenu& menu);

 private:
    QAction zoomIn_;
    QAction zoomOut_;
    QAction fitWidth_;
};

}  // namespace quirebind
