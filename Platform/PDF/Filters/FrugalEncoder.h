// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Filters/FlateEncoder.h"

namespace quirebind {

/// Compresses what an output adds to its sources' streams, for /FlateDecode.
///
/// No output is to be larger than its sources, nor to take longer than that needs. So account is
/// kept of what all this took where it came from: as long as what was written takes no more, it is
/// compressed quickly.
class FrugalEncoder {
 public:
    /// What is written may take `bytes` more; less, where that is negative.
    void allow(double bytes) { allowed_ += bytes; }

    /// Appends the compressed form of `plain`. The same calls always give the same bytes.
    void encode(std::string_view plain, ByteBuffer& out);

 private:
    FlateEncoder quick_{FlateEncoder::Effort::quick};
    FlateEncoder thorough_{FlateEncoder::Effort::thorough};
    double allowed_ = 0;     // in bytes
    double written_ = 0;     // of which so many were used
    double quickRatio_ = 0;  // what quick compression made of a byte when it was last tried
};

}  // namespace quirebind
