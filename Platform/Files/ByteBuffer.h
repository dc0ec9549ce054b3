// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

#include "Platform/Files/GrowingMemory.h"

namespace quirebind {

/// Bytes that grow at their end; large ones are not copied when they do. Throws std::bad_alloc when
/// memory runs out; what was there stays. Move-only.
class ByteBuffer {
 public:
    ByteBuffer() = default;
    ByteBuffer(const ByteBuffer&) = delete;
    ByteBuffer& operator=(const ByteBuffer&) = delete;
    /// The bytes change hands; `other` is empty then.
    ByteBuffer(ByteBuffer&& other) noexcept;
    /// Likewise; what was here before is given back.
    ByteBuffer& operator=(ByteBuffer&& other) noexcept;
    ~ByteBuffer() = default;

    /// How many bytes there are.
    [[nodiscard]] std::size_t size() const { return size_; }
    /// The bytes as text, not to be looked at where they are borrowed; valid until anything is
    /// added, taken back, or moved elsewhere.
    [[nodiscard]] std::string_view text() const { return {memory_.data(), size_}; }
    /// The same as bytes, for as long.
    [[nodiscard]] std::span<const std::byte> bytes() const {
        return std::as_bytes(std::span(memory_.data(), size_));
    }

    /// Adds `count` bytes whose values are whatever they are, to be filled in by the caller before
    /// anything else happens to this.
    [[nodiscard]] std::span<char> extend(std::size_t count);

    /// Appends a copy of `text`, which must not be a part of this.
    void append(std::string_view text) {
        if (text.empty()) return;
        if (text.size() > memory_.size() - size_) grow(text.size());
        std::memcpy(memory_.data() + size_, text.data(), text.size());
        size_ += text.size();
    }
    /// Appends the number in decimal digits.
    void append(std::uint64_t number);

    /// Makes room for `count` characters `filler` before the bytes from `offset` on, which must not
    /// be borrowed.
    void insert(std::size_t offset, std::size_t count, char filler);

    /// Borrows whole pages of `place`, which was added last and is to have the bytes of an open
    /// file from `offset` on, from that file (GrowingMemory tells what that means). Gives those
    /// pages; none where the system has no such thing, or pages do not begin at the same bytes.
    [[nodiscard]] std::span<char> borrow(FileSystem& files, int file, std::uint64_t offset,
                                         std::span<char> place);

    /// A part of the bytes, where they are or, if any are borrowed, in `room`. Nothing where they
    /// are lost. Valid like `text`, and as long as `room` is left alone.
    [[nodiscard]] std::string_view view(std::size_t offset, std::size_t count,
                                        std::string& room) const;

    /// Replaces bytes that were written before; they must be there.
    void replace(std::size_t offset, std::string_view text);

    /// Takes back everything behind the first `size` bytes, which do not end in borrowed ones.
    void shrink(std::size_t size);

    /// Lets the system have memory of the first `count` bytes, which nobody will look at any more:
    /// what they are is undefined from then on.
    void spend(std::size_t count);

 private:
    void grow(std::size_t count);

    GrowingMemory memory_;
    std::size_t size_ = 0;
    std::size_t spent_ = 0;  // bytes whose memory has been given back
};

}  // namespace quirebind
