// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Views/PreviewPane.h"

#include "Quirebind/Look/Texts.h"
#include "Quirebind/Workflow/ContentView.h"

namespace quirebind {

namespace {

constexpr int kMinimumWidth = 360;

}  // namespace

PreviewPane::PreviewPane(ContentView& state, RenderService& renderer)
    : state_(state),
      placeholder_(QStringLiteral("doc.text.magnifyingglass"), text::previewTitle(),
                   text::previewDescription()),
      document_(renderer) {
    setMinimumWidth(kMinimumWidth);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    addWidget(&placeholder_);
    addWidget(&document_);
}

void PreviewPane::redraw() {
    const auto url = state_.selectedURL();
    if (url)
        document_.setURL(*url);
    else
        document_.clear();
    if (url)
        setCurrentWidget(&document_);
    else
        setCurrentWidget(&placeholder_);
}

}  // namespace quirebind
