// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include <sys/stat.h>

namespace quirebind {

/// What tells whether a file has been written to: which file it is, its size and its modification
/// time. A plain value.
class FileStamp {
 public:
    /// From what stat(2) says of the file.
    explicit FileStamp(const struct stat& status)
        : device_(status.st_dev), number_(status.st_ino), size_(status.st_size) {
#if defined(__APPLE__)
        const struct timespec& time = status.st_mtimespec;
#else
        const struct timespec& time = status.st_mtim;
#endif
        seconds_ = time.tv_sec;
        nanoseconds_ = time.tv_nsec;
    }

    /// Whether it is the same file, changed or not.
    [[nodiscard]] bool isSameFile(const FileStamp& other) const {
        return device_ == other.device_ && number_ == other.number_;
    }

    /// Whether it is the same file and nobody has written to it, as far as size and time tell.
    [[nodiscard]] bool operator==(const FileStamp&) const = default;

 private:
    dev_t device_;
    ino_t number_;
    off_t size_;
    std::int64_t seconds_ = 0;
    std::int64_t nanoseconds_ = 0;
};

}  // namespace quirebind
