// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/ObjectReader.h"

#include <algorithm>
#include <utility>

#include "Platform/PDF/DamagedDocument.h"
#include "Platform/PDF/Limits.h"
#include "Platform/PDF/StreamBody.h"
#include "Platform/PDF/StreamDecoder.h"

namespace quirebind {
namespace {

/// How much of the file is looked at first for an object: most are smaller.
constexpr std::size_t kFirstLook = 1024;

}  // namespace

IndirectObject readIndirectObject(SourceImage& image, std::uint64_t offset, WorkBudget& budget,
                                  std::vector<FoundReference>* references) {
    std::size_t length = kFirstLook;
    for (;;) {
        const std::string_view text = image.view(offset, length);
        const bool isWhole = offset + text.size() >= image.size();
        if (references != nullptr) references->clear();
        if (auto object = parseIndirectObject(text, isWhole, references)) {
            budget.spend(object->looked);
            return *object;
        }
        budget.spend(text.size());
        if (isWhole) throw DamagedDocument("no object where one should be");
        length = 2 * text.size();
    }
}

ObjectReader::ObjectReader(SourceImage image, ObjectTable table)
    : image_(std::move(image)),
      table_(std::move(table)),
      syntax_(limits::kSyntaxTotal + limits::kSyntaxPerByte * image_.size()),
      decoding_(limits::kDecodedTotal + limits::kDecodedPerByte * image_.size()) {}

bool ObjectReader::exists(Reference reference) {
    const ObjectLocation location = table_.find(reference.number);
    switch (location.kind) {
        case ObjectLocation::Kind::inFile:
            // Some writers list every object with generation 0; what the object itself says counts.
            return location.detail == reference.generation ||
                   readId(location.position) == reference;
        case ObjectLocation::Kind::inStream:
            return reference.generation == 0;
        case ObjectLocation::Kind::unlisted:
        case ObjectLocation::Kind::free:
            break;
    }
    return false;
}

/// What the object at `offset` says it is.
std::optional<Reference> ObjectReader::readId(std::uint64_t offset) {
    constexpr std::size_t kLongestHeader = 64;
    const std::string_view text = image_.view(offset, kLongestHeader).substr(0, kLongestHeader);
    syntax_.spend(text.size());
    std::size_t at = 0;
    return parseObjectHeader(text, at);
}

bool ObjectReader::isAbsent(Value value) {
    return resolve(value).isNull();
}

SourceObject ObjectReader::read(std::uint32_t number, std::vector<FoundReference>* references) {
    if (references != nullptr) references->clear();
    const ObjectLocation location = table_.find(number);
    switch (location.kind) {
        case ObjectLocation::Kind::inFile:
            return readFromFile(number, location.position, references);
        case ObjectLocation::Kind::inStream:
            return readFromStream(number, location, references);
        case ObjectLocation::Kind::unlisted:
        case ObjectLocation::Kind::free:
            break;
    }
    SourceObject null;
    null.number = number;
    return null;
}

SourceObject ObjectReader::readFromFile(std::uint32_t number, std::uint64_t offset,
                                        std::vector<FoundReference>* references) {
    const IndirectObject found = readIndirectObject(image_, offset, syntax_, references);
    if (found.id.number != number) throw DamagedDocument("another object than the table says");
    SourceObject object;
    object.number = number;
    object.value = found.value;
    object.isStream = found.isStream;
    object.bodyOffset = offset + found.end;
    return object;
}

SourceObject ObjectReader::readFromStream(std::uint32_t number, const ObjectLocation& location,
                                          std::vector<FoundReference>* references) {
    ObjectStream& stream = objectStream(static_cast<std::uint32_t>(location.position));
    const auto value = stream.find(number, location.detail, syntax_, references);
    if (!value) throw DamagedDocument("an object is missing from its object stream");
    SourceObject object;
    object.number = number;
    object.value = *value;
    object.packed = true;
    return object;
}

ObjectStream& ObjectReader::objectStream(std::uint32_t number) {
    if (const auto cached = streams_.find(number); cached != streams_.end()) {
        recent_.splice(recent_.begin(), recent_, cached->second);
        return *cached->second->stream;
    }
    auto stream = decodeObjectStream(number);
    streamsCost_ += stream->cost();
    recent_.push_front({number, std::move(stream)});
    streams_.emplace(number, recent_.begin());
    return *recent_.front().stream;
}

/// Everything that this needs, a /Length for instance, must stand in the file itself: an object
/// stream cannot hold what it takes to read an object stream (ISO 32000-2, 7.5.7).
std::unique_ptr<ObjectStream> ObjectReader::decodeObjectStream(std::uint32_t number) {
    const ObjectLocation location = table_.find(number);
    if (location.kind != ObjectLocation::Kind::inFile)
        throw DamagedDocument("no object stream where one should be");
    const SourceObject object = readFromFile(number, location.position, nullptr);
    if (!object.isStream) throw DamagedDocument("no object stream where one should be");
    const auto inFile = [this](Value value) { return resolveInFile(value); };
    const auto length = static_cast<std::size_t>(streamBodyLength(
        image_, object.bodyOffset, inFile(object.value.find("Length")).integer(), syntax_));
    const std::string_view body = image_.view(object.bodyOffset, length).substr(0, length);
    Decoded decoded = decodeStream(object.value, body, inFile, decoding_);
    if (decoded.status != DecodeStatus::complete)
        throw DamagedDocument("an object stream cannot be decoded");

    const auto first = inFile(object.value.find("First")).integer();
    const auto count = inFile(object.value.find("N")).integer();
    if (!first || !count || *first < 0 || *count < 0 ||
        static_cast<std::uint64_t>(*first) > decoded.bytes.size())
        throw DamagedDocument("an object stream without a usable /First or /N");
    return std::make_unique<ObjectStream>(std::move(decoded.bytes),
                                          static_cast<std::size_t>(*first),
                                          static_cast<std::size_t>(*count));
}

Value ObjectReader::resolveInFile(Value value) {
    for (int i = 0; i < limits::kReferenceChain; ++i) {
        const auto reference = value.reference();
        if (!reference) return value;
        const ObjectLocation location = table_.find(reference->number);
        if (location.kind != ObjectLocation::Kind::inFile) return {};
        value = readFromFile(reference->number, location.position, nullptr).value;
    }
    throw DamagedDocument("a chain of references without an end");
}

Value ObjectReader::resolve(Value value) {
    for (int i = 0; i < limits::kReferenceChain; ++i) {
        const auto reference = value.reference();
        if (!reference) return value;
        if (!exists(*reference)) return {};
        value = read(reference->number).value;
    }
    throw DamagedDocument("a chain of references without an end");
}

std::uint64_t ObjectReader::bodyLength(const SourceObject& stream) {
    return streamBodyLength(image_, stream.bodyOffset,
                            resolve(stream.value.find("Length")).integer(), syntax_);
}

void ObjectReader::trim() {
    image_.trim();
    while (streamsCost_ > limits::kResidentBytes && recent_.size() > 1) {
        streamsCost_ -= recent_.back().stream->cost();
        streams_.erase(recent_.back().number);
        recent_.pop_back();
    }
}

}  // namespace quirebind
