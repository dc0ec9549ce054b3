// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <utility>

namespace quirebind {

/// The size in bytes of a large page, where the system has them. It is only used to choose places:
/// where large pages are of another size, nothing goes wrong.
inline constexpr std::size_t kLargePage = std::size_t{2} << 20U;

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
/// A small one is the allocator's, and is copied once when it becomes large. A large one is a
/// mapping of its own, whose pages are moved instead; it lies on the boundaries of large pages, and
/// asks the system to use these: memory that is filled from front to back is given 4 KB at a time
/// otherwise, which takes as long as filling it. Where the system cannot move pages the allocator
/// has to do what it can.
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
          size_(std::exchange(other.size_, 0)) {}
    /// Likewise; what was here before is given back.
    GrowingMemory& operator=(GrowingMemory&& other) noexcept {
        small_ = std::move(other.small_);
        mapping_ = std::move(other.mapping_);
        data_ = std::exchange(other.data_, nullptr);
        size_ = std::exchange(other.size_, 0);
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

 private:
    using Block = std::unique_ptr<char[], detail::FreeBlock>;
    using Pages = std::unique_ptr<char[], detail::UnmapPages>;

    [[nodiscard]] static Pages reserve(std::size_t size);
    [[nodiscard]] bool growSmall(std::size_t size);
    [[nodiscard]] bool growMapping(std::size_t size);

    Block small_;
    Pages mapping_;
    char* data_ = nullptr;  // of one of these
    std::size_t size_ = 0;
};

}  // namespace quirebind
