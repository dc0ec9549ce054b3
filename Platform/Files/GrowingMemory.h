// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace quirebind {

class FileSystem;

namespace detail {
/// Gives memory back to the allocator.
struct FreeBlock {
    /// `bytes` came from malloc or realloc.
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory): from realloc
    void operator()(char* bytes) const { std::free(bytes); }
};
/// Gives pages back to the system.
struct UnmapPages {
    std::size_t size = 0;  ///< Of what is given back, in bytes.
    /// `bytes` is where a mapping begins.
    void operator()(char* bytes) const;
};
}  // namespace detail

/// A block of memory that grows without its bytes being copied again and again. Move-only.
///
/// A small block comes from the allocator. It is copied once, when it becomes large.
///
/// A large block is a mapping of its own. A terabyte of addresses is set aside for it at once, so
/// that it can grow in its place. Where a process may not have so many addresses, the system moves
/// the pages when the block grows. Where it cannot move pages either, the allocator is asked for
/// all of it. Memory is taken 256 KB at a time. From some megabytes on it is taken one large page
/// at a time, as long as the system gives these soon.
///
/// Pages of a large block can be borrowed from a file. That costs neither memory nor copying:
///
///     | own | borrowed | own | borrowed |  own, more to come  |  addresses only  ...
///
/// Borrowed pages have the content of the file, also when somebody writes to it later. Once the
/// file has been shortened, looking at them raises a signal. `read` raises none and returns false,
/// and write(2) fails.
class GrowingMemory {
 public:
    GrowingMemory() = default;
    GrowingMemory(const GrowingMemory&) = delete;
    GrowingMemory& operator=(const GrowingMemory&) = delete;
    /// The memory changes hands; `other` has none then.
    GrowingMemory(GrowingMemory&& other) noexcept
        : small_(std::move(other.small_)),
          mapping_(std::move(other.mapping_)),
          data_(std::exchange(other.data_, nullptr)),
          size_(std::exchange(other.size_, 0)),
          largePagesComeSoon_(other.largePagesComeSoon_),
          borrowed_(std::exchange(other.borrowed_, {})) {}
    /// Likewise; what was here before is given back.
    GrowingMemory& operator=(GrowingMemory&& other) noexcept {
        small_ = std::move(other.small_);
        mapping_ = std::move(other.mapping_);
        data_ = std::exchange(other.data_, nullptr);
        size_ = std::exchange(other.size_, 0);
        largePagesComeSoon_ = other.largePagesComeSoon_;
        borrowed_ = std::exchange(other.borrowed_, {});
        return *this;
    }
    ~GrowingMemory() = default;

    /// Where it begins, until it grows; owned by this. Null while there is none.
    [[nodiscard]] char* data() const { return data_; }
    /// In bytes.
    [[nodiscard]] std::size_t size() const { return size_; }

    /// Makes it at least `size` bytes, more than it has. Its bytes stay, new ones have any value.
    /// False, and all is as it was, where there is no room for so much.
    [[nodiscard]] bool grow(std::size_t size);

    /// Lets `pages`, which are whole pages of this memory, be those of an open file from `offset`
    /// (bytes from its start), where a page of it begins. They are in memory then, and must not be
    /// written to. False where that cannot be: they may have any value. Throws std::bad_alloc where
    /// there is no memory in their place any more.
    [[nodiscard]] bool borrow(FileSystem& files, int file, std::uint64_t offset,
                              std::span<char> pages);

    /// Makes what lies at or after `begin` own memory again, of any value; `begin` is not inside
    /// borrowed pages. Throws std::bad_alloc like `borrow`.
    void makeOwn(std::size_t begin);

    /// Whether any of these bytes are borrowed.
    [[nodiscard]] bool isBorrowed(std::size_t offset, std::size_t count) const;

    /// Copies bytes from `offset` on. False where some were borrowed and are lost.
    [[nodiscard]] bool read(std::size_t offset, std::span<char> into) const;

 private:
    /// Offsets of pages that are borrowed together.
    struct Piece {
        std::size_t begin;
        std::size_t end;
    };
    using Block = std::unique_ptr<char[], detail::FreeBlock>;
    using Pages = std::unique_ptr<char[], detail::UnmapPages>;

    [[nodiscard]] static Pages reserve(std::size_t size);
    [[nodiscard]] bool growSmall(std::size_t size);
    [[nodiscard]] bool growMapping(std::size_t size);
    [[nodiscard]] bool moveMapping(std::size_t size);
    [[nodiscard]] bool hasRoom() const;
    [[nodiscard]] std::size_t endOfLargePage(std::size_t offset) const;
    void populateLarge(std::span<char> pages);
    static void populate(std::span<char> pages);
    static void makeOwn(std::span<char> pages);

    Block small_;
    Pages mapping_;
    char* data_ = nullptr;  // of one of these
    std::size_t size_ = 0;
    bool largePagesComeSoon_ = true;
    std::vector<Piece> borrowed_;  // in their order
};

}  // namespace quirebind
