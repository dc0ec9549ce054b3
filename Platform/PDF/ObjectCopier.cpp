// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/ObjectCopier.h"

#include <algorithm>
#include <span>
#include <string>

#include "Platform/PDF/DamagedDocument.h"
#include "Platform/PDF/MappedText.h"

namespace quirebind {
namespace {

/// A node of a page tree that the walk did not meet: some page outside the tree (a template, one of
/// an older revision) refers to it, and it would bring all its other pages along.
bool isPageTreeNode(Value value) {
    // The text tells at once of nearly every object that it is none.
    const std::string_view text = value.text();
    if (text.find("/Kids") == std::string_view::npos && text.find('#') == std::string_view::npos)
        return false;
    return value.find("Type").isName("Pages") && !value.find("Kids").isNull();
}

/// Whether this says that it is a structure element.
bool isTypedElement(Value value) {
    const std::string_view text = value.text();
    if (text.find("/StructElem") == std::string_view::npos &&
        text.find('#') == std::string_view::npos)
        return false;
    return value.find("Type").isName("StructElem");
}

/// Whether this may be a dictionary that names a place in the parent tree (ISO 32000-2, 14.7.5.4).
bool hasStructureKey(Value value) {
    const std::string_view text = value.text();
    return value.isDictionary() && (text.find("/StructParent") != std::string_view::npos ||
                                    text.find('#') != std::string_view::npos);
}

}  // namespace

void ObjectCopier::copyPending(Damage damage) {
    while (const auto pending = map_.next()) {
        current_ = *pending;
        try {
            copyCurrent(reader_.read(pending->source, &references_));
        } catch (const DamagedDocument&) {
            if (damage == Damage::refused || reader_.isExhausted()) throw;
            writer_.writeNull(pending->output);
        }
        reader_.trim();
    }
}

void ObjectCopier::copyCurrent(const SourceObject& object) {
    const bool isTaggedElement = current_.role == Role::plain &&
                                 hasRewriter(Role::structureElement) && !object.isStream &&
                                 isTypedElement(object.value);
    if (isTaggedElement)
        map_.wait(current_.source);
    else if (object.isStream && current_.role != Role::structureElement)
        copyStream(object);
    else
        copyObject(object);
}

void ObjectCopier::copyObject(const SourceObject& object) {
    ByteBuffer& out = writer_.beginObject(current_.output, object.packed);
    MappedText text(object.value.text(), references_, map_, object.number);
    ObjectRewriter* const rewriter = rewriterOf(current_.role);
    // No structure element is a stream.
    if (object.isStream || object.value.isNull() || isPageTreeNode(object.value))
        out.append("null");
    else if (rewriter != nullptr)
        rewriter->rewrite(object.value, text, out);
    else
        copyPlain(object.value, text, out);
    writer_.endObject();
}

void ObjectCopier::copyPlain(Value value, MappedText& text, ByteBuffer& out) {
    if (hasStructureKey(value)) {
        EntryRewriter entries(value, text, out);
        while (const auto entry = entries.next()) rewriteCommonEntry(*entry, entries);
    }
    text.copyRest(Role::plain, out);
}

bool ObjectCopier::rewriteCommonEntry(const DictionaryEntry& entry, EntryRewriter& entries) {
    if (!entry.key.isName("StructParent") && !entry.key.isName("StructParents")) return false;
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
    const std::uint64_t length = reader_.bodyLength(object);
    bodies_.spend(length);
    if (reader_.isEncrypted()) {
        copyEncryptedStream(object, length, current_.output);
        return;
    }
    ByteBuffer& out = writer_.beginStream(current_.output);
    const std::size_t begin = out.size();
    if (!appendStreamDictionary(object.value, length, {}, out)) {
        out.shrink(begin);
        (void)appendStreamDictionary(object.value, length, "/Length ", out);
    }
    reader_.image().copy(object.bodyOffset, writer_.streamBody(static_cast<std::size_t>(length)));
    writer_.endStream();
}

/// With that length under every /Length that there is, and under one more where the key is given.
/// Says whether there was any.
bool ObjectCopier::appendStreamDictionary(Value dictionary, std::uint64_t length,
                                          std::string_view key, ByteBuffer& out) {
    constexpr std::string_view kOpening = "<<";
    MappedText text(dictionary.text(), references_, map_);
    out.append(kOpening);
    text.skipTo(kOpening.size());
    if (!key.empty()) {
        out.append(key);
        out.append(length);
        out.append(" ");
    }
    bool declared = false;
    EntryRewriter entries(dictionary, text, out);
    while (const auto entry = entries.next()) {
        if (entry->key.isName("Length")) {
            entries.replace().append(length);
            declared = true;
        } else {
            rewriteCommonEntry(*entry, entries);
        }
    }
    text.copyRest(Role::plain, out);
    return declared;
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
    MappedText text(object.value.text(), references_, map_);
    text.skipTo(kBracket);
    EntryRewriter entries(object.value, text, out);
    while (const auto entry = entries.next()) {
        const bool isReplaced = entry->key.isName("Length") ||
                                (filters.cryptFilter() && StreamFilters::isFilterEntry(entry->key));
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
    std::vector<FoundReference> references;
    (void)scanValue(value.text(), 0, &references);  // its extent is known already
    MappedText(value.text(), references, map_).copyRest(role, out);
}

void ObjectCopier::appendAs(Role role, Value value, ByteBuffer& out) {
    std::vector<FoundReference> references;
    (void)scanValue(value.text(), 0, &references);  // its extent is known already
    MappedText text(value.text(), references, map_);
    copyAs(role, value, text, out);
}

}  // namespace quirebind
