// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <compare>
#include <optional>
#include <string_view>

namespace quirebind {

/// A version of PDF, 1.0 to 2.0.
struct Version {
    int major = 1;
    int minor = 0;

    friend auto operator<=>(const Version&, const Version&) = default;
};

/// Reads "1.7" at the start of `text`. A version that does not exist gives the highest one below
/// it; nothing where there is no version at all.
[[nodiscard]] std::optional<Version> parseVersion(std::string_view text);

}  // namespace quirebind
