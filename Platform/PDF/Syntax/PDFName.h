// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

#include "Platform/Files/ByteBuffer.h"

namespace quirebind {

/// Appends the name of these bytes, with its solidus (ISO 32000-2, 7.3.5).
void appendName(std::string_view bytes, ByteBuffer& out);

}  // namespace quirebind
