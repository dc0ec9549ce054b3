// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quirebind {

/// Names an indirect object of a source (ISO 32000-2, 7.3.10).
struct Reference {
    std::uint32_t number = 0;
    std::uint32_t generation = 0;

    friend bool operator==(const Reference&, const Reference&) = default;
};

/// Reads "N G R" at `at` and moves `at` behind it. False, and `at` unmoved, where something else
/// stands there; `looked` is how far the text was read to know that.
[[nodiscard]] bool readReference(std::string_view text, std::size_t& at, Reference& reference,
                                 std::size_t& looked);

}  // namespace quirebind
