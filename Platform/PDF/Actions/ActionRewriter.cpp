// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Actions/ActionRewriter.h"

#include "Platform/PDF/Guards/DepthGuard.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Links/WebAddress.h"
#include "Platform/PDF/Structure/ContentItems.h"
#include "Platform/PDF/Syntax/PDFString.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {

void ActionRewriter::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    if (depth_ == limits::kNestedActions) {
        text.copyTo(text.endOf(value), Role::action, out);
        return;
    }
    const DepthGuard guard(depth_);
    if (value.isArray()) {
        ArrayReader elements(value);
        while (const auto element = elements.next())
            copier_.copyAs(Role::action, *element, text, out);
    } else {
        rewriteAction(value, text, out);
    }
    text.copyTo(text.endOf(value), Role::plain, out);
}

ActionRewriter::Kind ActionRewriter::kindOf(Value action) {
    ObjectReader& reader = copier_.reader();
    const Value kind = reader.resolveIfSound(action.find("S"));
    const bool isOnFields = kind.isName("ResetForm") || kind.isName("SubmitForm");
    return {.goesTo = kind.isName("GoTo"),
            .goesToThread = kind.isName("Thread") && action.find("F").isNull(),
            .hides = kind.isName("Hide"),
            .opensAddress = kind.isName("URI"),
            .page = kind.isName("Named") ? namedPage(action) : std::nullopt,
            .meansWholeForm = isOnFields && form_ != nullptr &&
                              reader.resolveIfSound(action.find("Fields")).isNull()};
}

void ActionRewriter::rewriteAction(Value action, MappedText& text, ByteBuffer& out) {
    const Kind kind = kindOf(action);
    if (kind.page) appendPage(*kind.page, action, text, out);
    if (kind.meansWholeForm) appendRootList(action, text, out);
    EntryRewriter entries(action, text, out);
    while (const auto* const entry = entries.next()) {
        if (rewriteByKind(kind, *entry, entries)) continue;
        if (entry->key.isName("Next")) {
            copier_.copyAs(Role::action, entry->value, text, out);
        } else if (entry->key.isName("Fields") || (kind.hides && entry->key.isName("T"))) {
            copier_.copyAs(Role::fieldNames, entry->value, text, out);
        } else if (entry->key.isName("JS")) {
            copier_.copyAs(Role::script, entry->value, text, out);
        } else if (entry->key.isName("T") || entry->key.isName("AN") || entry->key.isName("TA") ||
                   entry->key.isName("Annotation")) {
            entries.copyAs(Role::annotation);
        }
    }
}

bool ActionRewriter::rewriteByKind(const Kind& kind, const DictionaryEntry& entry,
                                   EntryRewriter& entries) {
    const Value key = entry.key;
    const bool isSaidBefore = (kind.page && (key.isName("N") || key.isName("D"))) ||
                              (kind.meansWholeForm && key.isName("Fields"));
    if (isSaidBefore) {
        entries.drop();
    } else if (kind.goesTo && key.isName("D")) {
        ByteBuffer destination;
        if (destinations_.append(entry.value, destination))
            entries.replace().append(destination.text());
    } else if (kind.goesTo && key.isName("SD")) {
        rewriteStructureDestination(entry.value, entries);
    } else if (kind.goesToThread && key.isName("D")) {
        rewriteThread(entry.value, entries);
    } else if (kind.opensAddress && key.isName("URI")) {
        rewriteAddress(entry.value, entries);
    } else if (kind.page && key.isName("S")) {
        entries.replace().append("/GoTo");
    } else if (kind.meansWholeForm && key.isName("Flags")) {
        rewriteFlags(entry.value, entries);
    } else {
        return false;
    }
    return true;
}

/// The first page and the last one are named for all documents alike (12.6.4.12), and in the output
/// would be those of all of them together.
std::optional<std::size_t> ActionRewriter::namedPage(Value action) {
    const Value name = copier_.reader().resolveIfSound(action.find("N"));
    if (name.isName("FirstPage")) return 0;
    if (name.isName("LastPage")) return destinations_.pageCount() - 1;
    return std::nullopt;
}

/// Such an action leaves the view as it is.
void ActionRewriter::appendPage(std::size_t page, Value action, MappedText& text, ByteBuffer& out) {
    constexpr std::string_view kBracket = "<<";
    text.copyTo(text.beginOf(action) + kBracket.size(), Role::plain, out);
    out.append("/D");
    const std::string destination = "[" + std::to_string(page) + "/XYZ null null null]";
    (void)destinations_.append(Value(destination), out);
}

/// An action that names no fields is on all of the form's (12.7.6.2 and 12.7.6.3), which is now
/// that of others, too.
void ActionRewriter::appendRootList(Value action, MappedText& text, ByteBuffer& out) {
    constexpr std::string_view kBracket = "<<";
    if (form_->rootList == 0) form_->rootList = copier_.writer().reserve();
    text.copyTo(text.beginOf(action) + kBracket.size(), Role::plain, out);
    out.append("/Fields ");
    appendReference(form_->rootList, out);
}

/// The lowest bit, which counts only where fields are named, would mean all but these.
void ActionRewriter::rewriteFlags(Value flags, EntryRewriter& entries) {
    const auto bits = copier_.reader().resolveIfSound(flags).integer();
    if (bits && *bits > 0 && *bits % 2 == 1)
        entries.replace().append(static_cast<std::uint64_t>(*bits - 1));
}

/// A number or a title would mean another document's article.
void ActionRewriter::rewriteThread(Value thread, EntryRewriter& entries) {
    const Value resolved = copier_.reader().resolveIfSound(thread);
    if (thread.reference() && resolved.isDictionary()) return;
    const auto meant = threads_.find(resolved);
    const auto copy = meant ? copier_.map().map(*meant, Role::plain) : std::nullopt;
    if (copy)
        appendReference(*copy, entries.replace());
    else
        entries.replace().append("null");
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

}  // namespace quirebind
