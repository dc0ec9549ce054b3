// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPointer>
#include <QUrl>
#include <QWidget>
#include <optional>
#include <span>
#include <vector>

#include "Quirebind/Desktop/FileViewer.h"
#include "Quirebind/Workflow/Desktop.h"

class QFileDialog;

namespace quirebind {

/// The desktop as one window sees it: the file panels of the platform's theme, or the toolkit's own
/// where it has none, and the file manager. Main thread only.
///
/// Panels begin in the folder that something was last chosen from during this run, at first in the
/// user's documents folder; nothing of it is kept on disk.
class QtDesktop : public Desktop {
 public:
    /// Panels belong to `window`.
    explicit QtDesktop(QWidget& window) : window_(&window) {}

    /// Keeps the toolkit's panels from writing their state (sizes, recent folders) to the user's
    /// settings. To be called once, before the first panel.
    static void keepNothing();

    [[nodiscard]] std::optional<std::vector<URL>> runModal(const OpenPanel& panel) override;
    /// Asks before a file is replaced, also where that is so only once the suffix is added.
    [[nodiscard]] std::optional<URL> runModal(const SavePanel& panel) override;
    void activateFileViewerSelecting(std::span<const URL> urls) override;

 private:
    /// Whether the user chose something.
    [[nodiscard]] bool run(QFileDialog& dialog);
    [[nodiscard]] bool mayReplace(const QString& path) const;

    QPointer<QWidget> window_;
    QUrl folder_;
    FileViewer fileViewer_;
};

}  // namespace quirebind
