// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string_view>

#include "Platform/PDF/Filters/Decoded.h"

namespace quirebind {

/// Undoes /FlateDecode (ISO 32000-2, 7.4.4), giving at most `limit` bytes. Also of data whose
/// header or checksum is wrong, or missing.
[[nodiscard]] Decoded decodeFlate(std::string_view encoded, std::size_t limit);

}  // namespace quirebind
