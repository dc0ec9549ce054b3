// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quirebind {

/// How far decoding got.
enum class DecodeStatus : std::uint8_t {
    complete,  ///< Everything was decoded.
    damaged,   ///< The data is broken; what was decoded up to there is given.
    tooLarge,  ///< The decoded data would exceed the caller's limit; nothing is given.
};

/// What a filter made of encoded bytes.
struct Decoded {
    std::string bytes;
    DecodeStatus status = DecodeStatus::complete;
};

/// The standard filters that may stand on cross-reference streams and object streams
/// (ISO 32000-2, 7.4). Each takes the whole encoded data and gives at most `limit` bytes; memory is
/// taken as data is produced, never because a number in the file asks for it. Pure functions.
[[nodiscard]] Decoded decodeFlate(std::string_view encoded, std::size_t limit);
/// `earlyChange`: whether codes become longer one code early (7.4.4.3, table 8).
[[nodiscard]] Decoded decodeLZW(std::string_view encoded, bool earlyChange, std::size_t limit);
[[nodiscard]] Decoded decodeASCIIHex(std::string_view encoded, std::size_t limit);
[[nodiscard]] Decoded decodeASCII85(std::string_view encoded, std::size_t limit);
[[nodiscard]] Decoded decodeRunLength(std::string_view encoded, std::size_t limit);

/// The parameters of a predictor function (ISO 32000-2, table 8), with their defaults. As read from
/// the file: any value may be wrong.
struct PredictorParameters {
    int predictor = 1;
    int colors = 1;
    int bitsPerComponent = 8;
    int columns = 1;
};

/// Undoes the PNG or TIFF predictor that `decoded` was made with. Never larger than its input.
[[nodiscard]] Decoded undoPredictor(std::string decoded, const PredictorParameters& parameters);

}  // namespace quirebind
