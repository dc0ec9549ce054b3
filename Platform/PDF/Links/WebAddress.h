// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace quirebind {

/// The address that `reference` means in a document at `base`, as RFC 3986 (5.2) has it:
/// `reference` itself where it says all, or where `base` is no address.
[[nodiscard]] std::string resolvedAddress(std::string_view base, std::string_view reference);

}  // namespace quirebind
