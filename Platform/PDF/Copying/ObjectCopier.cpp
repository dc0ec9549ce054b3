// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Copying/ObjectCopier.h"

#include <algorithm>
#include <span>
#include <string>

#include "Platform/PDF/Copying/MappedText.h"
#include "Platform/PDF/Copying/StreamDictionary.h"
#include "Platform/PDF/Guards/DamagedDocument.h"

namespace quirebind {
namespace {

bool isStructureKey(Value key) {
    return key.isName("StructParent") || key.isName("StructParents");
}

}  // namespace

ObjectCopier::Kind ObjectCopier::kindOf(Value value, const FoundParts& parts) {
    Value type;
    Value kids;
    Kind kind;
    DictionaryReader entries(value, parts);
    while (const auto entry = entries.next()) {
        if (entry->key.isName("Type")) takeLast(type, entry->value);
        if (entry->key.isName("Kids")) takeLast(kids, entry->value);
        kind.hasStructureKey = kind.hasStructureKey || isStructureKey(entry->key);
    }
    kind.isPageTreeNode = !kids.isNull() && type.isName("Pages");
    kind.isStructureElement = type.isName("StructElem");
    kind.isLayer = type.isName("OCG");
    return kind;
}

void ObjectCopier::copyPending(Damage damage) {
    while (const auto pending = map_.next()) {
        current_ = *pending;
        try {
            copyCurrent(reader_.read(pending->source, &parts_));
        } catch (const DamagedDocument&) {
            if (damage == Damage::refused || reader_.isExhausted()) throw;
            writer_.writeNull(pending->output);
        }
        reader_.trim();
    }
}

void ObjectCopier::copyCurrent(const SourceObject& object) {
    if (!object.packed) texts_.spend(object.value.text().size());
    if (object.isStream && current_.role != Role::structureElement) {
        copyStream(object);
        return;
    }
    const Kind kind = kindOf(object.value, parts_);
    if (kind.isLayer && current_.role == Role::plain) current_.role = Role::layer;
    const bool isTaggedElement = current_.role == Role::plain &&
                                 hasRewriter(Role::structureElement) && !object.isStream &&
                                 kind.isStructureElement;
    if (isTaggedElement)
        map_.wait(current_.source);
    else
        copyObject(object, kind);
}

void ObjectCopier::copyObject(const SourceObject& object, const Kind& kind) {
    ByteBuffer& out = writer_.beginObject(current_.output, object.packed);
    writer_.allowPacked(object.packedSize);
    MappedText text(object.value.text(), parts_, map_, object.number);
    ObjectRewriter* const rewriter = rewriterOf(current_.role);
    // No structure element is a stream. A node of the page tree that the walk did not meet would
    // bring all its pages along: some page outside the tree (a template, one of an older revision)
    // refers to it.
    if (object.isStream || object.value.isNull() || kind.isPageTreeNode)
        out.append("null");
    else if (rewriter != nullptr)
        rewriter->rewrite(object.value, text, out);
    else
        copyPlain(object.value, kind.hasStructureKey, text, out);
    writer_.endObject();
}

void ObjectCopier::copyPlain(Value value, bool hasStructureKey, MappedText& text, ByteBuffer& out) {
    if (hasStructureKey) {
        EntryRewriter entries(value, text, out);
        while (const auto* const entry = entries.next()) rewriteCommonEntry(*entry, entries);
    }
    text.copyRest(Role::plain, out);
}

bool ObjectCopier::rewriteCommonEntry(const DictionaryEntry& entry, EntryRewriter& entries) {
    if (!isStructureKey(entry.key)) return false;
    if (const auto key = keys_.keyFor(reader_.resolveIfSound(entry.value).integer()))
        entries.replace().append(std::uint64_t{*key});
    else
        entries.drop();
    return true;
}

void ObjectCopier::copyAs(Role role, Value value, MappedText& text, ByteBuffer& out) {
    text.copyTo(text.beginOf(value), Role::plain, out);
    ObjectRewriter* const rewriter = rewriterOf(role);
    if (rewriter == nullptr || value.reference())
        text.copyTo(text.endOf(value), role, out);
    else
        rewriter->rewrite(value, text, out);
}

/// The dictionary says how long the body really is, directly: its own /Length may be wrong, or a
/// reference.
void ObjectCopier::copyStream(const SourceObject& object) {
    if (ObjectRewriter* const rewriter = rewriterOf(current_.role)) {
        if (const auto text = rewriter->replaceStream(object)) {
            writer_.beginObject(current_.output, false).append(*text);
            writer_.endObject();
            return;
        }
    }
    const std::uint64_t length =
        reader_.bodyLength(object, findEntry(DictionaryReader(object.value, parts_), "Length"));
    bodies_.spend(length);
    if (reader_.isEncrypted()) {
        copyEncryptedStream(object, length, current_.output);
        return;
    }
    ByteBuffer& out = writer_.beginStream(current_.output);
    const std::size_t begin = out.size();
    appendDictionary(object.value, length, out);
    const std::size_t dictionarySize = out.size() - begin;
    writer_.allowPacked(static_cast<double>(object.value.text().size()) -
                        static_cast<double>(dictionarySize));
    const std::size_t dictionaryEnd =
        appendBody(object.bodyOffset, static_cast<std::size_t>(length), out);
    const SharedStreams::Stream written{.number = current_.output,
                                        .dictionary = dictionaryEnd - dictionarySize,
                                        .dictionarySize = dictionarySize,
                                        .body = out.size() - static_cast<std::size_t>(length),
                                        .bodySize = static_cast<std::size_t>(length)};
    writer_.endStream();
    if (current_.role == Role::plain) sharer_.add(object.value, parts_, written);
}

/// Gives where the dictionary ends then: a body that is borrowed moves its stream.
std::size_t ObjectCopier::appendBody(std::uint64_t offset, std::size_t length, ByteBuffer& out) {
    SourceImage& image = reader_.image();
    const bool borrows = writer_.alignBody(image.positionInFile(offset), length);
    const std::size_t dictionaryEnd = out.size();
    const std::span<char> body = writer_.streamBody(length);
    if (borrows)
        image.lend(offset, body, out);
    else
        image.copy(offset, body);
    return dictionaryEnd;
}

void ObjectCopier::appendDictionary(Value dictionary, std::uint64_t length, ByteBuffer& out) {
    const auto rewriteOther = [this](const DictionaryEntry& entry, EntryRewriter& entries) {
        rewriteCommonEntry(entry, entries);
    };
    const std::size_t begin = out.size();
    MappedText text(dictionary.text(), parts_, map_);
    if (appendStreamDictionary(dictionary, length, text, out, rewriteOther)) return;

    constexpr std::string_view kOpening = "<<";
    out.shrink(begin);
    out.append(kOpening);
    out.append("/Length ");
    out.append(length);
    out.append(" ");
    MappedText again(dictionary.text(), parts_, map_);
    again.skipTo(kOpening.size());
    (void)appendStreamDictionary(dictionary, length, again, out, rewriteOther);
}

/// The body goes over in clear. What is said anew comes first: a dictionary that is broken at its
/// end cannot spoil it there.
void ObjectCopier::copyEncryptedStream(const SourceObject& object, std::uint64_t length,
                                       std::uint32_t output) {
    const StreamFilters filters(object.value,
                                [this](Value value) { return reader_.resolve(value); });
    const std::string body = reader_.decryptedBody(object, length, filters);
    ByteBuffer& out = writer_.beginStream(output);
    out.append("<</Length ");
    out.append(std::uint64_t{body.size()});
    out.append(" ");
    if (filters.cryptFilter()) appendFilters(filters.others(), out);

    constexpr std::size_t kBracket = 2;
    MappedText text(object.value.text(), parts_, map_);
    text.skipTo(kBracket);
    EntryRewriter entries(object.value, text, out);
    while (const auto* const entry = entries.next()) {
        const bool isReplaced = entry->key.isName("Length") ||
                                (filters.cryptFilter() && filters.isFilterEntry(entry->key));
        if (isReplaced)
            entries.drop();
        else
            rewriteCommonEntry(*entry, entries);
    }
    text.copyRest(Role::plain, out);
    const std::span<char> place = writer_.streamBody(body.size());
    std::ranges::copy(body, place.begin());
    writer_.endStream();
}

void ObjectCopier::appendFilters(const std::vector<StreamFilters::Filter>& filters,
                                 ByteBuffer& out) {
    if (filters.empty()) return;
    out.append("/Filter[");
    for (const StreamFilters::Filter& filter : filters) {
        texts_.spend(filter.name.text().size() + filter.parameters.text().size());
        appendValue(filter.name, Role::plain, out);
        out.append(" ");
    }
    out.append("]/DecodeParms[");
    for (const StreamFilters::Filter& filter : filters) {
        appendValue(filter.parameters.isNull() ? Value("null") : filter.parameters, Role::plain,
                    out);
        out.append(" ");
    }
    out.append("]");
}

void ObjectCopier::appendValue(Value value, Role role, ByteBuffer& out) {
    FoundParts parts;
    (void)scanValue(value.text(), 0, &parts);  // its extent is known already
    MappedText(value.text(), parts, map_).copyRest(role, out);
}

void ObjectCopier::appendAs(Role role, Value value, ByteBuffer& out) {
    FoundParts parts;
    (void)scanValue(value.text(), 0, &parts);  // its extent is known already
    MappedText text(value.text(), parts, map_);
    copyAs(role, value, text, out);
}

}  // namespace quirebind
