// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/OpenToRead.h"

#include <string>

#include <fcntl.h>

#include "Platform/Files/SystemCall.h"

namespace quirebind {

FileDescriptor openToRead(const URL& url, FileSystem& files) {
    const std::string path(url.path());
    if (!url.isFileURL() || path.find('\0') != std::string::npos) return {};
    // O_NONBLOCK: opening a FIFO that nobody writes to would wait for ever.
    constexpr int kFlags = O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    return {files, uninterrupted([&] { return files.open(AT_FDCWD, path.c_str(), kFlags, 0); })};
}

}  // namespace quirebind
