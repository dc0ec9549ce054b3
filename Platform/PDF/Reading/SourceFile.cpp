// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/SourceFile.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "Platform/Files/OpenToRead.h"
#include "Platform/Files/SystemCall.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"

namespace quirebind {

std::optional<SourceFile> SourceFile::open(const URL& url, FileSystem& files) {
    FileDescriptor file = openToRead(url, files);
    if (file.number() < 0) return std::nullopt;
    return adopt(std::move(file), files);
}

std::optional<SourceFile> SourceFile::adopt(FileDescriptor file, FileSystem& files) {
    struct stat status{};
    const int result = uninterrupted([&] { return files.status(file.number(), status); });
    if (result < 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return SourceFile(files, std::move(file), status);
}

SourceFile::SourceFile(FileSystem& files, FileDescriptor file, const struct stat& status)
    : files_(&files),
      file_(std::move(file)),
      opened_(status),
      blocks_(status.st_blocks),
      size_(static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0))) {}

std::uint64_t SourceFile::storedBytes() const {
    // Some file systems count blocks late, and some not at all.
    if (size_ <= limits::kCertainlyStored || blocks_ <= 0) return size_;
    constexpr std::uint64_t kUnit = 512;  // of st_blocks, whatever the file system's blocks are
    return std::min(size_, kUnit * static_cast<std::uint64_t>(blocks_));
}

std::uint64_t SourceFile::nextStored(std::uint64_t position) const {
    const std::int64_t next = files_->nextData(file_.number(), position);
    if (next == -ENXIO) return size_;
    if (next < 0)
        return position;  // holes are an economy of this file system that it keeps to itself
    return std::min(static_cast<std::uint64_t>(next), size_);
}

void SourceFile::read(std::uint64_t position, std::span<char> into) const {
    while (!into.empty()) {
        const ssize_t got = uninterrupted(
            [&] { return files_->read(file_.number(), std::as_writable_bytes(into), position); });
        if (got <= 0) throw DamagedDocument(got == 0 ? "the file became shorter" : "read error");
        into = into.subspan(static_cast<std::size_t>(got));
        position += static_cast<std::uint64_t>(got);
    }
}

std::span<char> SourceFile::lend(std::uint64_t position, std::span<char> into,
                                 ByteBuffer& borrower) const {
    return borrower.borrow(*files_, file_.number(), position, into);
}

bool SourceFile::unchanged() const {
    struct stat now{};
    const int result = uninterrupted([&] { return files_->status(file_.number(), now); });
    return result >= 0 && FileStamp(now) == opened_;
}

}  // namespace quirebind
