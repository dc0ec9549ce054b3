// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/FoundParts.h"

namespace quirebind {

/// Where a value stands in a text.
struct Extent {
    std::size_t begin = 0;
    std::size_t end = 0;     ///< npos where the text is no value or ends inside it.
    std::size_t looked = 0;  ///< How far the text was read to know that.

    /// Whether there is a whole value.
    [[nodiscard]] bool isValue() const { return end != std::string_view::npos; }
    /// The value, in the text that was scanned.
    [[nodiscard]] std::string_view in(std::string_view text) const {
        return text.substr(begin, end - begin);
    }
};

/// Finds the value that begins at `at`, behind white space. Nothing is built: strings, names and
/// numbers are passed over, brackets are counted. What is met replaces the content of `parts`,
/// unless that is null. An absent value ("1 0 obj endobj") has no length.
[[nodiscard]] Extent scanValue(std::string_view text, std::size_t at, FoundParts* parts = nullptr);

/// Reads an unsigned decimal integer of at most 19 digits at `at` and moves `at` behind it. False,
/// and `at` unmoved, where there is none.
[[nodiscard]] inline bool readUnsigned(std::string_view text, std::size_t& at,
                                       std::uint64_t& value) {
    constexpr std::size_t kDigits = 19;  // fits 64 bits whatever the digits are
    std::size_t end = at;
    std::uint64_t result = 0;
    while (end < text.size() && isDigit(text[end])) {
        if (end - at == kDigits) return false;
        result = result * 10 + static_cast<std::uint64_t>(text[end] - '0');
        ++end;
    }
    if (end == at) return false;
    at = end;
    value = result;
    return true;
}

/// Reads "N G R" at `at` and moves `at` behind it. False, and `at` unmoved, where something else
/// stands there; `looked` is how far the text was read to know that.
[[nodiscard]] bool readReference(std::string_view text, std::size_t& at, Reference& reference,
                                 std::size_t& looked);

}  // namespace quirebind
