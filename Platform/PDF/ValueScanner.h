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

/// An entry of a dictionary, and where its key and its value stand. A last key without a value has
/// one of no length.
struct FoundEntry {
    std::size_t keyBegin = 0;
    std::size_t keyEnd = 0;
    std::size_t valueBegin = 0;
    std::size_t valueEnd = 0;
};

/// What a scan meets in a value, in the order in which it stands. Positions count from the value's
/// beginning. Whoever scans many values uses one of these again and again, so that nothing is
/// allocated.
struct FoundParts {
    std::vector<FoundReference> references;  ///< All, however deep.
    std::vector<FoundEntry> entries;         ///< Of the dictionary that the value itself is.
    /// Whether there was no other thing where a key should stand; the entries end there.
    bool wellFormed = true;

    void clear() {
        references.clear();
        entries.clear();
        wellFormed = true;
    }
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
