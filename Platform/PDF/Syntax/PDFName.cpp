// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/PDFName.h"

#include <string>

#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {

void appendName(std::string_view bytes, ByteBuffer& out) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    constexpr char kFirstPrintable = '!';
    constexpr char kLastPrintable = '~';
    std::string text = "/";
    for (const char c : bytes) {
        if (c >= kFirstPrintable && c <= kLastPrintable && c != '#' && isRegular(c)) {
            text += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        text += '#';
        text += kDigits[byte >> 4U];
        text += kDigits[byte & 0xfU];
    }
    out.append(text);
}

}  // namespace quirebind
