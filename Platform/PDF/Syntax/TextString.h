// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quirebind {

/// How the bytes of a text string stand for characters (ISO 32000-2, 7.9.2.2). The three others
/// begin with a byte order mark. The last one is in files, though not in the standard.
enum class TextEncoding : std::uint8_t {
    documentEncoding,   ///< PDFDocEncoding (annex D.3), a byte for each character.
    utf8,               ///< EF BB BF
    utf16BigEndian,     ///< FE FF
    utf16LittleEndian,  ///< FF FE
};

/// Which encoding the first bytes of a text string tell.
[[nodiscard]] TextEncoding textEncoding(std::string_view bytes);

/// The text that the bytes of a text string stand for, as UTF-8. Every string has one: a byte that
/// has no meaning stands for itself, so that different strings stay different.
[[nodiscard]] std::string textOf(std::string_view bytes);

/// The bytes of a text string for `text`, which is UTF-8.
[[nodiscard]] std::string textStringOf(std::string_view text);

}  // namespace quirebind
