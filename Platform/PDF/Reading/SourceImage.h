// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/Files/FileDescriptor.h"
#include "Platform/Files/FileStamp.h"
#include "Platform/Files/SystemMemory.h"
#include "Platform/Files/URL.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Reading/ByteSource.h"
#include "Platform/PDF/Reading/FilePieces.h"
#include "Platform/PDF/Reading/SourceFile.h"

namespace quirebind {

/// The bytes of a source file, in memory that we own, as if all of it were there: a block of it is
/// read when it is first looked at. (A mapping of the file would raise a signal when somebody
/// shortens it meanwhile.) Small files are read in one go; of large ones the bodies of streams are
/// never held here but go straight to where they are wanted, through `copy`, or are lent.
///
/// Of a large file, what is read after a `trim` takes the memory of what was read before it, from
/// the beginning of the file on, since being given fresh memory costs more than reading into it.
/// Memory is as large as the file twice over, of which only what is touched takes room; every byte
/// of the file is where it belongs from one `trim` to the next:
///
///     memory         |    ......    | window |    ......    |
///     the file           | ........ | next to be read | .... |
///
/// Where the objects of a large file are in no order, blocks would be read over and over again,
/// most of each for nothing. Such a file is read piece by piece instead, as long as that lasts.
///
/// Offsets count from the origin, which is where the PDF header stands. Every function that reads
/// throws DamagedDocument when the file cannot be read or has become shorter. Used by one thread.
class SourceImage final : public ByteSource {
 public:
    /// Opens the file; nothing where it cannot be opened or is not a regular file. Never blocks on
    /// a FIFO or a device.
    [[nodiscard]] static std::optional<SourceImage> open(const URL& url, FileSystem& files);

    /// The same of a file that is open to be read already; it belongs to `files`.
    [[nodiscard]] static std::optional<SourceImage> adopt(FileDescriptor file, FileSystem& files);

    /// Bytes from the origin to the end of the file.
    [[nodiscard]] std::uint64_t size() const override { return fileSize_ - origin_; }

    /// Bytes of the file that take up room on its disk: fewer than `size` where a large file is
    /// mostly holes. Looking for something in all of the others could take for ever.
    [[nodiscard]] std::uint64_t storedBytes() const { return file_.storedBytes(); }

    /// Where at or after `offset` the file has bytes that are no hole, `size` where it has none.
    [[nodiscard]] std::uint64_t nextStored(std::uint64_t offset) const;

    /// Lets offsets count from `origin` (bytes from the start of the file).
    void setOrigin(std::uint64_t origin) { origin_ = origin; }

    /// The bytes from `offset`: at least `length` of them unless the file ends before, and more
    /// where more is in memory. Valid until `trim`.
    [[nodiscard]] std::string_view view(std::uint64_t offset, std::size_t length) override {
        const std::uint64_t begin = origin_ + offset;
        // The first comparison keeps offsets out for which the sum has no room.
        if (offset < readyEnd_ && begin >= readyBegin_ && begin < readyEnd_ &&
            (length <= readyEnd_ - begin || readyEnd_ == fileSize_))
            return {
                ready_ + (static_cast<std::size_t>(begin) - readyBegin_),
                std::min(readyEnd_ - static_cast<std::size_t>(begin), std::max(length, kAhead))};
        return fetch(offset, length);
    }

    /// Fills `into` from `offset`, without keeping what was not in memory.
    void copy(std::uint64_t offset, std::span<char> into);

    /// Where byte `offset` is in the file, counted from its start.
    [[nodiscard]] std::uint64_t positionInFile(std::uint64_t offset) const {
        return origin_ + offset;
    }

    /// Fills `into`, which is the end of `borrower`, from `offset`, where possible with pages of
    /// the file itself (ByteBuffer::borrow). That is worth it where `into` is long.
    void lend(std::uint64_t offset, std::span<char> into, ByteBuffer& borrower);

    /// What the file was when it was opened, if pages of it were lent: they are only worth
    /// something as long as it stays that.
    [[nodiscard]] std::optional<FileStamp> lentFile() const {
        return hasLent_ ? std::optional(file_.opened()) : std::nullopt;
    }

    /// Gives memory back when much is held. Ends the validity of every view: call it where none is
    /// in use.
    void trim();

    /// Whether the file still has the size and the modification time that it was opened with.
    [[nodiscard]] bool unchanged() const { return file_.unchanged(); }

 private:
    static constexpr std::size_t kBlock = std::size_t{16} << 10U;

    /// How many blocks are read together where the block before was in memory already.
    static constexpr std::size_t kReadAhead = 8;
    static constexpr std::size_t kAhead = kReadAhead * kBlock;

    explicit SourceImage(SourceFile file);

    /// Where in memory a byte of the file is to be; `fileOffset` is less than the size of the file.
    [[nodiscard]] char* at(std::size_t fileOffset) const { return &bytes_[fileOffset + shift_]; }

    [[nodiscard]] std::string_view fetch(std::uint64_t offset, std::size_t length);
    [[nodiscard]] std::string_view fetchPiece(std::size_t begin, std::size_t length);
    void trimBlocks();
    void trimPieces();
    void load(std::size_t firstBlock, std::size_t endBlock);

    SourceFile file_;
    std::uint64_t fileSize_;
    std::uint64_t origin_ = 0;
    SparseMemory bytes_;
    std::size_t window_ = 0;      // where in them the window begins, 0 where it never moves
    std::size_t shift_ = 0;       // from offsets of the file to those of `bytes_`, modulo 2^64
    std::vector<bool> loaded_;    // by block
    std::vector<bool> seen_;      // by block: loaded now, or before it was given back
    std::size_t resident_ = 0;    // bytes loaded since they were given back
    std::size_t inSequence_ = 0;  // the last block before which there was another in memory
    std::size_t kept_ = limits::kWindowBytes;  // what may be loaded before it is given back
    std::size_t again_ = 0;  // how many of them not for the first time, nor in sequence
    std::unique_ptr<FilePieces> pieces_;  // while it is read so
    std::size_t readyBegin_ = 0;          // where what was looked at last is loaded without a gap
    std::size_t readyEnd_ = 0;
    const char* ready_ = nullptr;  // where in memory that begins
    bool hasLent_ = false;
};

}  // namespace quirebind
