// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quirebind {

/// Bytes that can be looked at anywhere, of a file for instance.
class ByteSource {
 public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    ByteSource(ByteSource&&) noexcept = default;
    ByteSource& operator=(ByteSource&&) noexcept = default;
    virtual ~ByteSource() = default;

    /// How many bytes there are.
    [[nodiscard]] virtual std::uint64_t size() const = 0;

    /// The bytes from `offset`: at least `length` of them unless the source ends before, and more
    /// where more is at hand. How long they stay valid is for the source to say.
    [[nodiscard]] virtual std::string_view view(std::uint64_t offset, std::size_t length) = 0;
};

}  // namespace quirebind
