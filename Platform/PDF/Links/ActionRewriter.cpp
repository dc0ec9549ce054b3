// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Links/ActionRewriter.h"

#include <cstdint>

#include "Platform/PDF/Limits.h"
#include "Platform/PDF/Links/WebAddress.h"
#include "Platform/PDF/PDFString.h"
#include "Platform/PDF/ReferenceText.h"
#include "Platform/PDF/Structure/ContentItems.h"

namespace quirebind {

void ActionRewriter::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    if (depth_ == limits::kNestedActions) {
        text.copyTo(text.endOf(value), Role::action, out);
        return;
    }
    ++depth_;
    if (value.isArray()) {
        ArrayReader elements(value);
        while (const auto element = elements.next())
            copier_.copyAs(Role::action, *element, text, out);
    } else {
        rewriteAction(value, text, out);
    }
    text.copyTo(text.endOf(value), Role::plain, out);
    --depth_;
}

void ActionRewriter::rewriteAction(Value action, MappedText& text, ByteBuffer& out) {
    const Value kind = copier_.reader().resolveIfSound(action.find("S"));
    const bool goesTo = kind.isName("GoTo");
    const bool goesToThread = kind.isName("Thread") && action.find("F").isNull();
    const bool hides = kind.isName("Hide");
    const bool opensAddress = kind.isName("URI");
    EntryRewriter entries(action, text, out);
    while (const auto* const entry = entries.next()) {
        if (entry->key.isName("Next")) {
            copier_.copyAs(Role::action, entry->value, text, out);
        } else if (goesTo && entry->key.isName("D")) {
            ByteBuffer destination;
            if (destinations_.append(entry->value, destination))
                entries.replace().append(destination.text());
        } else if (goesToThread && entry->key.isName("D")) {
            if (!entry->value.reference()) appendThread(entry->value, entries.replace());
        } else if (opensAddress && entry->key.isName("URI")) {
            rewriteAddress(entry->value, entries);
        } else if (goesTo && entry->key.isName("SD")) {
            rewriteStructureDestination(entry->value, entries);
        } else if (entry->key.isName("Fields") || (hides && entry->key.isName("T"))) {
            copier_.copyAs(Role::fieldNames, entry->value, text, out);
        } else if (entry->key.isName("JS")) {
            copier_.copyAs(Role::script, entry->value, text, out);
        } else if (entry->key.isName("T") || entry->key.isName("AN") || entry->key.isName("TA")) {
            entries.copyAs(Role::annotation);
        }
    }
}

/// An article may also be told by its number in its document, or by its title (12.6.4.7). Appends a
/// reference to its copy.
void ActionRewriter::appendThread(Value thread, ByteBuffer& out) {
    ObjectReader& reader = copier_.reader();
    const auto number = thread.integer();
    ArrayReader threads(reader.resolveIfSound(catalog_.find("Threads")));
    for (std::int64_t i = 0; const auto element = threads.next(); ++i) {
        const auto reference = element->reference();
        if (!reference) continue;
        const Value title =
            reader.resolveIfSound(reader.resolveIfSound(*element).find("I")).find("Title");
        const bool isMeant = number
                                 ? *number == i
                                 : isString(thread) && stringBytes(reader.resolveIfSound(title)) ==
                                                           stringBytes(thread);
        if (!isMeant) continue;
        copier_.appendValue(*element, Role::plain, out);
        return;
    }
    out.append("null");
}

/// The catalog may say what addresses count from (12.6.4.8); the output's catalog cannot, for all.
void ActionRewriter::rewriteAddress(Value address, EntryRewriter& entries) {
    ObjectReader& reader = copier_.reader();
    if (!base_) {
        const Value base =
            reader.resolveIfSound(reader.resolveIfSound(catalog_.find("URI")).find("Base"));
        base_ = base.text().size() > limits::kBaseAddress ? std::string() : stringBytes(base);
    }
    if (base_->empty()) return;
    const Value resolved = reader.resolveIfSound(address);
    if (!isString(resolved)) return;
    const std::string reference = stringBytes(resolved);
    const std::string all = resolvedAddress(*base_, reference);
    if (all == reference) return;
    room_.spend(all.size());
    appendLiteralString(all, entries.replace());
}

/// An array of a structure element and a view (12.3.2.3). Readers that do not know it use /D.
void ActionRewriter::rewriteStructureDestination(Value destination, EntryRewriter& entries) {
    ObjectReader& reader = copier_.reader();
    ArrayReader elements(reader.resolveIfSound(destination));
    const Value element = elements.next().value_or(Value());
    const auto reference = element.reference();
    std::optional<std::uint32_t> copy;
    if (reference && copier_.hasRewriter(Role::structureElement) &&
        isStructureElement(reader.resolveIfSound(element)))
        copy = copier_.map().map(*reference, Role::structureElement);
    if (!copy) {
        entries.drop();
        return;
    }
    ByteBuffer& out = entries.replace();
    out.append("[");
    appendReference(*copy, out);
    destinations_.appendView(elements, out);
    out.append("]");
}

void AdditionalActionsRewriter::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    EntryRewriter entries(value, text, out);
    while (const auto* const entry = entries.next())
        copier_.copyAs(Role::action, entry->value, text, out);
    entries.finish();
}

}  // namespace quirebind
