// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/SourceImage.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"

namespace quirebind {
namespace {

/// Files up to this size are read at once.
constexpr std::uint64_t kSmallFile = std::uint64_t{256} << 10U;

}  // namespace

std::optional<SourceImage> SourceImage::open(const URL& url, FileSystem& files) {
    auto file = SourceFile::open(url, files);
    return file ? std::optional(SourceImage(std::move(*file))) : std::nullopt;
}

std::optional<SourceImage> SourceImage::adopt(FileDescriptor file, FileSystem& files) {
    auto adopted = SourceFile::adopt(std::move(file), files);
    return adopted ? std::optional(SourceImage(std::move(*adopted))) : std::nullopt;
}

SourceImage::SourceImage(SourceFile file) : file_(std::move(file)), fileSize_(file_.size()) {
    if (fileSize_ > std::numeric_limits<std::size_t>::max() / 4) throw std::bad_alloc();
    const auto size = static_cast<std::size_t>(fileSize_);
    if (size > limits::kWindowBytes) shift_ = window_ = size;
    bytes_ = sparseMemory(window_ + size);
    if (fileSize_ <= kSmallFile) {
        file_.read(0, {bytes_.get(), size});
        resident_ = size;
        readyEnd_ = size;
        ready_ = bytes_.get();
    }
    loaded_.assign((size + kBlock - 1) / kBlock, fileSize_ <= kSmallFile);
    seen_ = loaded_;
}

std::uint64_t SourceImage::nextStored(std::uint64_t offset) const {
    const std::uint64_t next = file_.nextStored(origin_ + offset);
    return next - std::min(origin_, next);
}

std::string_view SourceImage::fetch(std::uint64_t offset, std::size_t length) {
    if (offset >= size()) return {};
    const auto begin = static_cast<std::size_t>(origin_ + offset);
    const std::size_t all = static_cast<std::size_t>(fileSize_) - begin;
    const std::size_t wanted = std::min(std::max<std::size_t>(length, 1), all);
    // Before much is held it is given back, unless the file is read over and over without a trim.
    if (pieces_ && pieces_->held() < limits::kResidentBytes) return fetchPiece(begin, wanted);
    const std::size_t first = begin / kBlock;
    std::size_t end = (begin + wanted - 1) / kBlock + 1;
    load(first, end);
    while (end < loaded_.size() && end - first < kReadAhead && loaded_[end]) ++end;
    readyBegin_ = first * kBlock;
    readyEnd_ = std::min(end * kBlock, static_cast<std::size_t>(fileSize_));
    ready_ = at(readyBegin_);
    return {at(begin), std::min(end * kBlock - begin, all)};
}

std::string_view SourceImage::fetchPiece(std::size_t begin, std::size_t length) {
    // A little before it, too: whoever reads an object looks at what it stands behind.
    constexpr std::size_t kBefore = 16;
    const std::size_t from = begin - std::min(begin, kBefore);
    const std::size_t size = begin + length - from;
    const bool isInOrder = begin >= readyEnd_ && begin - readyEnd_ < kAhead;
    const std::span<char> piece = pieces_->allocate(size, isInOrder);
    file_.read(from, piece);
    readyBegin_ = from;
    readyEnd_ = from + size;
    ready_ = piece.data();
    return {ready_ + (begin - from), length};
}

void SourceImage::load(std::size_t firstBlock, std::size_t endBlock) {
    std::size_t block = firstBlock;
    while (block < endBlock) {
        if (loaded_[block]) {
            ++block;
            continue;
        }
        const bool inSequence = block > 0 && loaded_[block - 1];
        const std::size_t wanted = std::min(
            loaded_.size(), std::max(endBlock, inSequence ? block + kReadAhead : block + 1));
        std::size_t end = block + 1;
        while (end < wanted && !loaded_[end]) ++end;
        const std::size_t begin = block * kBlock;
        const std::size_t length =
            std::min(end * kBlock, static_cast<std::size_t>(fileSize_)) - begin;
        file_.read(begin, {at(begin), length});
        if (inSequence)
            inSequence_ = block;
        else if (seen_[block])
            again_ += length;
        std::fill(seen_.begin() + static_cast<std::ptrdiff_t>(block),
                  seen_.begin() + static_cast<std::ptrdiff_t>(end), true);
        std::fill(loaded_.begin() + static_cast<std::ptrdiff_t>(block),
                  loaded_.begin() + static_cast<std::ptrdiff_t>(end), true);
        resident_ += length;
        block = end;
    }
}

void SourceImage::copy(std::uint64_t offset, std::span<char> into) {
    if (offset > size() || into.size() > size() - offset)
        throw DamagedDocument("stream body beyond the end of the file");
    if (into.empty()) return;
    const auto begin = static_cast<std::size_t>(origin_ + offset);
    if (begin >= readyBegin_ && begin < readyEnd_ && into.size() <= readyEnd_ - begin) {
        std::memcpy(into.data(), ready_ + (begin - readyBegin_), into.size());
        return;
    }
    const auto first = loaded_.begin() + static_cast<std::ptrdiff_t>(begin / kBlock);
    const auto last =
        loaded_.begin() + static_cast<std::ptrdiff_t>((begin + into.size() - 1) / kBlock + 1);
    if (std::find(first, last, false) == last)
        std::memcpy(into.data(), at(begin), into.size());
    else
        file_.read(begin, into);
}

void SourceImage::lend(std::uint64_t offset, std::span<char> into, ByteBuffer& borrower) {
    if (offset > size() || into.size() > size() - offset)
        throw DamagedDocument("stream body beyond the end of the file");
    const auto pages = file_.lend(origin_ + offset, into, borrower);
    if (pages.empty()) {
        copy(offset, into);
        return;
    }
    hasLent_ = true;
    const auto before = static_cast<std::size_t>(pages.data() - into.data());
    const std::size_t behind = before + pages.size();
    copy(offset, into.first(before));
    copy(offset + behind, into.subspan(behind));
}

void SourceImage::trim() {
    if (pieces_) trimPieces();
    if (resident_ > kept_ && window_ != 0) trimBlocks();
}

void SourceImage::trimBlocks() {
    const std::span<char> all(bytes_.get(), window_ + static_cast<std::size_t>(fileSize_));
    giveBack(all.first(window_));
    giveBack(all.subspan(window_ + limits::kWindowBytes));
    shift_ = window_ - inSequence_ * kBlock;
    loaded_.assign(loaded_.size(), false);
    // Where the objects of a file are in another order than its pages, it is read here and there,
    // and over and over again: less often, if more of it is kept, and if that is most of it.
    if (!pieces_ && again_ > resident_ / 4) {
        if (kept_ < limits::kResidentBytes && fileSize_ <= 2 * limits::kResidentBytes)
            kept_ = std::min(2 * kept_, limits::kResidentBytes);
        else
            pieces_ = std::make_unique<FilePieces>();
    }
    resident_ = 0;
    again_ = 0;
    readyBegin_ = 0;
    readyEnd_ = 0;
}

void SourceImage::trimPieces() {
    if (!pieces_->isFull()) return;
    if (pieces_->areInOrder()) {
        pieces_.reset();
        kept_ = limits::kWindowBytes;
    } else {
        pieces_->release();
    }
    readyBegin_ = 0;
    readyEnd_ = 0;
}

}  // namespace quirebind
