// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/TextString.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quirebind {
namespace {

constexpr std::string_view kUTF8 = "\xEF\xBB\xBF";
constexpr std::string_view kUTF16BigEndian = "\xFE\xFF";
constexpr std::string_view kUTF16LittleEndian = "\xFF\xFE";

/// Where PDFDocEncoding (ISO 32000-2, annex D.3) is not Latin-1.
constexpr unsigned kFirstAccent = 0x18;
constexpr std::array<char16_t, 8> kAccents{0x02D8, 0x02C7, 0x02C6, 0x02D9,
                                           0x02DD, 0x02DB, 0x02DA, 0x02DC};
constexpr unsigned kFirstSign = 0x80;
constexpr std::array<char16_t, 31> kSigns{
    0x2022, 0x2020, 0x2021, 0x2026, 0x2014, 0x2013, 0x0192, 0x2044, 0x2039, 0x203A, 0x2212,
    0x2030, 0x201E, 0x201C, 0x201D, 0x2018, 0x2019, 0x201A, 0x2122, 0xFB01, 0xFB02, 0x0141,
    0x0152, 0x0160, 0x0178, 0x017D, 0x0131, 0x0142, 0x0153, 0x0161, 0x017E};
constexpr unsigned kEuroByte = 0xA0;
constexpr char32_t kEuro = 0x20AC;

char32_t characterOf(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    if (code >= kFirstAccent && code - kFirstAccent < kAccents.size())
        return kAccents.at(code - kFirstAccent);
    if (code >= kFirstSign && code - kFirstSign < kSigns.size())
        return kSigns.at(code - kFirstSign);
    return code == kEuroByte ? kEuro : code;
}

void appendUTF8(char32_t c, std::string& text) {
    const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (c < 0x80) {
        append(c);
    } else if (c < 0x800) {
        append(0xC0U | (c >> 6U));
        append(0x80U | (c & 0x3FU));
    } else if (c < 0x10000) {
        append(0xE0U | (c >> 12U));
        append(0x80U | ((c >> 6U) & 0x3FU));
        append(0x80U | (c & 0x3FU));
    } else {
        append(0xF0U | (c >> 18U));
        append(0x80U | ((c >> 12U) & 0x3FU));
        append(0x80U | ((c >> 6U) & 0x3FU));
        append(0x80U | (c & 0x3FU));
    }
}

char32_t unitAt(std::string_view bytes, std::size_t at, std::size_t high) {
    const auto byte = [bytes](std::size_t i) -> char32_t {
        return static_cast<unsigned char>(bytes[i]);
    };
    return byte(at + high) * 256 + byte(at + 1 - high);
}

/// `high` is where the higher byte of a unit stands. A surrogate without its other half stands for
/// itself; the last byte of an odd number means nothing.
std::string textOfUTF16(std::string_view bytes, std::size_t high) {
    const auto isIn = [](char32_t unit, char32_t first) { return (unit & 0xFC00U) == first; };
    constexpr char32_t kHigh = 0xD800;
    constexpr char32_t kLow = 0xDC00;
    std::string text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t c = unitAt(bytes, at, high);
        if (isIn(c, kHigh) && at + 3 < bytes.size()) {
            const char32_t next = unitAt(bytes, at + 2, high);
            if (isIn(next, kLow)) {
                c = 0x10000 + ((c - kHigh) << 10U) + (next - kLow);
                at += 2;
            }
        }
        appendUTF8(c, text);
    }
    return text;
}

/// The character at `at`, which moves behind it. Bytes that are not UTF-8 stand for themselves.
char32_t nextCharacter(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    std::size_t count = 0;
    if (lead >= 0xC2 && lead < 0xE0) count = 1;
    if (lead >= 0xE0 && lead < 0xF0) count = 2;
    if (lead >= 0xF0 && lead < 0xF5) count = 3;
    if (count == 0 || text.size() - at < count) return lead;
    char32_t c = lead & (0x3FU >> count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto byte = static_cast<unsigned char>(text[at + i]);
        if ((byte & 0xC0U) != 0x80) return lead;
        c = (c << 6U) | (byte & 0x3FU);
    }
    at += count;
    return c;
}

void appendUTF16(char32_t c, std::string& bytes) {
    const auto append = [&bytes](char32_t unit) {
        bytes += static_cast<char>(unit >> 8U);
        bytes += static_cast<char>(unit & 0xFFU);
    };
    if (c < 0x10000) {
        append(c);
    } else {
        append(0xD800 + ((c - 0x10000) >> 10U));
        append(0xDC00 + ((c - 0x10000) & 0x3FFU));
    }
}

}  // namespace

TextEncoding textEncoding(std::string_view bytes) {
    if (bytes.starts_with(kUTF16BigEndian)) return TextEncoding::utf16BigEndian;
    if (bytes.starts_with(kUTF8)) return TextEncoding::utf8;
    if (bytes.starts_with(kUTF16LittleEndian)) return TextEncoding::utf16LittleEndian;
    return TextEncoding::documentEncoding;
}

std::string textOf(std::string_view bytes) {
    switch (textEncoding(bytes)) {
        case TextEncoding::utf16BigEndian:
            return textOfUTF16(bytes.substr(kUTF16BigEndian.size()), 0);
        case TextEncoding::utf16LittleEndian:
            return textOfUTF16(bytes.substr(kUTF16LittleEndian.size()), 1);
        case TextEncoding::utf8:
            return std::string(bytes.substr(kUTF8.size()));
        case TextEncoding::documentEncoding:
            break;
    }
    std::string text;
    for (const char byte : bytes) appendUTF8(characterOf(byte), text);
    return text;
}

std::string textStringOf(std::string_view text) {
    // The printable characters of ASCII, and white space, are the same in PDFDocEncoding.
    const auto isSame = [](char c) {
        return (c >= ' ' && c <= '~') || c == '\n' || c == '\r' || c == '\t';
    };
    if (std::ranges::all_of(text, isSame)) return std::string(text);
    std::string bytes(kUTF16BigEndian);
    for (std::size_t at = 0; at < text.size();) appendUTF16(nextCharacter(text, at), bytes);
    return bytes;
}

}  // namespace quirebind
