// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Filters/FrugalEncoder.h"

namespace quirebind {

/// Collects small objects for one object stream (ISO 32000-2, 7.5.7; drawn above ObjectStream,
/// which reads what this writes) and writes it when asked.
class ObjectPacker {
 public:
    /// Whether there is nothing to write.
    [[nodiscard]] bool empty() const { return members_.empty(); }
    /// Whether the stream is large enough to be written. Larger ones compress better, but a reader
    /// that wants one object has to decode all of them.
    [[nodiscard]] bool full() const;

    /// Adds object `number`; its value is to be appended to `values` before the next call. Gives
    /// the object's index in the stream.
    std::uint32_t add(std::uint32_t number);
    /// Where the value of the object that was added last goes.
    [[nodiscard]] ByteBuffer& values() { return values_; }

    /// Appends the object stream, dictionary to endstream, and starts afresh.
    void writeTo(ByteBuffer& out, FrugalEncoder& encoder);

 private:
    struct Member {
        std::uint32_t number = 0;
        std::size_t offset = 0;
    };
    std::vector<Member> members_;
    ByteBuffer values_;
};

}  // namespace quirebind
