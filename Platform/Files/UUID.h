// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string>

namespace quirebind {

/// A universally unique identifier, version 4 (random; RFC 9562, 5.4). A plain value.
class UUID {
 public:
    /// A fresh identifier from the system's random number generator. Throws std::system_error where
    /// that fails.
    [[nodiscard]] static UUID generate();

    /// The canonical form: 8-4-4-4-12 lower-case hexadecimal digits.
    [[nodiscard]] std::string string() const;

    friend auto operator<=>(const UUID&, const UUID&) = default;

 private:
    std::array<std::uint8_t, 16> bytes_{};
};

}  // namespace quirebind
