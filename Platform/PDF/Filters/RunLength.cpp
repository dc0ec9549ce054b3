// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Filters/RunLength.h"

#include <cstddef>
#include <string_view>

namespace quirebind {

namespace {

constexpr std::size_t kEndOfData = 128;
// A length byte under kEndOfData announces that many bytes and one, above it a byte to repeat
// kRepeatBase - length times.
constexpr std::size_t kRepeatBase = 257;

}  // namespace

// ISO 32000-2, 7.4.5. Real files leave out the end-of-data byte: the end of the data serves as
// well.
Decoded decodeRunLength(std::string_view encoded, std::size_t limit) {
    Decoded result;
    std::size_t at = 0;
    while (at < encoded.size()) {
        const std::size_t length = static_cast<unsigned char>(encoded[at]);
        ++at;
        if (length == kEndOfData) break;

        const std::size_t room = limit - result.bytes.size();
        if (length < kEndOfData) {
            const std::string_view literal = encoded.substr(at, length + 1);
            if (literal.size() > room) return {.bytes = {}, .status = DecodeStatus::tooLarge};
            result.bytes.append(literal);
            at += literal.size();
            if (literal.size() <= length) result.status = DecodeStatus::damaged;
        } else if (at == encoded.size()) {
            result.status = DecodeStatus::damaged;
        } else {
            if (kRepeatBase - length > room) return {.bytes = {}, .status = DecodeStatus::tooLarge};
            result.bytes.append(kRepeatBase - length, encoded[at]);
            ++at;
        }
    }
    return result;
}

}  // namespace quirebind
