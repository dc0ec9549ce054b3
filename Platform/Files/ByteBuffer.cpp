// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/ByteBuffer.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <new>
#include <utility>

#include <unistd.h>

#include "Platform/Files/SystemMemory.h"

namespace quirebind {
namespace {

/// Memory is given back in pieces that begin at multiples of this many bytes: of whole pages, and
/// so that the system is not asked too often.
constexpr std::size_t kPiece = std::size_t{1} << 20U;

}  // namespace

ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : memory_(std::move(other.memory_)),
      size_(std::exchange(other.size_, 0)),
      spent_(std::exchange(other.spent_, 0)) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
    memory_ = std::move(other.memory_);
    size_ = std::exchange(other.size_, 0);
    spent_ = std::exchange(other.spent_, 0);
    return *this;
}

/// Makes room for `count` more bytes, which there is not yet.
void ByteBuffer::grow(std::size_t count) {
    if (count > std::numeric_limits<std::size_t>::max() / 2 - size_) throw std::bad_alloc();
    if (!memory_.grow(size_ + count)) throw std::bad_alloc();
}

std::span<char> ByteBuffer::extend(std::size_t count) {
    if (count > memory_.size() - size_) grow(count);
    const std::span<char> added(memory_.data() + size_, count);
    size_ += count;
    return added;
}

void ByteBuffer::append(std::uint64_t number) {
    constexpr std::size_t kMostDigits = 20;
    if (kMostDigits > memory_.size() - size_) grow(kMostDigits);
    char* const begin = memory_.data() + size_;
    const auto result = std::to_chars(begin, begin + kMostDigits, number);
    size_ += static_cast<std::size_t>(result.ptr - begin);
}

void ByteBuffer::insert(std::size_t offset, std::size_t count, char filler) {
    const std::size_t moved = size_ - offset;
    (void)extend(count);
    char* const place = memory_.data() + offset;
    std::memmove(place + count, place, moved);
    std::memset(place, filler, count);
}

std::span<char> ByteBuffer::borrow(FileSystem& files, int file, std::uint64_t offset,
                                   std::span<char> place) {
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): only to know where it is
    const auto address = reinterpret_cast<std::uintptr_t>(place.data());
    const std::size_t before = (page - address % page) % page;
    if ((address - offset) % page != 0 || place.size() < before + page) return {};
    const auto pages = place.subspan(before, (place.size() - before) / page * page);
    return memory_.borrow(files, file, offset + before, pages) ? pages : std::span<char>{};
}

std::string_view ByteBuffer::view(std::size_t offset, std::size_t count, std::string& room) const {
    const std::string_view part = text().substr(offset, count);
    if (!memory_.isBorrowed(offset, part.size())) return part;
    room.resize(part.size());
    return memory_.read(offset, room) ? std::string_view(room) : std::string_view{};
}

void ByteBuffer::replace(std::size_t offset, std::string_view text) {
    std::memcpy(memory_.data() + offset, text.data(), text.size());
}

void ByteBuffer::spend(std::size_t count) {
    const char* const end = memory_.data() + count;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): only to know where it is
    const std::size_t behind = reinterpret_cast<std::uintptr_t>(end) % kPiece;
    if (count <= spent_ + behind) return;
    giveBack(std::span(memory_.data(), count - behind).subspan(spent_));
    spent_ = count - behind;
}

void ByteBuffer::shrink(std::size_t size) {
    size_ = std::min(size_, size);
    memory_.makeOwn(size_);
}

}  // namespace quirebind
