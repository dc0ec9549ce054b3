// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Filters/ASCIIHex.h"

#include <cstddef>
#include <optional>
#include <string_view>

#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {

// ISO 32000-2, 7.4.2. Real files leave out the `>`: the end of the data serves as well.
Decoded decodeASCIIHex(std::string_view encoded, std::size_t limit) {
    Decoded result;
    std::optional<unsigned> high;
    // Gives false when the limit is reached.
    const auto put = [&](unsigned byte) {
        if (result.bytes.size() == limit) return false;
        result.bytes.push_back(static_cast<char>(byte));
        return true;
    };

    for (const char c : encoded) {
        if (isWhite(c)) continue;
        if (c == '>') break;
        const int value = hexValue(c);
        if (value < 0) {
            result.status = DecodeStatus::damaged;
            return result;
        }
        const auto digit = static_cast<unsigned>(value);
        if (!high) {
            high = digit;
            continue;
        }
        if (!put((*high << 4U) | digit)) return {.bytes = {}, .status = DecodeStatus::tooLarge};
        high.reset();
    }
    // A last digit without its partner stands for itself and a zero.
    if (high && !put(*high << 4U)) return {.bytes = {}, .status = DecodeStatus::tooLarge};
    return result;
}

}  // namespace quirebind
