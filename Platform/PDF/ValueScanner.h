// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "Platform/PDF/Characters.h"
#include "Platform/PDF/Limits.h"

namespace quirebind {

/// Names an indirect object of a source (ISO 32000-2, 7.3.10).
struct Reference {
    std::uint32_t number = 0;
    std::uint32_t generation = 0;

    friend bool operator==(const Reference&, const Reference&) = default;
};

/// An indirect reference and where it stands in the text that was scanned.
struct FoundReference {
    std::size_t begin = 0;
    std::size_t end = 0;
    Reference reference;
};

/// Where a value stands in a text.
struct Extent {
    std::size_t begin = 0;
    std::size_t end = 0;     ///< npos where the text is no value or ends inside it.
    std::size_t looked = 0;  ///< How far the text was read to know that.

    [[nodiscard]] bool isValue() const { return end != std::string_view::npos; }
    [[nodiscard]] std::string_view in(std::string_view text) const {
        return text.substr(begin, end - begin);
    }
};

/// Finds the value that begins at `at`, behind white space. Nothing is built: strings, names and
/// numbers are passed over, brackets are counted. All indirect references in the value are appended
/// to `references`, unless that is null, in the order in which they stand; their positions count
/// from the value's beginning. An absent value ("1 0 obj endobj") has no length.
[[nodiscard]] Extent scanValue(std::string_view text, std::size_t at,
                               std::vector<FoundReference>* references = nullptr);

/// Reads an unsigned decimal integer of at most 19 digits at `at` and moves `at` behind it. False,
/// and `at` unmoved, where there is none.
[[nodiscard]] bool readUnsigned(std::string_view text, std::size_t& at, std::uint64_t& value);

/// Reads "N G R" at `at` and moves `at` behind it. False, and `at` unmoved, where something else
/// stands there; `looked` is how far the text was read to know that.
[[nodiscard]] bool readReference(std::string_view text, std::size_t& at, Reference& reference,
                                 std::size_t& looked);

}  // namespace quirebind
