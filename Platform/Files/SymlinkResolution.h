// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "Platform/Files/FileSystem.h"

namespace quirebind {

/// The absolute form of `path` with every symbolic link in it followed, as the kernel would follow
/// them: ".." leaves the folder that a link led to, not the one that the link stands in.
///
/// From the first component on that does not exist, is not a folder, cannot be read, or is one
/// symbolic link too many (40 are followed), the rest stays as it is, ".." and all. An empty path,
/// and a relative one without a working folder, are returned unchanged. Reports no errors.
[[nodiscard]] std::string resolvingSymlinks(const std::string& path, FileSystem& files);

}  // namespace quirebind
