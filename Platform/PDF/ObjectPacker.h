// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Filters/FlateEncoder.h"

namespace quirebind {

/// Collects small objects for one object stream (ISO 32000-2, 7.5.7; drawn above ObjectStream,
/// which reads what this writes) and writes it when asked.
///
/// No output is to be larger than its sources, nor to take longer than that needs. So account is
/// kept of what the objects took where they came from: as long as all that was written takes no
/// more, it is compressed quickly.
class ObjectPacker {
 public:
    [[nodiscard]] bool empty() const { return members_.empty(); }
    /// Whether the stream is large enough to be written. Larger ones compress better, but a reader
    /// that wants one object has to decode all of them.
    [[nodiscard]] bool full() const;

    /// Adds object `number`; its value is to be appended to `values` before the next call. Gives
    /// the object's index in the stream.
    std::uint32_t add(std::uint32_t number);
    [[nodiscard]] ByteBuffer& values() { return values_; }

    /// Adds to what all object streams together may take, in bytes.
    void allow(double bytes) { allowed_ += bytes; }

    /// Appends the object stream, dictionary to endstream, and starts afresh.
    void writeTo(ByteBuffer& out);

 private:
    struct Member {
        std::uint32_t number = 0;
        std::size_t offset = 0;
    };
    void compress(std::string_view plain, ByteBuffer& body);

    std::vector<Member> members_;
    ByteBuffer values_;
    FlateEncoder quick_{FlateEncoder::Effort::quick};
    FlateEncoder thorough_{FlateEncoder::Effort::thorough};
    double allowed_ = 0;     // in bytes, for all object streams
    double written_ = 0;     // of which these many were used
    double quickRatio_ = 0;  // what quick compression made of a byte when it was last tried
};

}  // namespace quirebind
