// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

#include "Platform/Files/AtomicWrite.h"
#include "Platform/Files/FileDescriptor.h"
#include "Platform/Files/FileSystem.h"

namespace quirebind {

/// Writes `text` to the file `path`; returns the errno that is thrown, 0 where nothing is.
inline int errorOfWriting(std::string_view text, const std::string& path,
                          FileSystem& files = FileSystem::native()) {
    try {
        writeAtomically(std::as_bytes(std::span(text)), URL::file(path), files);
        return 0;
    } catch (const std::system_error& error) {
        return error.code().value();
    }
}

/// The permission bits of a file, of a link itself where it is one; 0 where there is none.
inline mode_t permissionsOf(const std::string& path) {
    struct stat found{};
    return ::lstat(path.c_str(), &found) == 0 ? found.st_mode & 07777U : 0;
}

/// How many files this process has open.
inline std::ptrdiff_t openDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}

/// Whether files without a name can be made in the folder `path`.
inline bool hasUnnamedFiles([[maybe_unused]] const std::string& path) {
#if defined(O_TMPFILE)
    FileSystem& files = FileSystem::native();
    const FileDescriptor file(
        files, files.open(AT_FDCWD, path.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600));
    return file.number() >= 0;
#else
    return false;
#endif
}

}  // namespace quirebind
