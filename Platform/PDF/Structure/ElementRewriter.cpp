// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/ElementRewriter.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/PDFName.h"
#include "Platform/PDF/Syntax/PDFString.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {

std::string ElementRewriter::topElements(Value root) {
    Element element;
    element.number = context_.root;
    Value kids = root.find("K");
    element.text = root.text();
    if (const auto reference = kids.reference()) {
        // Only this array is not copied: the output has one of its own.
        if (const Value list = context_.copier.reader().resolveIfSound(kids); list.isArray()) {
            element.place.object = reference->number;
            element.text = list.text();
            kids = list;
        }
    }
    ByteBuffer out;
    appendKids(kids, element, out);
    return std::string(out.text());
}

bool ElementRewriter::writeDirect() {
    const std::vector<ElementCopies::Direct> elements = context_.copies.takeDirect();
    DocumentWriter& writer = context_.copier.writer();
    for (const ElementCopies::Direct& direct : elements) {
        FoundParts parts;
        (void)scanValue(direct.text, 0, &parts);  // its extent is known already
        MappedText text(direct.text, parts, context_.copier.map());
        const Element element{.number = direct.number,
                              .parent = direct.parent,
                              .depth = direct.depth,
                              .place = direct.place,
                              .text = direct.text,
                              .verdict = verdictOf(direct.place),
                              .page = {},
                              .kids = {}};
        write(Value(direct.text), element, text, writer.beginObject(direct.number, writer.packs()));
        writer.endObject();
    }
    return !elements.empty();
}

ElementSelection::Verdict ElementRewriter::verdictOf(const ElementPlace& place) const {
    if (selection_ != nullptr) return selection_->of(place);
    return {.isKept = true};
}

/// Nearly always an element; but an element's list of kids may be an object, too, and so may what
/// says which content is its.
void ElementRewriter::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    const ReferenceMap::Pending& current = context_.copier.current();
    Element element;
    element.number = current.output;
    element.parent = context_.copies.parentOf(current.source);
    element.place.object = current.source;
    element.text = value.text();
    element.verdict = verdictOf(element.place);
    const ElementKid kid =
        value.isDictionary() ? ElementKid::read(text.entriesOf(value)) : ElementKid::read(value);
    if (kid.kind == KidKind::element) {
        write(value, element, text, out);
    } else if (value.isArray()) {
        element.number = element.parent;
        out.append("[");
        appendKids(value, element, out);
        out.append("]");
    } else if (context_.items.isCopied(kid, element.verdict.page)) {
        context_.items.append(kid, out);
    } else {
        out.append("null");
    }
}

void ElementRewriter::write(Value value, Element element, MappedText& text, ByteBuffer& out) {
    constexpr std::size_t kBracket = 2;
    bool hasLanguage = false;
    DictionaryReader reader = text.entriesOf(value);
    while (const auto entry = reader.next()) {
        if (entry->key.isName("Pg")) takeLast(element.page, entry->value);
        if (entry->key.isName("K")) takeLast(element.kids, entry->value);
        if (entry->key.isName("NS")) element.hasNamespace = !entry->value.isNull();
        if (entry->key.isName("Lang")) hasLanguage = !entry->value.isNull();
    }
    element.verdict.page = context_.items.pageOf(element.page, element.verdict.page);

    const auto page = missingPage(element);

    text.copyTo(text.beginOf(value) + kBracket, Role::plain, out);
    out.append("/P ");
    appendReference(element.parent, out);
    appendReferenceEntry("/Pg", page, out);
    if (!hasLanguage && element.parent == context_.root && !context_.language.empty()) {
        out.append("/Lang");
        appendLiteralString(context_.language, out);
    }
    EntryRewriter entries(value, text, out);
    while (const auto* const entry = entries.next())
        writeEntry(*entry, element, entries, text, out);
    entries.finish();
}

/// The page that an element has to name because its content, known by numbers, is on it, and
/// neither it nor one around it does. In its source its page was found by way of the parent tree,
/// or was the only one.
std::optional<std::uint32_t> ElementRewriter::missingPage(const Element& element) {
    const bool isSaid = !element.page.isNull() ||
                        (element.parent < knowsPage_.size() && knowsPage_[element.parent]);
    if (isSaid) {
        if (element.number >= knowsPage_.size()) knowsPage_.resize(element.number + 1);
        knowsPage_[element.number] = true;
        return std::nullopt;
    }
    // Where some pages are left out, so is what may be on them.
    if (!context_.items.areAllPagesCopied() || !hasNumberedContent(element.kids))
        return std::nullopt;
    return context_.pages.copyFor(element.place.offset == 0 ? element.place.object : 0);
}

bool ElementRewriter::hasNumberedContent(Value kids) {
    const Value list = inlined(kids);
    // Nearly all marked content that is a dictionary names its page, which is quickly seen.
    const auto isNumbered = [](Value kid) {
        if (!kid.isDictionary()) return kid.integer().has_value();
        if (kid.text().find("Pg") != std::string_view::npos) return false;
        const ElementKid item = ElementKid::read(kid);
        return item.kind == KidKind::markedContent && item.stream.isNull();
    };
    if (isNumbered(list)) return true;
    ArrayReader elements(list);
    while (const auto kid = elements.next())
        if (isNumbered(*kid)) return true;
    return false;
}

void ElementRewriter::writeEntry(const DictionaryEntry& entry, const Element& element,
                                 EntryRewriter& entries, MappedText& text, ByteBuffer& out) {
    const Value key = entry.key;
    const auto isEntry = [&](Value value) {
        return entry.value.text().data() == value.text().data();
    };
    if (key.isName("S")) {
        writeType(entry.value, element, entries);
    } else if (key.isName("K")) {
        // A kid is the first parent's that lists it: an earlier /K would leave none to the last.
        if (isEntry(element.kids))
            writeKids(entry.value, element, entries);
        else
            entries.drop();
    } else if (key.isName("Pg")) {
        const auto page = context_.items.copyOfPage(entry.value);
        if (page && isEntry(element.page))
            appendReference(*page, entries.replace());
        else
            entries.drop();
    } else if (key.isName("A")) {
        context_.copier.copyAs(Role::structureAttributes, entry.value, text, out);
    } else if (key.isName("C")) {
        writeClasses(entry.value, entries);
    } else if (key.isName("ID")) {
        writeID(entry.value, element, entries);
    } else if (key.isName("Ref")) {
        writeReferences(entry.value, entries);
    } else if (key.isName("P") || (element.verdict.isMixed && standsForContent(key))) {
        entries.drop();
    }
}

/// A type that has a namespace is looked up there, not in the role map.
void ElementRewriter::writeType(Value type, const Element& element, EntryRewriter& entries) {
    const std::string name = inlined(type).name();
    if (name.empty()) return;
    if (element.hasNamespace) {
        context_.types.mention(name);
        return;
    }
    const std::string& output = context_.types.nameFor(name);
    if (output != name || !type.isName()) appendName(output, entries.replace());
}

void ElementRewriter::writeID(Value id, const Element& element, EntryRewriter& entries) {
    const Value string = inlined(id);
    if (!isString(string)) return;
    const std::string bytes = stringBytes(string);
    const std::string output = context_.ids.idFor(bytes);
    context_.ids.list(output, element.number);
    if (output != bytes) appendLiteralString(output, entries.replace());
}

void ElementRewriter::writeReferences(Value references, EntryRewriter& entries) {
    std::vector<std::uint32_t> copies;
    const auto append = [&](Value value) {
        const auto reference = value.reference();
        const auto copy = reference ? context_.copies.find(*reference) : std::nullopt;
        if (copy) copies.push_back(*copy);
    };
    append(references);
    ArrayReader elements(inlined(references));
    while (const auto element = elements.next()) append(*element);
    if (copies.empty()) {
        entries.drop();
        return;
    }
    ByteBuffer& out = entries.replace();
    out.append("[");
    appendReferences(copies, out);
    out.append("]");
}

/// A name, or an array of names, each with a revision number if need be (14.7.6.3).
void ElementRewriter::writeClasses(Value classes, EntryRewriter& entries) {
    const Value list = inlined(classes);
    if (list.isName()) {
        appendName(context_.classes.nameFor(list.name()), entries.replace());
        return;
    }
    if (!list.isArray()) {
        entries.drop();
        return;
    }
    ByteBuffer& out = entries.replace();
    out.append("[");
    ArrayReader elements(list);
    while (const auto element = elements.next()) {
        const Value part = inlined(*element);
        if (part.isName()) {
            appendName(context_.classes.nameFor(part.name()), out);
        } else if (part.integer()) {
            out.append(" ");
            out.append(part.text());
        }
    }
    out.append("]");
}

void ElementRewriter::writeKids(Value kids, const Element& element, EntryRewriter& entries) {
    kids_.shrink(0);
    appendKids(kids, element, kids_);
    if (kids_.size() == 0) {
        entries.drop();
        return;
    }
    ByteBuffer& out = entries.replace();
    if (kids.isArray()) out.append("[");
    out.append(kids_.text());
    if (kids.isArray()) out.append("]");
}

void ElementRewriter::appendKids(Value kids, const Element& element, ByteBuffer& out) {
    if (!kids.isArray()) {
        appendKid(kids, element, out);
        return;
    }
    const std::size_t begin = out.size();
    ArrayReader elements(kids);
    while (const auto kid = elements.next()) {
        const std::size_t before = out.size();
        if (before != begin) out.append(" ");
        const std::size_t separated = out.size();
        appendKid(*kid, element, out);
        if (out.size() == separated) out.shrink(before);
    }
}

void ElementRewriter::appendKid(Value kid, const Element& element, ByteBuffer& out) {
    if (const auto reference = kid.reference()) {
        if (const auto copy = context_.copies.copy(*reference, element.number))
            appendReference(*copy, out);
        return;
    }
    if (const ElementKid item = ElementKid::read(kid); item.kind != KidKind::element) {
        if (context_.items.isCopied(item, element.verdict.page)) context_.items.append(item, out);
        return;
    }
    const ElementPlace place = element.place.of(kid, element.text);
    if (element.depth == limits::kNestedElements || !verdictOf(place).isKept) return;
    ElementCopies::Direct direct;
    direct.parent = element.number;
    direct.depth = element.depth + 1;
    direct.place = place;
    appendReference(context_.copies.copyDirect(kid, std::move(direct)), out);
}

/// What `value` refers to; nothing any more once too much was read again and again.
Value ElementRewriter::inlined(Value value) {
    if (!value.reference()) return value;
    if (room_.left() == 0) return {};
    const Value resolved = context_.copier.reader().resolveIfSound(value);
    room_.spend(std::min<std::uint64_t>(room_.left(), resolved.text().size()));
    return resolved;
}

}  // namespace quirebind
