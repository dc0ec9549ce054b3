// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/ByteBuffer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace quirebind {
namespace {

constexpr std::size_t kFirstCapacity = std::size_t{64} << 10U;

}  // namespace

ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : bytes_(std::move(other.bytes_)),
      size_(std::exchange(other.size_, 0)),
      capacity_(std::exchange(other.capacity_, 0)) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
    bytes_ = std::move(other.bytes_);
    size_ = std::exchange(other.size_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
    return *this;
}

void ByteBuffer::reserve(std::size_t count) {
    if (count <= capacity_ - size_) return;
    if (count > std::numeric_limits<std::size_t>::max() / 2 - size_) throw std::bad_alloc();
    const std::size_t needed = size_ + count;
    // realloc, because it moves the pages of a large block instead of the bytes. Where doubling
    // does not fit, what is needed may.
    std::size_t capacity = std::max({needed, 2 * capacity_, kFirstCapacity});
    // NOLINTBEGIN(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
    void* grown = std::realloc(bytes_.get(), capacity);
    if (grown == nullptr && capacity > needed) {
        capacity = needed;
        grown = std::realloc(bytes_.get(), capacity);
    }
    // NOLINTEND(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
    if (grown == nullptr) throw std::bad_alloc();
    (void)bytes_.release();  // realloc has taken the old block over
    bytes_.reset(static_cast<char*>(grown));
    capacity_ = capacity;
}

std::span<char> ByteBuffer::extend(std::size_t count) {
    reserve(count);
    const std::span<char> added(bytes_.get() + size_, count);
    size_ += count;
    return added;
}

void ByteBuffer::append(std::string_view text) {
    if (text.empty()) return;
    reserve(text.size());
    std::memcpy(bytes_.get() + size_, text.data(), text.size());
    size_ += text.size();
}

void ByteBuffer::append(std::uint64_t number) {
    std::array<char, 20> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    append({digits.data(), static_cast<std::size_t>(result.ptr - digits.data())});
}

void ByteBuffer::replace(std::size_t offset, std::string_view text) {
    std::memcpy(bytes_.get() + offset, text.data(), text.size());
}

void ByteBuffer::shrink(std::size_t size) {
    size_ = std::min(size_, size);
}

}  // namespace quirebind
