// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string>

#include "Platform/Files/FileSystem.h"

namespace quirebind {

/// Follows every symbolic link in a path, as the kernel would follow them: ".." leaves the folder
/// that a link led to, not the one that the link stands in. Reports no errors.
///
/// Of several paths one after another into the same folder, that folder is walked to once, and the
/// working folder is asked for once: what happens to them meanwhile is not noticed. Used by one
/// thread.
class SymlinkResolver {
 public:
    /// `files` must outlive this.
    explicit SymlinkResolver(FileSystem& files);
    SymlinkResolver(const SymlinkResolver&) = delete;
    SymlinkResolver& operator=(const SymlinkResolver&) = delete;
    SymlinkResolver(SymlinkResolver&&) = delete;
    SymlinkResolver& operator=(SymlinkResolver&&) = delete;
    ~SymlinkResolver();

    /// The absolute form of `path` without symbolic links.
    ///
    /// From the first component on that does not exist, is not a folder, cannot be read, or is one
    /// symbolic link too many (40 are followed), the rest stays as it is, ".." and all. An empty
    /// path, and a relative one without a working folder, are returned unchanged.
    [[nodiscard]] std::string resolve(const std::string& path);

 private:
    class Walk;

    [[nodiscard]] std::string resolveAbsolute(const std::string& path);

    FileSystem& files_;
    std::string workingFolder_;           // empty until it is needed
    std::string folder_;                  // as it was given, with its separator
    std::unique_ptr<const Walk> inside_;  // a walk that has come there; none where it cannot
};

}  // namespace quirebind
