// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string_view>

#include "Platform/PDF/Filters/Decoded.h"

namespace quirebind {

/// Undoes /LZWDecode (ISO 32000-2, 7.4.4), giving at most `limit` bytes. `earlyChange`: whether
/// codes become longer one code early (7.4.4.3, table 8).
[[nodiscard]] Decoded decodeLZW(std::string_view encoded, bool earlyChange, std::size_t limit);

}  // namespace quirebind
