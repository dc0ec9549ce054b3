// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Whether this is a string, literal or hexadecimal (ISO 32000-2, 7.3.4).
[[nodiscard]] bool isString(Value value);

/// What an end of line inside a literal string stands for.
enum class LineEnds : std::uint8_t {
    lineFeed,  ///< As 7.3.4.2 has it.
    kept,      ///< Itself: among encrypted bytes nobody means anything else.
};

/// The bytes that a string stands for; none where this is no string.
[[nodiscard]] std::string stringBytes(Value value, LineEnds lineEnds = LineEnds::lineFeed);

/// Appends `bytes` as a literal string.
void appendLiteralString(std::string_view bytes, std::string& text);
/// The same, to the output.
void appendLiteralString(std::string_view bytes, ByteBuffer& out);

}  // namespace quirebind
