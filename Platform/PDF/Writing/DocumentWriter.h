// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Filters/FrugalEncoder.h"
#include "Platform/PDF/Syntax/Version.h"
#include "Platform/PDF/Writing/CrossReferenceWriter.h"
#include "Platform/PDF/Writing/ObjectPacker.h"

namespace quirebind {

/// Assembles a new PDF file in one buffer (ISO 32000-2, 7.5):
///
///     %PDF-1.7
///     %....            four bytes that tell transfer programs that this is binary
///     1 0 obj ... endobj
///     2 0 obj ... endobj
///     cross-reference table and trailer, or cross-reference stream
///     startxref
///     %%EOF
///
/// Objects are written one after another in whatever order; their numbers are reserved before, so
/// that others can refer to them. A number that is reserved and never written is a free object, and
/// references to it mean null. Used by one thread; std::bad_alloc when memory runs out.
class DocumentWriter {
 public:
    /// Begins a document with its header.
    DocumentWriter();

    /// A number for an object to be written later. Throws DamagedDocument when there are no more.
    [[nodiscard]] std::uint32_t reserve();

    /// Begins object `number`, to be packed into an object stream or not; its value is to be
    /// appended to what is returned, before `endObject`.
    [[nodiscard]] ByteBuffer& beginObject(std::uint32_t number, bool packed);
    /// The value of the object that was begun is complete.
    void endObject();

    /// A source of `bytes` is copied, or part of it.
    void addSource(std::uint64_t bytes) { sourceBytes_ += bytes; }

    /// What was read of a source takes `bytes` less here than it does there, object streams and the
    /// cross-reference stream apart: these may take so much. A negative number where it takes more.
    void allowPacked(double bytes) { encoder_.allow(bytes); }

    /// Writes null as object `number`. If it was begun, what was written of it is taken back.
    void writeNull(std::uint32_t number);

    /// Begins a stream object; its dictionary, with the right /Length, is to be appended to what is
    /// returned.
    [[nodiscard]] ByteBuffer& beginStream(std::uint32_t number);
    /// From now on long bodies are to be borrowed from their sources.
    void borrowLongBodies() { borrows_ = true; }
    /// Whether the body of the stream that is begun, which is at `position` in its file, is worth
    /// being borrowed. Then the stream is moved behind as many spaces as it takes for its pages to
    /// be those of that file.
    [[nodiscard]] bool alignBody(std::uint64_t position, std::size_t length);
    /// Where the body, of `length` bytes, is to be put before `endStream`.
    [[nodiscard]] std::span<char> streamBody(std::size_t length);
    /// The body of the stream that was begun is complete.
    void endStream();

    /// Whether any object was packed: then the file has object streams already.
    [[nodiscard]] bool packs() const { return packs_; }

    /// All that was written so far but what is packed. Its text is valid until more is written.
    [[nodiscard]] const ByteBuffer& written() const { return out_; }

    /// Completes the file, with a cross-reference stream if objects are packed or if a table could
    /// not list them or would make the file more than a hundredth larger than its sources. Its
    /// catalog is object `root`, its version at least `version`. Nothing can be written afterwards.
    /// The same calls always give the same bytes.
    [[nodiscard]] ByteBuffer finish(std::uint32_t root, Version version);

 private:
    void flushPacker();
    [[nodiscard]] bool isTableTooLong() const;

    ByteBuffer out_;
    std::vector<OutputLocation> locations_;  // by object number; 0 is never an object
    std::vector<LongBody> longBodies_;       // in their order
    ObjectPacker packer_;
    FrugalEncoder encoder_;
    std::uint64_t sourceBytes_ = 0;
    std::uint64_t spaces_ = 0;        // before streams
    std::uint32_t packerNumber_ = 0;  // of the object stream being collected
    std::uint32_t open_ = 0;          // the object that is begun and not ended
    std::size_t begun_ = 0;           // where its value begins
    bool packing_ = false;            // it is a packed one
    bool packs_ = false;
    bool borrows_ = false;
};

}  // namespace quirebind
