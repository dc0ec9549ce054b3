// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quirebind {

/// The three classes into which PDF divides all bytes (ISO 32000-2, 7.2.3).
enum class CharacterClass : std::uint8_t { regular, white, delimiter };

namespace detail {
/// For kCharacterClasses.
constexpr std::array<CharacterClass, 256> makeCharacterClasses() {
    std::array<CharacterClass, 256> classes{};
    for (const char c : std::string_view("\0\t\n\f\r ", 6))
        classes[static_cast<unsigned char>(c)] = CharacterClass::white;
    for (const char c : std::string_view("()<>[]{}/%"))
        classes[static_cast<unsigned char>(c)] = CharacterClass::delimiter;
    return classes;
}
/// By byte.
inline constexpr auto kCharacterClasses = makeCharacterClasses();
}  // namespace detail

/// Which class a byte is of.
constexpr CharacterClass characterClass(char c) {
    return detail::kCharacterClasses[static_cast<unsigned char>(c)];
}
/// Whether it is white space, which the null byte is, too (table 1).
constexpr bool isWhite(char c) {
    return characterClass(c) == CharacterClass::white;
}
/// Whether it is neither white space nor a delimiter (table 2).
constexpr bool isRegular(char c) {
    return characterClass(c) == CharacterClass::regular;
}
/// Whether it is a decimal digit, in every locale.
constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The position of the first byte at or after `at` that is neither white space nor in a comment;
/// the text's size where there is none.
constexpr std::size_t skipWhite(std::string_view text, std::size_t at) {
    while (at < text.size()) {
        if (isWhite(text[at])) {
            ++at;
        } else if (text[at] == '%') {
            while (at < text.size() && text[at] != '\n' && text[at] != '\r') ++at;
        } else {
            break;
        }
    }
    return at;
}

/// The end of the run of regular bytes that begins at `at`.
constexpr std::size_t skipRegular(std::string_view text, std::size_t at) {
    while (at < text.size() && isRegular(text[at])) ++at;
    return at;
}

/// The value of a hexadecimal digit, -1 for any other byte.
constexpr int hexValue(char c) {
    if (isDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace quirebind
