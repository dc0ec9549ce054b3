// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string_view>

#include "Platform/PDF/Filters/Decoded.h"

namespace quirebind {

/// Undoes /ASCIIHexDecode (ISO 32000-2, 7.4.2), giving at most `limit` bytes. White space is passed
/// over, and the > at the end may be missing.
[[nodiscard]] Decoded decodeASCIIHex(std::string_view encoded, std::size_t limit);

}  // namespace quirebind
