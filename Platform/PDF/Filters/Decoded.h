// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>

namespace quirebind {

/// How far decoding got.
enum class DecodeStatus : std::uint8_t {
    complete,  ///< Everything was decoded.
    damaged,   ///< The data is broken; what was decoded up to there is given.
    tooLarge,  ///< The decoded data would exceed the caller's limit; nothing is given.
};

/// What a filter made of encoded bytes.
///
/// The standard filters that may stand on cross-reference streams and object streams
/// (ISO 32000-2, 7.4) are pure functions: decodeFlate, decodeLZW, decodeASCIIHex, decodeASCII85,
/// decodeRunLength. Each takes the whole encoded data and gives at most `limit` bytes; memory is
/// taken as data is produced, never because a number in the file asks for it.
struct Decoded {
    std::string bytes;
    DecodeStatus status = DecodeStatus::complete;
};

}  // namespace quirebind
