// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/FoundParts.h"

#include <cstring>

namespace quirebind {
namespace {

/// What is compared at a time.
using Word = std::uint64_t;

constexpr Word everyByte(unsigned char byte) {
    return byte * (~Word{0} / 255);
}

/// The high bit of every byte that is no digit; all others are zero.
constexpr Word nonDigits(Word word) {
    const Word digits = word ^ everyByte('0');  // 0 to 9 where there are digits
    const Word above9 = (digits & everyByte(0x7f)) + everyByte(0x76);
    return (above9 | digits) & everyByte(0x80);
}

/// The high bit of every byte that is not zero; all others are zero.
constexpr Word nonZeros(Word word) {
    return (((word & everyByte(0x7f)) + everyByte(0x7f)) | word) & everyByte(0x80);
}

Word wordAt(std::string_view text, std::size_t at) {
    Word word = 0;
    std::memcpy(&word, text.data() + at, sizeof word);
    return word;
}

/// Whether there is nothing but digits where the two words differ.
constexpr bool differInDigits(Word a, Word b) {
    return a == b || (nonZeros(a ^ b) & (nonDigits(a) | nonDigits(b))) == 0;
}

// The shortest text that is compared, and the longest.
constexpr std::size_t kShortest = sizeof(Word);
constexpr std::size_t kLongest = 512;

}  // namespace

bool FoundParts::Shape::isThatOf(std::string_view other) const {
    const std::size_t size = text.size();
    if (size == 0 || other.size() < size) return false;
    for (std::size_t at = 0; at + sizeof(Word) <= size; at += sizeof(Word))
        if (!differInDigits(wordAt(text, at), wordAt(other, at))) return false;
    const std::size_t last = size - sizeof(Word);  // some bytes once more: harmless
    return differInDigits(wordAt(text, last), wordAt(other, last));
}

/// They are where they were: all that differs are digits, and none has come or gone.
void FoundParts::Shape::readReferences(std::string_view other) {
    for (FoundReference& each : found.references) {
        std::size_t end = each.begin;
        std::size_t looked = 0;
        (void)readReference(other, end, each.reference, looked);
    }
}

std::size_t FoundParts::recall(std::string_view text) {
    for (std::size_t i = 0; i < remembered_; ++i) {
        const std::size_t each = (current_ + i) % remembered_;
        Shape& shape = shapes_[each];
        if (!shape.isThatOf(text)) continue;
        if (readsReferences_) shape.readReferences(text);
        current_ = each;
        return shape.text.size();
    }
    return 0;
}

Found& FoundParts::renew() {
    if (!shapes_[current_].text.empty()) {
        oldest_ = (oldest_ + 1) % remembered_;
        current_ = oldest_;
    }
    Shape& shape = shapes_[current_];
    shape.text.clear();
    shape.serial = 0;
    Found& found = shape.found;
    // What a list of all fields took is not kept for small objects.
    constexpr std::size_t kMostKept = 4096;
    if (found.references.capacity() > kMostKept) found.references = {};
    if (found.entries.capacity() > kMostKept) found.entries = {};
    found.references.clear();
    found.entries.clear();
    found.wellFormed = true;
    if (found.entries.capacity() == 0) {
        constexpr std::size_t kUsual = 16;  // more than most dictionaries have
        found.references.reserve(kUsual);
        found.entries.reserve(kUsual);
    }
    return found;
}

void FoundParts::remember(std::string_view dictionary) {
    if (remembered_ == 0 || dictionary.size() < kShortest || dictionary.size() > kLongest) return;
    Shape& shape = shapes_[current_];
    shape.text = dictionary;
    // Digits behind a number sign stand for any character (ISO 32000-2, 7.3.5).
    if (dictionary.find('#') == std::string_view::npos) shape.serial = ++lastSerial_;
}

}  // namespace quirebind
