// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Platform/PDF/Syntax/Characters.h"

/// What the tests of encryption have in common.
namespace quirebind::pdftest {

/// The bytes that the hexadecimal digits are; blanks between them do not count.
inline std::string fromHex(std::string_view digits) {
    std::string result;
    int high = -1;
    for (const char c : digits) {
        const int digit = hexValue(c);
        if (digit < 0) continue;
        if (high >= 0) result += static_cast<char>(high * 16 + digit);
        high = high < 0 ? digit : -1;
    }
    return result;
}

}  // namespace quirebind::pdftest
