// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
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

}  // namespace quirebind
