// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <span>

namespace quirebind {

/// Memory for pieces of a file that is read here and there, and how they lie in it.
class FilePieces {
 public:
    /// Memory for a piece of so many bytes. Valid until `release`. `isInOrder`: it stands shortly
    /// behind the one before.
    [[nodiscard]] std::span<char> allocate(std::size_t size, bool isInOrder);

    /// Bytes allocated since the last `release`.
    [[nodiscard]] std::size_t held() const { return held_; }

    /// Whether so much is held that it is time for a `release`.
    [[nodiscard]] bool isFull() const { return held_ > kUsual / 2; }

    /// Whether most of the pieces were in order, so that larger blocks serve the file better.
    [[nodiscard]] bool areInOrder() const { return count_ >= kEnough && inOrder_ > count_ / 2; }

    /// Gives the memory back.
    void release();

 private:
    static constexpr std::size_t kUsual = std::size_t{256} << 10U;
    static constexpr std::size_t kEnough = 64;  // pieces that tell how the file is read

    std::unique_ptr<std::byte[]> usual_ = std::make_unique_for_overwrite<std::byte[]>(kUsual);
    std::pmr::monotonic_buffer_resource memory_{usual_.get(), kUsual};
    std::size_t held_ = 0;
    std::size_t count_ = 0;    // since their order was looked at
    std::size_t inOrder_ = 0;  // of them, those shortly behind the one before
};

}  // namespace quirebind
