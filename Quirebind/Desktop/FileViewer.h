// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <span>
#include <string>
#include <vector>

#include "Platform/Files/URL.h"

namespace quirebind {

/// Shows files in the user's file manager, selected. Tries in turn, each at most for three seconds
/// and without ever waiting for it:
///
///  1. the file manager itself (org.freedesktop.FileManager1),
///  2. the desktop portal, which is what a confined program has (org.freedesktop.portal.OpenURI),
///  3. whatever opens the folder.
///
/// On macOS the Finder shows them.
///
/// Main thread only; attempts end with this object.
class FileViewer {
 public:
    /// Shows the files at these locations. Returns at once; where all attempts fail, nothing
    /// happens and nobody is told.
    void show(std::span<const URL> urls);

 private:
    void askPortal(const std::vector<std::string>& paths);
    static void openFolders(const std::vector<std::string>& paths);

    QObject context_;  // answers that come later are dropped with it
};

}  // namespace quirebind
