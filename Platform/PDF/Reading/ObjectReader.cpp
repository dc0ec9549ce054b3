// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/ObjectReader.h"

#include <algorithm>
#include <utility>

#include "Platform/PDF/Filters/StreamDecoder.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Reading/ReadIndirectObject.h"
#include "Platform/PDF/Reading/Recovery/SoundDictionaries.h"
#include "Platform/PDF/Reading/StreamBody.h"

namespace quirebind {
namespace {

/// An object that cannot be read takes as long as reading so many bytes: exceptions are thrown, and
/// whoever wanted it may want it again and again.
constexpr std::uint64_t kFailedRead = 2048;

/// Whether `offset` is behind the first digit of a number, so that the 2 there may be that of 12.
bool beginsInsideNumber(SourceImage& image, std::uint64_t offset) {
    if (offset == 0) return false;
    const std::string_view text = image.view(offset - 1, 2);
    return text.size() > 1 && isDigit(text[0]) && isDigit(text[1]);
}

}  // namespace

ObjectReader::ObjectReader(SourceImage image, ObjectTable table)
    : image_(std::move(image)),
      table_(std::move(table)),
      syntax_(limits::kSyntax, image_.storedBytes()),
      decoding_(limits::kDecoded, image_.storedBytes()) {}

bool ObjectReader::exists(Reference reference) {
    if (isListed(reference)) return true;
    if (!isLost(reference)) return false;
    syntax_.spend(kFailedRead);
    throw DamagedDocument("an object that the file has lost");
}

bool ObjectReader::isLost(Reference reference) {
    return lost_ && !isListed(reference) && lost_->include(reference, image_);
}

bool ObjectReader::isListed(Reference reference) {
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
    const std::string_view text =
        image_.view(offset, limits::kObjectHeader).substr(0, limits::kObjectHeader);
    syntax_.spend(text.size());
    std::size_t at = 0;
    return parseObjectHeader(text, at);
}

bool ObjectReader::isAbsent(Value value) {
    const auto reference = value.reference();
    if (!reference) return value.isNull();
    // Pages often share what is long, one after the other or in turn.
    if (reference == present_) return false;
    if (const auto known = longPresent_.find(reference->number);
        known != longPresent_.end() && known->second == reference->generation)
        return false;
    const Value found = resolve(value);
    if (found.isNull()) return true;
    present_ = reference;
    constexpr std::size_t kLong = 256;
    if (found.text().size() > kLong)
        longPresent_.insert_or_assign(reference->number, reference->generation);
    return false;
}

SourceObject ObjectReader::read(std::uint32_t number, FoundParts* parts) {
    SourceObject object;
    object.number = number;
    switch (table_.find(number).kind) {
        case ObjectLocation::Kind::inFile:
            object = readInFile(number, parts);
            break;
        case ObjectLocation::Kind::inStream:
            object = readPacked(number, parts);
            break;
        case ObjectLocation::Kind::unlisted:
        case ObjectLocation::Kind::free:
            if (parts != nullptr) parts->clear();
            break;
    }
    if (!lost_) return object;
    syntax_.spend(object.value.text().size());  // for the second look
    if (!hasSoundDictionaries(object.value.text()))
        throw DamagedDocument("an object with a broken dictionary");
    return object;
}

SourceObject ObjectReader::readPacked(std::uint32_t number, FoundParts* parts) {
    try {
        return readFromStream(number, table_.find(number), parts);
    } catch (const DamagedDocument&) {
        syntax_.spend(kFailedRead);
        if (!mend(number)) throw;
    }
    return readInFile(number, parts);
}

/// The object, which is listed as one of the file itself.
SourceObject ObjectReader::readInFile(std::uint32_t number, FoundParts* parts) {
    if (const ClosedObject* const closed = mender_.closed(number); closed != nullptr)
        return readClosed(number, *closed, parts);
    try {
        return readFromFile(number, table_.find(number).position, parts);
    } catch (const DamagedDocument&) {
        syntax_.spend(kFailedRead);
        if (!mend(number)) {
            const ClosedObject* const closed =
                mender_.close(number, table_.find(number).position, image_, syntax_);
            if (closed == nullptr) throw;
            return readClosed(number, *closed, parts);
        }
    }
    return readFromFile(number, table_.find(number).position, parts);
}

/// The object, whose dictionaries had to be closed.
SourceObject ObjectReader::readClosed(std::uint32_t number, const ClosedObject& closed,
                                      FoundParts* parts) {
    syntax_.spend(closed.text.size());
    auto found = parseIndirectObject(closed.text, true, parts);
    if (!found) throw DamagedDocument("no object where one should be");
    found->end -= closed.added;
    return sourceObject(number, table_.find(number).position, *found, parts);
}

/// Lists the object where it really is. False where it is nowhere, or where the table says.
bool ObjectReader::mend(std::uint32_t number) {
    if (!mends_) return false;
    const ObjectLocation listed = table_.find(number);
    const ObjectLocation found = mender_.find(number, image_);
    if (found.kind != ObjectLocation::Kind::inFile) return false;
    if (listed.kind == found.kind && listed.position == found.position) return false;
    table_.replace(number, found);
    return true;
}

SourceObject ObjectReader::readFromFile(std::uint32_t number, std::uint64_t offset,
                                        FoundParts* parts) {
    const IndirectObject found = readIndirectObject(image_, offset, syntax_, parts);
    if (beginsInsideNumber(image_, offset))
        throw DamagedDocument("another object than the table says");
    return sourceObject(number, offset, found, parts);
}

/// What was `found` where the object `number` should be, in clear. Its ends count from `offset`.
SourceObject ObjectReader::sourceObject(std::uint32_t number, std::uint64_t offset,
                                        const IndirectObject& found, FoundParts* parts) {
    if (found.id.number != number) throw DamagedDocument("another object than the table says");
    SourceObject object;
    object.number = number;
    object.value = found.value;
    object.isStream = found.isStream;
    object.bodyOffset = offset + found.end;
    object.generation = found.id.generation;
    if (decryption_) decryption_->decryptStrings(object, parts, syntax_);
    return object;
}

void ObjectReader::decryptWith(Decryptor decryptor) {
    decryption_ = std::make_unique<ObjectDecryption>(std::move(decryptor), image_.size());
    streams_.clear();
}

std::string ObjectReader::body(const SourceObject& stream, std::uint64_t length) {
    if (isEncrypted()) {
        const auto resolved = [this](Value value) { return resolve(value); };
        return decryptedBody(stream, length, StreamFilters(stream.value, resolved));
    }
    std::string bytes(static_cast<std::size_t>(length), '\0');
    image_.copy(stream.bodyOffset, bytes);
    return bytes;
}

std::string ObjectReader::decryptedBody(const SourceObject& stream, std::uint64_t length,
                                        const StreamFilters& filters) {
    std::string body(static_cast<std::size_t>(length), '\0');
    image_.copy(stream.bodyOffset, body);
    return decryption_->decryptBody(std::move(body), stream, filters);
}

SourceObject ObjectReader::readFromStream(std::uint32_t number, const ObjectLocation& location,
                                          FoundParts* parts) {
    ObjectStream& stream = objectStream(static_cast<std::uint32_t>(location.position));
    const auto value = stream.find(number, location.detail, syntax_, parts);
    if (!value) throw DamagedDocument("an object is missing from its object stream");
    SourceObject object;
    object.number = number;
    object.value = *value;
    object.packed = true;
    object.packedSize = stream.packedSize(*value);
    return object;
}

ObjectStream& ObjectReader::objectStream(std::uint32_t number) {
    if (ObjectStream* const known = streams_.find(number); known != nullptr) return *known;
    return streams_.add(number, decodeObjectStream(number));
}

/// Everything that this needs, a /Length for instance, must stand in the file itself: an object
/// stream cannot hold what it takes to read an object stream (ISO 32000-2, 7.5.7).
ObjectStream ObjectReader::decodeObjectStream(std::uint32_t number) {
    if (table_.find(number).kind != ObjectLocation::Kind::inFile && !mend(number))
        throw DamagedDocument("no object stream where one should be");
    const SourceObject object = readInFile(number, nullptr);
    if (!object.isStream) throw DamagedDocument("no object stream where one should be");
    const auto inFile = [this](Value value) { return resolveInFile(value); };
    const auto length = static_cast<std::size_t>(streamBodyLength(
        image_, object.bodyOffset, inFile(object.value.find("Length")).integer(), syntax_));
    // What is decoded counts, too, but that may be little of much.
    decoding_.spend(length);
    std::string decrypted;
    if (decryption_) {
        decrypted = decryptedBody(object, length, StreamFilters(object.value, inFile));
    }
    const std::string_view body = decryption_
                                      ? std::string_view(decrypted)
                                      : image_.view(object.bodyOffset, length).substr(0, length);
    Decoded decoded = decodeStream(object.value, body, inFile, decoding_);
    if (decoded.status == DecodeStatus::tooLarge)
        throw DamagedDocument("an object stream cannot be decoded");

    const auto first = inFile(object.value.find("First")).integer();
    const auto count = inFile(object.value.find("N")).integer();
    if (!first || !count || *first < 0 || *count < 0 ||
        static_cast<std::uint64_t>(*first) > decoded.bytes.size())
        throw DamagedDocument("an object stream without a usable /First or /N");
    return {std::move(decoded.bytes), length, static_cast<std::size_t>(*first),
            static_cast<std::size_t>(*count), decoded.status == DecodeStatus::complete};
}

std::vector<std::uint32_t> ObjectReader::membersOf(std::uint32_t stream) {
    std::vector<std::uint32_t> numbers;
    try {
        const ObjectStream& objects = objectStream(stream);
        numbers.reserve(objects.size());
        for (std::size_t i = 0; i < objects.size(); ++i) numbers.push_back(objects.numberAt(i));
    } catch (const DamagedDocument&) {
        if (isExhausted()) throw;
        numbers.clear();
    }
    return numbers;
}

Value ObjectReader::resolveInFile(Value value) {
    for (int i = 0; i < limits::kReferenceChain; ++i) {
        const auto reference = value.reference();
        if (!reference) return value;
        if (table_.find(reference->number).kind != ObjectLocation::Kind::inFile) return {};
        value = readInFile(reference->number, nullptr).value;
    }
    throw DamagedDocument("a chain of references without an end");
}

Value ObjectReader::resolveReference(Value value) {
    for (int i = 0; i < limits::kReferenceChain; ++i) {
        const auto reference = value.reference();
        if (!reference) return value;
        if (!exists(*reference)) return {};
        value = read(reference->number).value;
    }
    throw DamagedDocument("a chain of references without an end");
}

Value ObjectReader::resolveIfSound(Value value) {
    try {
        return resolve(value);
    } catch (const DamagedDocument&) {
        if (isExhausted()) throw;
        return {};
    }
}

std::uint64_t ObjectReader::bodyLength(const SourceObject& stream, Value declared) {
    const auto reference = declared.reference();
    // The body is there all the same, and its end can be found.
    const bool isUnknown = reference && isLost(*reference);
    return streamBodyLength(image_, stream.bodyOffset,
                            isUnknown ? std::nullopt : resolve(declared).integer(), syntax_);
}

void ObjectReader::trim() {
    image_.trim();
    if (decryption_) decryption_->trim();
    // What a small file leaves is for what it decodes to.
    const auto ofFile = std::min<std::uint64_t>(image_.size(), limits::kResidentBytes);
    streams_.trim(2 * limits::kResidentBytes - ofFile);
}

}  // namespace quirebind
