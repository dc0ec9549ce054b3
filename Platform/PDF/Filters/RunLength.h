// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string_view>

#include "Platform/PDF/Filters/Decoded.h"

namespace quirebind {

/// Undoes /RunLengthDecode (ISO 32000-2, 7.4.5), giving at most `limit` bytes.
[[nodiscard]] Decoded decodeRunLength(std::string_view encoded, std::size_t limit);

}  // namespace quirebind
