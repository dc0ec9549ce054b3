// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMimeData>
#include <QObject>
#include <functional>
#include <vector>

#include "Platform/Files/URL.h"

namespace quirebind {

/// Gets the files of a drag through the portal (org.freedesktop.portal.FileTransfer): that is how
/// they come into a confined program, to which the paths in the drag's own list mean nothing.
///
/// Main thread only; an answer that comes after the end of this object is dropped.
class FileTransfer {
 public:
    /// What is to be done with the files: called at most once, on the main thread, at
    /// the earliest before `retrieve` returns.
    using Use = std::function<void(const std::vector<URL>&)>;

    /// Whether the drag's files have to be asked for: it offers that, and the program is confined
    /// or the drag has no list of files.
    [[nodiscard]] static bool isNeeded(const QMimeData& data);

    /// Asks for the files, and gives them to `use` within three seconds, without waiting for that.
    /// Where the portal does not answer, those of the drag's own list are given.
    void retrieve(const QMimeData& data, Use use);

 private:
    QObject context_;
};

}  // namespace quirebind
