// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {

/// Sixty-four bytes of a text, sorted into classes (ISO 32000-2, 7.2.3), a bit for each byte, that
/// of the first one lowest. Where tokens begin and end is known of all of them at once then, and
/// no branch has to be taken for each byte.
struct CharacterBlock {
    /// Bytes of a block.
    static constexpr std::size_t kSize = 64;

    std::uint64_t separators = 0;  ///< White space and delimiters.
    std::uint64_t delimiters = 0;
    std::uint64_t solidi = 0;
    std::uint64_t words = 0;  ///< Letters, and whatever else is above the digits in ASCII.

    /// The bytes from `at` on, as if white space followed the end of the text.
    [[nodiscard]] static CharacterBlock of(std::string_view text, std::size_t at) {
        if (text.size() - at >= kSize) return of(text.data() + at);
        std::array<char, kSize> padded;  // NOLINT(cppcoreguidelines-pro-type-member-init)
        padded.fill(' ');
        text.copy(padded.data(), kSize, at);
        return of(padded.data());
    }

    /// The same byte by byte, for processors whose vectors are not known here.
    [[nodiscard]] static CharacterBlock ofEach(const char* bytes);

 private:
    [[nodiscard]] static CharacterBlock of(const char* bytes);
};

namespace detail {
/// The classes of a character, a bit each.
constexpr std::uint8_t characterBits(char c) {
    const unsigned separator = isRegular(c) ? 0 : 1;
    const unsigned delimiter = characterClass(c) == CharacterClass::delimiter ? 2 : 0;
    const unsigned solidus = c == '/' ? 4 : 0;
    const unsigned word = static_cast<signed char>(c) > '9' ? 8 : 0;
    return static_cast<std::uint8_t>(separator | delimiter | solidus | word);
}
/// Those of all 256, for kCharacterBits.
constexpr std::array<std::uint8_t, 256> makeCharacterBits() {
    std::array<std::uint8_t, 256> bits{};
    for (std::size_t c = 0; c < bits.size(); ++c) bits[c] = characterBits(static_cast<char>(c));
    return bits;
}
/// By byte.
inline constexpr auto kCharacterBits = makeCharacterBits();

/// The lowest bit of each of eight bytes, side by side.
constexpr std::uint64_t lowestBits(std::uint64_t bytes) {
    return (bytes & 0x0101010101010101U) * 0x0102040810204080U >> 56U;
}
}  // namespace detail

inline CharacterBlock CharacterBlock::ofEach(const char* bytes) {
    CharacterBlock result;
    for (std::size_t at = 0; at < kSize; at += 8) {
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < 8; ++i) {
            const auto c = static_cast<unsigned char>(bytes[at + i]);
            bits |= std::uint64_t{detail::kCharacterBits[c]} << (8 * i);
        }
        result.separators |= detail::lowestBits(bits) << at;
        result.delimiters |= detail::lowestBits(bits >> 1U) << at;
        result.solidi |= detail::lowestBits(bits >> 2U) << at;
        result.words |= detail::lowestBits(bits >> 3U) << at;
    }
    return result;
}

#if defined(__SSE2__)

namespace detail {
/// Sixteen bytes that are looked at together. What is true of a byte is all ones in its place.
struct Vector {
    __m128i bytes;

    /// Bit by bit.
    friend Vector operator|(Vector a, Vector b) { return {_mm_or_si128(a.bytes, b.bytes)}; }
    /// The same character sixteen times.
    [[nodiscard]] static Vector each(char c) { return {_mm_set1_epi8(c)}; }
    /// Which of the bytes are this one.
    [[nodiscard]] Vector is(char c) const { return {_mm_cmpeq_epi8(bytes, each(c).bytes)}; }
    /// Which of them are larger, as signed numbers.
    [[nodiscard]] Vector isAbove(char c) const { return {_mm_cmpgt_epi8(bytes, each(c).bytes)}; }
    /// With these bits of every byte set.
    [[nodiscard]] Vector with(char bits) const { return *this | each(bits); }
    /// The highest bit of each byte, that of the first one at position `at`.
    [[nodiscard]] std::uint64_t mask(std::size_t at) const {
        return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(bytes))) << at;
    }
};
}  // namespace detail

inline CharacterBlock CharacterBlock::of(const char* bytes) {
    CharacterBlock result;
    for (std::size_t at = 0; at < kSize; at += sizeof(__m128i)) {
        detail::Vector v{};
        std::memcpy(&v.bytes, bytes + at, sizeof v.bytes);
        // Characters that differ in one bit are looked for together.
        const detail::Vector white =
            v.with(0x20).is(' ') | v.with(0x04).is('\r') | v.is('\n') | v.is('\f');
        const detail::Vector solidus = v.is('/');
        const detail::Vector delimiter = solidus | v.is('%') | v.with(0x01).is(')') |
                                         v.with(0x02).is('>') | v.with(0x20).is('{') |
                                         v.with(0x20).is('}');
        result.separators |= (white | delimiter).mask(at);
        result.delimiters |= delimiter.mask(at);
        result.solidi |= solidus.mask(at);
        result.words |= v.isAbove('9').mask(at);
    }
    return result;
}

#else

inline CharacterBlock CharacterBlock::of(const char* bytes) {
    return ofEach(bytes);
}

#endif

}  // namespace quirebind
