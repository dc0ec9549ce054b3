// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Copying/Sharing/StreamSharer.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "Platform/PDF/Copying/MappedText.h"
#include "Platform/PDF/Copying/StreamDictionary.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/UnsignedNumber.h"

namespace quirebind {
namespace {

bool isShareableType(const DictionaryEntry& entry) {
    if (entry.key.isName("Subtype"))  // ISO 32000-2, 8.9.5 and table 125
        return entry.value.isName("Image") || entry.value.isName("Type1C") ||
               entry.value.isName("CIDFontType0C") || entry.value.isName("OpenType");
    if (entry.key.isName("Type")) return entry.value.isName("CMap");  // 9.7.5.3
    return entry.key.isName("Length1")                                // a font program, 9.9
           || entry.key.isName("N");                                  // a colour profile, 8.6.5.5
}

/// The structure and the layers of each source are its own; /N with /First is an object stream.
bool isTied(const DictionaryEntry& entry) {
    return entry.key.isName("StructParent") || entry.key.isName("StructParents") ||
           entry.key.isName("OC") || entry.key.isName("First") ||
           (entry.key.isName("Subtype") && entry.value.isName("Form"));
}

/// A guess from the beginning of a stream, without a look at its syntax: most streams are the
/// content of pages and forms, and say nothing of what a stream says that can be shared.
bool looksShareable(std::string_view beginning) {
    const std::string_view dictionary = beginning.substr(0, beginning.find("stream"));
    const auto has = [&](std::string_view sign) {
        return dictionary.find(sign) != std::string_view::npos;
    };
    if (has("endobj")) return false;  // the length is that of the next object
    if (has("/Form")) return false;
    // Its type or subtype, that of a font program or a colour profile, or a name in any spelling.
    return has("ype") || has("Length1") || has("/N") || has("#");
}

bool isShareable(Value dictionary, const FoundParts& parts) {
    bool shareable = false;
    DictionaryReader entries(dictionary, parts);
    while (const auto entry = entries.next()) {
        if (isTied(*entry)) return false;
        shareable = shareable || isShareableType(*entry);
    }
    return shareable;
}

}  // namespace

StreamSharer::StreamSharer(ObjectReader& reader, ReferenceMap& map, const DocumentWriter& writer,
                           SharedStreams& shared)
    : reader_(reader), map_(map), writer_(writer), shared_(shared), bodies_(reader.image().size()) {
    shared_.beginSource();
    if (!shared_.empty() && !reader_.isEncrypted()) map_.setStandIns(*this);
}

void StreamSharer::add(Value dictionary, const FoundParts& parts,
                       const SharedStreams::Stream& stream) {
    if (stream.bodySize >= limits::kSharedStream && isShareable(dictionary, parts))
        shared_.add(stream);
}

std::optional<std::uint32_t> StreamSharer::standInFor(std::uint32_t source) {
    const ObjectLocation location = reader_.table().find(source);
    if (location.kind != ObjectLocation::Kind::inFile || asked_.size() >= limits::kNestedShared ||
        std::ranges::find(asked_, source) != asked_.end())
        return std::nullopt;
    asked_.push_back(source);
    std::optional<std::uint32_t> found;
    // What is damaged is not shared; copying it says what that means.
    (void)attempt(reader_, [&] {
        if (mayBeShared(location.position)) found = find(source);
    });
    asked_.pop_back();
    return found;
}

/// A look at the beginning of the object, which tells nearly all of them: whether its length is
/// that of a stream that can be shared, or is said elsewhere.
bool StreamSharer::mayBeShared(std::uint64_t offset) {
    constexpr std::size_t kBeginning = 512;
    constexpr std::string_view kLength = "Length";  // the L is rare, a solidus is not
    std::string_view text = reader_.image().view(offset, kBeginning);
    text = text.substr(0, kBeginning);
    for (std::size_t at = text.find(kLength); at != std::string_view::npos;
         at = text.find(kLength, at)) {
        const bool isName = at > 0 && text[at - 1] == '/';
        at += kLength.size();
        if (!isName || (at < text.size() && isDigit(text[at]))) continue;  // /Length1
        std::size_t end = skipWhite(text, at);
        Reference reference;
        std::size_t looked = 0;
        if (readReference(text, end, reference, looked)) return looksShareable(text);
        std::uint64_t length = 0;
        return readUnsigned(text, end, length) && shared_.hasLength(length) && looksShareable(text);
    }
    return false;
}

std::optional<std::uint32_t> StreamSharer::find(std::uint32_t source) {
    FoundParts parts;
    const SourceObject object = reader_.read(source, &parts);
    if (!object.isStream || !isShareable(object.value, parts)) return std::nullopt;
    const std::uint64_t length =
        reader_.bodyLength(object, findEntry(DictionaryReader(object.value, parts), "Length"));
    if (!shared_.hasLength(length) || length > bodies_.left()) return std::nullopt;
    bodies_.spend(length);

    ByteBuffer dictionary;
    MappedText text(object.value.text(), parts, map_);
    const bool declared = appendStreamDictionary(object.value, length, text, dictionary,
                                                 [](const auto& /*entry*/, auto& /*entries*/) {});
    if (!declared) return std::nullopt;
    const auto readBody = [&](std::size_t offset, std::size_t size) {
        piece_.resize(std::max(piece_.size(), size));
        reader_.image().copy(object.bodyOffset + offset, std::span(piece_).first(size));
        return std::string_view(piece_).substr(0, size);
    };
    return shared_.find({.dictionary = dictionary.text(),
                         .bodySize = static_cast<std::size_t>(length),
                         .readBody = readBody},
                        writer_.written());
}

}  // namespace quirebind
