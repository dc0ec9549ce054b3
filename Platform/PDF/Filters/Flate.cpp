// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Filters/Flate.h"

#include <libdeflate.h>

// zlib takes its input through pointers to const where it is asked to.
#define ZLIB_CONST
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include <zlib.h>

#include "Platform/PDF/Syntax/Characters.h"

// The zlib format (ISO 32000-2, 7.4.4; RFC 1950):
//
//     header     2 bytes
//     deflate    the data; says itself where it ends
//     Adler-32   4 bytes, the checksum of the decoded data
//
// libdeflate reads what is sound, and reads it fast. It gives nothing of what is not, so whatever
// it refuses is decoded again by zlib, without a look at header and checksum:
//
//  1. The header is right: what the deflate data gives. It is complete if it ends, whatever
//  follows.
//  2. The header is wrong: the deflate data behind it.
//  3. The header is missing: the deflate data in its place.
//
// 2 and 3 are guesses, and a few bytes of anything can pass for deflate data. They are complete
// only if the checksum agrees or if nothing follows. If neither guess is, the one that gave more
// stands.

namespace quirebind {

namespace {

constexpr std::size_t kHeaderSize = 2;
constexpr std::size_t kChecksumSize = 4;
// The first buffer has room for data that shrank to an eighth, which most data does not. A guess
// too small costs a second attempt, one too large only address space.
constexpr std::size_t kUsualRatio = 8;
constexpr std::size_t kSmallestBuffer = 4096;
constexpr std::size_t kPieceSize = std::size_t{64} * 1024;

/// min(size * factor, limit), without overflow.
std::size_t multiplied(std::size_t size, std::size_t factor, std::size_t limit) {
    return size > limit / factor ? limit : size * factor;
}

struct DecompressorDeleter {
    void operator()(libdeflate_decompressor* decompressor) const {
        libdeflate_free_decompressor(decompressor);
    }
};

// Gives nothing unless the data is sound and fits the limit. The buffer doubles until it is large
// enough, so that all attempts together cost at most twice the last one.
std::optional<std::string> decodeSound(std::string_view encoded, std::size_t limit) {
    const std::unique_ptr<libdeflate_decompressor, DecompressorDeleter> decompressor(
        libdeflate_alloc_decompressor());
    if (!decompressor) throw std::bad_alloc();

    std::size_t capacity =
        std::min(limit, std::max(kSmallestBuffer, multiplied(encoded.size(), kUsualRatio, limit)));
    for (;;) {
        // NOLINTNEXTLINE(*-avoid-c-arrays): nothing else leaves memory that is not used untouched.
        const auto buffer = std::make_unique_for_overwrite<char[]>(capacity);
        std::size_t size = 0;
        const libdeflate_result result = libdeflate_zlib_decompress(
            decompressor.get(), encoded.data(), encoded.size(), buffer.get(), capacity, &size);
        if (result == LIBDEFLATE_SUCCESS) return std::string(buffer.get(), size);
        // At the limit zlib has the last word: in data that is cut off, libdeflate may read zeros
        // behind the end as more output before it notices.
        if (result != LIBDEFLATE_INSUFFICIENT_SPACE || capacity == limit) return std::nullopt;
        capacity = multiplied(capacity, 2, limit);
    }
}

/// zlib's state for deflate data without header and checksum.
class Inflater {
 public:
    explicit Inflater(std::string_view deflated) : rest_(deflated) {
        // Negative: no header; 15: the largest window.
        if (inflateInit2(&stream_, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
    }
    Inflater(const Inflater&) = delete;
    Inflater(Inflater&&) = delete;
    Inflater& operator=(const Inflater&) = delete;
    Inflater& operator=(Inflater&&) = delete;
    ~Inflater() { inflateEnd(&stream_); }

    /// The next decoded bytes, valid until the next call; zlib's code says whether more will come
    /// (Z_OK), all came (Z_STREAM_END) or no more can come.
    std::pair<std::string_view, int> next() {
        if (stream_.avail_in == 0) feed();
        setOutput(piece_.data());
        stream_.avail_out = static_cast<uInt>(piece_.size());
        const int code = inflate(&stream_, Z_NO_FLUSH);
        if (code == Z_MEM_ERROR) throw std::bad_alloc();
        return {{piece_.data(), piece_.size() - stream_.avail_out}, code};
    }

    /// How many encoded bytes were not needed.
    [[nodiscard]] std::size_t unread() const { return rest_.size() + stream_.avail_in; }

 private:
    // zlib counts in 32 bits.
    void feed() {
        const std::size_t size =
            std::min<std::size_t>(rest_.size(), std::numeric_limits<uInt>::max());
        setInput(rest_.data());
        stream_.avail_in = static_cast<uInt>(size);
        rest_.remove_prefix(size);
    }

    void setInput(const void* bytes) { stream_.next_in = static_cast<const Bytef*>(bytes); }
    void setOutput(void* bytes) { stream_.next_out = static_cast<Bytef*>(bytes); }

    z_stream stream_{};
    std::string_view rest_;
    std::array<char, kPieceSize> piece_{};
};

struct Inflated {
    Decoded decoded;
    std::string_view rest;  // what follows the deflate data
};

Inflated inflateAll(std::string_view deflated, std::size_t limit) {
    Inflater inflater(deflated);
    std::string bytes;
    int code = Z_OK;
    while (code == Z_OK) {
        std::string_view piece;
        std::tie(piece, code) = inflater.next();
        if (piece.size() > limit - bytes.size()) {
            return {.decoded = {.bytes = {}, .status = DecodeStatus::tooLarge}, .rest = {}};
        }
        bytes.append(piece);
    }
    const DecodeStatus status =
        code == Z_STREAM_END ? DecodeStatus::complete : DecodeStatus::damaged;
    return {.decoded = {.bytes = std::move(bytes), .status = status},
            .rest = deflated.substr(deflated.size() - inflater.unread())};
}

// RFC 1950, 2.2: the compression method and the check bits.
bool hasHeader(std::string_view encoded) {
    if (encoded.size() < kHeaderSize) return false;
    const unsigned method = static_cast<unsigned char>(encoded[0]);
    const unsigned flags = static_cast<unsigned char>(encoded[1]);
    return (method & 0x0FU) == 8 && (method * 256 + flags) % 31 == 0;
}

bool isChecksum(std::string_view text, std::string_view decoded) {
    if (text.size() < kChecksumSize) return false;
    std::uint32_t checksum = 0;
    for (const char c : text.substr(0, kChecksumSize)) {
        checksum = (checksum << 8U) | static_cast<unsigned char>(c);
    }
    return checksum == libdeflate_adler32(1, decoded.data(), decoded.size());
}

Decoded decodeGuess(std::string_view deflated, std::size_t limit) {
    Inflated inflated = inflateAll(deflated, limit);
    if (inflated.decoded.status == DecodeStatus::complete &&
        !isChecksum(inflated.rest, inflated.decoded.bytes) &&
        !std::ranges::all_of(inflated.rest, isWhite)) {
        inflated.decoded.status = DecodeStatus::damaged;
    }
    return std::move(inflated.decoded);
}

Decoded decodeWithoutHeader(std::string_view encoded, std::size_t limit) {
    Decoded behind = decodeGuess(encoded.substr(std::min(kHeaderSize, encoded.size())), limit);
    if (behind.status == DecodeStatus::complete) return behind;
    Decoded inPlace = decodeGuess(encoded, limit);
    if (inPlace.status == DecodeStatus::complete) return inPlace;
    // What exceeds the limit gave the most.
    if (behind.status == DecodeStatus::tooLarge) return behind;
    if (inPlace.status == DecodeStatus::tooLarge) return inPlace;
    return inPlace.bytes.size() > behind.bytes.size() ? inPlace : behind;
}

}  // namespace

Decoded decodeFlate(std::string_view encoded, std::size_t limit) {
    if (std::optional<std::string> bytes = decodeSound(encoded, limit)) {
        return {.bytes = std::move(*bytes), .status = DecodeStatus::complete};
    }
    if (hasHeader(encoded)) return inflateAll(encoded.substr(kHeaderSize), limit).decoded;
    return decodeWithoutHeader(encoded, limit);
}

}  // namespace quirebind
