// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Filters/FrugalEncoder.h"

namespace quirebind {

/// Where an object of the output is, in eight bytes: there are as many as objects.
class OutputLocation {
 public:
    OutputLocation() = default;
    /// An object that begins at `offset`, in bytes from the start of the output.
    [[nodiscard]] static OutputLocation inFile(std::uint64_t offset) {
        return OutputLocation(offset);
    }
    /// The object at `index`, counting from 0, in the object stream of that number.
    [[nodiscard]] static OutputLocation inStream(std::uint32_t stream, std::uint32_t index) {
        return OutputLocation(kPacked | std::uint64_t{stream} << kIndexBits | index);
    }

    /// Reserved but never written.
    [[nodiscard]] bool isFree() const { return bits_ == 0; }
    /// Whether it is in an object stream.
    [[nodiscard]] bool isPacked() const { return (bits_ & kPacked) != 0; }
    /// The offset in the file or the number of the object stream.
    [[nodiscard]] std::uint64_t position() const {
        return isPacked() ? (bits_ & ~kPacked) >> kIndexBits : bits_;
    }
    /// The index in the object stream.
    [[nodiscard]] std::uint32_t index() const { return bits_ & ((1U << kIndexBits) - 1); }

 private:
    static constexpr std::uint64_t kPacked = std::uint64_t{1} << 63U;
    static constexpr unsigned kIndexBits = 16;

    explicit OutputLocation(std::uint64_t bits) : bits_(bits) {}

    std::uint64_t bits_ = 0;  // 0 is no place for an object: the header is there
};

/// The body of a stream that stands in the output, long and perhaps borrowed.
struct LongBody {
    std::size_t begin = 0;  ///< Offset and size in bytes.
    std::size_t size = 0;
};

/// Appends the classic cross-reference table of `locations` (by object number; none is packed), the
/// trailer, startxref and the end of the file (ISO 32000-2, 7.5.4 and 7.5.5; drawn above
/// CrossReferenceReader). `longBodies` are in their order.
void writeCrossReferenceTable(ByteBuffer& out, const std::vector<OutputLocation>& locations,
                              std::uint32_t root, std::span<const LongBody> longBodies = {});

/// Appends the same as a cross-reference stream, which is object `number` (7.5.8).
void writeCrossReferenceStream(ByteBuffer& out, std::vector<OutputLocation>& locations,
                               std::uint32_t number, std::uint32_t root, FrugalEncoder& encoder,
                               std::span<const LongBody> longBodies = {});

}  // namespace quirebind
