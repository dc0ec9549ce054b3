// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStackedWidget>
#include <QWidget>

#include "Quirebind/Preview/PDFPreview.h"
#include "Quirebind/Views/EmptyStateView.h"

namespace quirebind {

class ContentView;
class RenderService;

/// The right column: the selected document, or an invitation to select one.
class PreviewPane : public QStackedWidget {
 public:
    /// Both must outlive this.
    PreviewPane(ContentView& state, RenderService& renderer);

    /// Shows the selected document, or none.
    void redraw();

 private:
    ContentView& state_;
    EmptyStateView placeholder_;
    PDFPreview document_;
};

}  // namespace quirebind
