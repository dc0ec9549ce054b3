// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Filters/ASCII85.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {

namespace {

constexpr std::size_t kGroupCharacters = 5;
constexpr std::size_t kGroupBytes = 4;
constexpr char kFirstDigit = '!';
constexpr char kLastDigit = 'u';
constexpr std::uint64_t kBase = 85;

std::string_view withoutLeadingWhiteSpace(std::string_view text) {
    while (!text.empty() && isWhite(text.front())) text.remove_prefix(1);
    return text;
}

// Data copied out of PostScript sometimes keeps the opening mark, which PDF does not know.
std::string_view withoutOpeningMark(std::string_view encoded) {
    constexpr std::string_view kOpeningMark = "<~";
    const std::string_view text = withoutLeadingWhiteSpace(encoded);
    return text.starts_with(kOpeningMark) ? text.substr(kOpeningMark.size()) : encoded;
}

class ASCII85Decoder {
 public:
    explicit ASCII85Decoder(std::size_t limit) : limit_(limit) {}

    Decoded decode(std::string_view encoded) {
        DecodeStatus status = DecodeStatus::complete;
        for (std::size_t at = 0; at < encoded.size() && status == DecodeStatus::complete; ++at) {
            if (encoded[at] == '~') return finish(isEndMark(encoded.substr(at + 1)));
            status = take(encoded[at]);
        }
        if (status == DecodeStatus::complete) return finish(true);
        return give(status);
    }

 private:
    // What follows a `~`. Data cut between the two characters of the mark has still lost nothing.
    static bool isEndMark(std::string_view afterTilde) {
        const std::string_view rest = withoutLeadingWhiteSpace(afterTilde);
        return rest.empty() || rest.front() == '>';
    }

    DecodeStatus take(char c) {
        if (isWhite(c)) return DecodeStatus::complete;
        // `z` is a whole group of zeros; it may not stand inside another group.
        if (c == 'z' && count_ == 0) return put(kGroupBytes);
        if (c < kFirstDigit || c > kLastDigit) return DecodeStatus::damaged;
        value_ = value_ * kBase + static_cast<std::uint64_t>(c - kFirstDigit);
        if (++count_ < kGroupCharacters) return DecodeStatus::complete;
        return put(kGroupBytes);
    }

    // A last group of n characters stands for n - 1 bytes. The missing characters count as the
    // highest digit, which makes up for what the encoder lost when it cut them off.
    Decoded finish(bool properEnd) {
        DecodeStatus status = DecodeStatus::complete;
        if (count_ == 1) status = DecodeStatus::damaged;
        if (count_ > 1) {
            const std::size_t bytes = count_ - 1;
            for (; count_ < kGroupCharacters; ++count_) value_ = value_ * kBase + (kBase - 1);
            status = put(bytes);
        }
        if (status == DecodeStatus::complete && !properEnd) status = DecodeStatus::damaged;
        return give(status);
    }

    // Ends the group with the upper `size` of its four bytes.
    DecodeStatus put(std::size_t size) {
        if (value_ > std::numeric_limits<std::uint32_t>::max()) return DecodeStatus::damaged;
        if (size > limit_ - bytes_.size()) return DecodeStatus::tooLarge;
        const std::array<char, kGroupBytes> group = {
            static_cast<char>((value_ >> 24U) & 0xFFU), static_cast<char>((value_ >> 16U) & 0xFFU),
            static_cast<char>((value_ >> 8U) & 0xFFU), static_cast<char>(value_ & 0xFFU)};
        bytes_.append(group.data(), size);
        value_ = 0;
        count_ = 0;
        return DecodeStatus::complete;
    }

    Decoded give(DecodeStatus status) {
        if (status == DecodeStatus::tooLarge) return {.bytes = {}, .status = status};
        return {.bytes = std::move(bytes_), .status = status};
    }

    std::size_t limit_;
    std::string bytes_;
    // The group being read: 85^5 - 1 does not fit 32 bits, which is how an overflow is seen.
    std::uint64_t value_ = 0;
    std::size_t count_ = 0;
};

}  // namespace

// ISO 32000-2, 7.4.3. Real files leave out the `~>`: the end of the data serves as well.
Decoded decodeASCII85(std::string_view encoded, std::size_t limit) {
    return ASCII85Decoder(limit).decode(withoutOpeningMark(encoded));
}

}  // namespace quirebind
