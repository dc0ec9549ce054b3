// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Writing/DocumentWriter.h"

#include <algorithm>
#include <string>
#include <utility>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"

namespace quirebind {
namespace {

constexpr std::string_view kHeader = "%PDF-1.0\n%\xE2\xE3\xCF\xD3\n";
constexpr std::size_t kVersionInHeader = 5;
constexpr std::string_view kEndObject = "\nendobj\n";
constexpr std::string_view kBeginBody = "\nstream\n";

/// The least length in bytes of a body that is faster to borrow than to copy; and how many bytes of
/// the sources pay for one space that this takes.
constexpr std::size_t kLongBody = std::size_t{1} << 20U;
constexpr std::uint64_t kBytesPerSpace = 200;

/// The size of a page of memory nearly everywhere. Where it is another one, less is borrowed.
constexpr std::size_t kPage = 4096;

}  // namespace

DocumentWriter::DocumentWriter() : locations_(1) {
    out_.append(kHeader);
}

std::uint32_t DocumentWriter::reserve() {
    if (locations_.size() > limits::kObjectNumber) throw DamagedDocument("too many objects");
    locations_.emplace_back();
    return static_cast<std::uint32_t>(locations_.size() - 1);
}

ByteBuffer& DocumentWriter::beginObject(std::uint32_t number, bool packed) {
    packing_ = packed;
    if (packed) {
        packs_ = true;
        if (packer_.empty()) packerNumber_ = reserve();
        locations_[number] = OutputLocation::inStream(packerNumber_, packer_.add(number));
    } else {
        locations_[number] = OutputLocation::inFile(out_.size());
        out_.append(std::uint64_t{number});
        out_.append(" 0 obj\n");
    }
    open_ = number;
    ByteBuffer& buffer = packed ? packer_.values() : out_;
    begun_ = buffer.size();
    return buffer;
}

void DocumentWriter::writeNull(std::uint32_t number) {
    if (open_ != number) (void)beginObject(number, packs_);
    ByteBuffer& buffer = packing_ ? packer_.values() : out_;
    buffer.shrink(begun_);
    if (!longBodies_.empty() && longBodies_.back().begin > out_.size()) longBodies_.pop_back();
    buffer.append("null");
    endObject();
}

void DocumentWriter::endObject() {
    open_ = 0;
    if (!packing_)
        out_.append(kEndObject);
    else if (packer_.full())
        flushPacker();
}

ByteBuffer& DocumentWriter::beginStream(std::uint32_t number) {
    return beginObject(number, false);
}

bool DocumentWriter::alignBody(std::uint64_t position, std::size_t length) {
    if (!borrows_ || length < kLongBody) return false;
    const std::size_t place = out_.size() + kBeginBody.size();
    const auto shift = static_cast<std::size_t>((position - place) % kPage);
    if (spaces_ + shift > sourceBytes_ / kBytesPerSpace) return false;
    spaces_ += shift;
    const std::uint64_t begin = locations_[open_].position();
    out_.insert(static_cast<std::size_t>(begin), shift, ' ');
    locations_[open_] = OutputLocation::inFile(begin + shift);
    begun_ += shift;
    longBodies_.push_back({.begin = place + shift, .size = length});
    return true;
}

std::span<char> DocumentWriter::streamBody(std::size_t length) {
    out_.append(kBeginBody);
    return out_.extend(length);
}

void DocumentWriter::endStream() {
    out_.append("\nendstream\nendobj\n");
    open_ = 0;
}

void DocumentWriter::flushPacker() {
    if (packer_.empty()) return;
    packer_.writeTo(beginObject(packerNumber_, false), encoder_);
    out_.append(kEndObject);
    open_ = 0;
}

/// For what it lists, or for what the sources took. Many copies of a small document become larger
/// than that by themselves: their objects have longer numbers, and their fields longer names.
bool DocumentWriter::isTableTooLong() const {
    // Offsets of more than ten digits do not fit a classic table (7.5.4).
    constexpr std::uint64_t kLongestOffset = 9'999'999'999;
    constexpr std::uint64_t kTableEntry = 20;
    constexpr std::uint64_t kTrifle = 4096;
    const std::uint64_t size = out_.size() + kTableEntry * locations_.size();
    const std::uint64_t allowed = sourceBytes_ + sourceBytes_ / 100 + kTrifle;
    return out_.size() > kLongestOffset || (sourceBytes_ != 0 && size > allowed);
}

ByteBuffer DocumentWriter::finish(std::uint32_t root, Version version) {
    flushPacker();
    if (packs_ || isTableTooLong()) {
        version = std::max(version, Version{1, 5});
        const std::uint32_t number = reserve();
        writeCrossReferenceStream(out_, locations_, number, root, encoder_, longBodies_);
    } else {
        writeCrossReferenceTable(out_, locations_, root, longBodies_);
    }
    out_.replace(kVersionInHeader,
                 std::to_string(version.major) + '.' + std::to_string(version.minor));
    return std::move(out_);
}

}  // namespace quirebind
