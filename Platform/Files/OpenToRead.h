// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/Files/FileDescriptor.h"
#include "Platform/Files/FileSystem.h"
#include "Platform/Files/URL.h"

namespace quirebind {

/// Opens the file at `url` to read it, whatever kind of file it is: never waits for one that nobody
/// writes to, and never makes a terminal the program's own. Owns nothing where that cannot be, also
/// where `url` is no file's. `files` must outlive what is returned. From any thread.
[[nodiscard]] FileDescriptor openToRead(const URL& url, FileSystem& files);

}  // namespace quirebind
