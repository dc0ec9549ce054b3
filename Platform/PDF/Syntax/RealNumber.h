// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string_view>

namespace quirebind {

/// The real number at the beginning of a text (ISO 32000-2, 7.3.3), in whatever spelling that real
/// files give it: with several signs, without digits before or behind the point, with something
/// behind it. It is the nearest one that a double can be, in every locale. Nothing where there is
/// no digit, or where a double cannot hold it. Throws std::bad_alloc only for a number of more than
/// 15 digits.
[[nodiscard]] std::optional<double> realNumber(std::string_view text);

}  // namespace quirebind
