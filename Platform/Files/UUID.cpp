// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/UUID.h"

#include <cstddef>
#include <string_view>

#include "Platform/Files/RandomBytes.h"

namespace quirebind {

UUID UUID::generate() {
    UUID result;
    fillRandom(result.bytes_);

    // RFC 9562, 5.4: the version in the high half of octet 6, the variant in the two high bits of
    // octet 8; all the others are random.
    constexpr std::uint8_t kVersion = 0x40;
    constexpr std::uint8_t kVariant = 0x80;
    result.bytes_[6] = static_cast<std::uint8_t>((result.bytes_[6] & 0x0FU) | kVersion);
    result.bytes_[8] = static_cast<std::uint8_t>((result.bytes_[8] & 0x3FU) | kVariant);
    return result;
}

std::string UUID::string() const {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        text += kDigits[bytes_[i] >> 4U];
        text += kDigits[bytes_[i] & 0x0FU];
    }
    return text;
}

}  // namespace quirebind
