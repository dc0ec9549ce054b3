// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <functional>
#include <span>

#include "Platform/Files/FileSystem.h"
#include "Platform/Files/URL.h"

namespace quirebind {

/// Writes `bytes` to `destination` in one atomic step: whoever opens the destination sees either
/// what was there before or all of the new bytes, also after a crash or a power cut.
///
/// A symbolic link at the destination is itself replaced, its target is not touched; other hard
/// links of the file keep the old bytes. The permission bits of a regular file are kept, a new file
/// gets 0666 less the process's umask.
///
/// Throws std::system_error with the file system's own error (its what() is the system's message
/// alone); then the destination is as it was and nothing else was left behind. EFBIG where the
/// bytes exceed the process's file size limit, EISDIR where the destination is a folder, EOPNOTSUPP
/// where it is a device, a pipe or a socket, or not a file URL. Needs no memory of the size of
/// `bytes`; `written`, if there is one, is told how many of the first bytes are not needed any
/// more, whatever happens; the destination is not touched before it was told of all, and what it
/// throws ends the attempt like an error. May be called from any thread.
void writeAtomically(std::span<const std::byte> bytes, const URL& destination,
                     FileSystem& files = FileSystem::native(),
                     const std::function<void(std::size_t)>& written = {});

}  // namespace quirebind
