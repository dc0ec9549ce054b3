// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include <sys/stat.h>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/Files/FileDescriptor.h"
#include "Platform/Files/FileStamp.h"
#include "Platform/Files/URL.h"

namespace quirebind {

/// A source's file, open to be read. Positions count from its start. Used by one thread.
class SourceFile {
 public:
    /// Opens the file; nothing where it cannot be opened or is not a regular file. Never blocks on
    /// a FIFO or a device.
    [[nodiscard]] static std::optional<SourceFile> open(const URL& url, FileSystem& files);

    /// The same of a file that is open to be read already; it belongs to `files`.
    [[nodiscard]] static std::optional<SourceFile> adopt(FileDescriptor file, FileSystem& files);

    /// Its bytes.
    [[nodiscard]] std::uint64_t size() const { return size_; }

    /// Bytes of it that take up room on its disk: fewer than `size` where a large file is mostly
    /// holes.
    [[nodiscard]] std::uint64_t storedBytes() const;

    /// Where at or after `position` it has bytes that are no hole, `size` where it has none.
    [[nodiscard]] std::uint64_t nextStored(std::uint64_t position) const;

    /// Fills `into` from `position`. Throws DamagedDocument when the file cannot be read or has
    /// become shorter.
    void read(std::uint64_t position, std::span<char> into) const;

    /// ByteBuffer::borrow of the bytes from `position`.
    [[nodiscard]] std::span<char> lend(std::uint64_t position, std::span<char> into,
                                       ByteBuffer& borrower) const;

    /// What it was when it was opened.
    [[nodiscard]] const FileStamp& opened() const { return opened_; }

    /// Whether it still is that.
    [[nodiscard]] bool unchanged() const;

 private:
    SourceFile(FileSystem& files, FileDescriptor file, const struct stat& status);

    FileSystem* files_;  // not owned; outlives every document
    FileDescriptor file_;
    FileStamp opened_;
    blkcnt_t blocks_;  // of 512 bytes, on its disk
    std::uint64_t size_;
};

}  // namespace quirebind
