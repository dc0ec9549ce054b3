// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Filters/LZW.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Codes of 9 to 12 bits, packed from the high-order bit down (ISO 32000-2, 7.4.4.2):
//
//     0 - 255      the byte itself
//     256          clear: the table is empty again, codes have 9 bits again
//     257          end of data
//     258 - 4095   the table: each is the string of one code and the first byte of the next code's
//
// What real files do instead: they start without a clear code (the table is empty anyway), end
// without an end code, and fill the table without ever clearing it (codes stay at 12 bits).

namespace quirebind {

namespace {

constexpr unsigned kClearTable = 256;
constexpr unsigned kEndOfData = 257;
constexpr unsigned kFirstTableCode = 258;
constexpr unsigned kMinimumWidth = 9;
constexpr unsigned kMaximumWidth = 12;
constexpr std::size_t kMaximumTableSize = (std::size_t{1} << kMaximumWidth) - kFirstTableCode;

class LZWDecoder {
 public:
    LZWDecoder(std::string_view encoded, bool earlyChange, std::size_t limit)
        : encoded_(encoded), earlyChange_(earlyChange ? 1 : 0), limit_(limit) {}

    Decoded decode() {
        while (const std::optional<unsigned> code = readCode()) {
            if (*code == kEndOfData) break;
            if (*code == kClearTable) {
                table_.clear();
                previous_.reset();
                width_ = kMinimumWidth;
                continue;
            }
            const DecodeStatus status = take(*code);
            if (status == DecodeStatus::tooLarge) return {.bytes = {}, .status = status};
            if (status == DecodeStatus::damaged)
                return {.bytes = std::move(bytes_), .status = status};
        }
        return {.bytes = std::move(bytes_), .status = DecodeStatus::complete};
    }

 private:
    // A string of the table, as its place in the decoded bytes: each was written there before it
    // was named.
    struct Place {
        std::size_t start = 0;
        std::size_t length = 0;
    };

    // Nothing when fewer bits are left than a code has.
    std::optional<unsigned> readCode() {
        while (bitCount_ < width_) {
            if (at_ == encoded_.size()) return std::nullopt;
            bits_ = (bits_ << 8U) | static_cast<unsigned char>(encoded_[at_]);
            bitCount_ += 8;
            ++at_;
        }
        bitCount_ -= width_;
        return (bits_ >> bitCount_) & ((1U << width_) - 1U);
    }

    DecodeStatus take(unsigned code) {
        addToTable();
        Place string{.start = bytes_.size(), .length = 1};
        if (code < kClearTable) {
            if (bytes_.size() == limit_) return DecodeStatus::tooLarge;
            bytes_.push_back(static_cast<char>(code));
        } else {
            if (code - kFirstTableCode >= table_.size()) return DecodeStatus::damaged;
            const Place place = table_[code - kFirstTableCode];
            if (place.length > limit_ - bytes_.size()) return DecodeStatus::tooLarge;
            string.length = place.length;
            repeat(place);
        }
        previous_ = string;
        return DecodeStatus::complete;
    }

    // Names the string of the previous code and the byte after it, which the current code is about
    // to write.
    void addToTable() {
        if (!previous_ || table_.size() == kMaximumTableSize) return;
        table_.push_back({.start = previous_->start, .length = previous_->length + 1});
        const std::size_t next = kFirstTableCode + table_.size() + earlyChange_;
        if (next >= (std::size_t{1} << width_) && width_ < kMaximumWidth) ++width_;
    }

    // The newest string of the table still lacks its last byte, the first one written here; append
    // stops short of it.
    void repeat(Place place) {
        const std::size_t end = bytes_.size() + place.length;
        bytes_.append(bytes_, place.start, place.length);
        if (bytes_.size() < end) bytes_.push_back(bytes_[place.start + place.length - 1]);
    }

    std::string_view encoded_;
    std::size_t earlyChange_;
    std::size_t limit_;
    std::size_t at_ = 0;
    // Holds up to 19 unread bits at its low end; read ones are shifted out at the top.
    std::uint32_t bits_ = 0;
    unsigned bitCount_ = 0;
    unsigned width_ = kMinimumWidth;
    std::vector<Place> table_;
    std::optional<Place> previous_;
    std::string bytes_;
};

}  // namespace

Decoded decodeLZW(std::string_view encoded, bool earlyChange, std::size_t limit) {
    return LZWDecoder(encoded, earlyChange, limit).decode();
}

}  // namespace quirebind
