// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string_view>

#include "Platform/Files/ByteBuffer.h"

struct libdeflate_compressor;

namespace quirebind {

/// Compresses for /FlateDecode (ISO 32000-2, 7.4.4). Keeps its working memory between uses.
class FlateEncoder {
 public:
    FlateEncoder();

    /// Appends the compressed form of `plain`. The same input always gives the same bytes.
    void encode(std::string_view plain, ByteBuffer& out);

 private:
    struct Free {
        void operator()(libdeflate_compressor* compressor) const;
    };
    std::unique_ptr<libdeflate_compressor, Free> compressor_;
};

}  // namespace quirebind
