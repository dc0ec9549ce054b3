// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string_view>

#include "Platform/PDF/Filters/Decoded.h"

namespace quirebind {

/// Undoes /ASCII85Decode (ISO 32000-2, 7.4.3), giving at most `limit` bytes.
[[nodiscard]] Decoded decodeASCII85(std::string_view encoded, std::size_t limit);

}  // namespace quirebind
