// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "Platform/Files/ByteBuffer.h"

struct libdeflate_compressor;

namespace quirebind {

/// Compresses for /FlateDecode (ISO 32000-2, 7.4.4). Keeps its working memory between uses.
class FlateEncoder {
 public:
    /// How much time is spent for how few bytes.
    enum class Effort : std::uint8_t {
        quick,     ///< In half the time.
        thorough,  ///< As small as zlib's default, or smaller.
    };

    /// Takes no memory before the first use.
    explicit FlateEncoder(Effort effort) : effort_(effort) {}

    /// Appends the compressed form of `plain`. The same input always gives the same bytes.
    void encode(std::string_view plain, ByteBuffer& out);

 private:
    struct Free {
        void operator()(libdeflate_compressor* compressor) const;
    };
    Effort effort_;
    std::unique_ptr<libdeflate_compressor, Free> compressor_;  // once there is something to do
};

}  // namespace quirebind
