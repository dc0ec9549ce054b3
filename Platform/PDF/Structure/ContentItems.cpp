// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/ContentItems.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "Platform/PDF/ReferenceText.h"

namespace quirebind {

KidKind kindOfKid(Value kid) {
    if (kid.integer()) return KidKind::identifier;
    if (!kid.isDictionary()) return KidKind::none;
    return kindOfKid(DictionaryReader(kid));
}

KidKind kindOfKid(DictionaryReader entries) {
    bool hasType = false;
    bool hasStructureType = false;
    bool hasIdentifier = false;
    while (const auto entry = entries.next()) {
        if (entry->key.isName("Type") && !std::exchange(hasType, true)) {
            if (entry->value.isName("StructElem")) return KidKind::element;
            if (entry->value.isName("MCR")) return KidKind::markedContent;
            if (entry->value.isName("OBJR")) return KidKind::object;
        }
        hasStructureType = hasStructureType || (entry->key.isName("S") && !entry->value.isNull());
        hasIdentifier = hasIdentifier || (entry->key.isName("MCID") && !entry->value.isNull());
    }
    if (hasStructureType) return KidKind::element;
    return hasIdentifier ? KidKind::markedContent : KidKind::none;
}

/// Actions have an /S, too, and annotations a /P.
bool isStructureElement(Value value) {
    if (!value.isDictionary()) return false;
    const auto has = [&](std::string_view key) { return !value.find(key).isNull(); };
    if (has("Type")) return value.find("Type").isName("StructElem");
    return has("S") && (has("P") || has("K") || has("Pg")) && !has("Subtype");
}

void ContentItems::noteInsertion() {
    allPages_ = std::ranges::all_of(inserted_, [](bool isInserted) { return isInserted; });
}

std::optional<std::uint32_t> ContentItems::copyOfPage(Value page) const {
    const auto reference = page.reference();
    if (!reference) return std::nullopt;
    const auto index = pages_.indexOf(reference->number);
    if (!index || !inserted_[*index]) return std::nullopt;
    return pages_.ofIndex(*index);
}

ContentItems::Page ContentItems::pageOf(Value page, Page otherwise) const {
    if (page.isNull()) return otherwise;
    return copyOfPage(page) ? Page::copied : Page::left;
}

std::optional<std::uint32_t> ContentItems::copyOf(Value object) const {
    const auto reference = object.reference();
    return reference ? map_.find(reference->number) : std::nullopt;
}

bool ContentItems::isCopied(Value item, KidKind kind, Page page) const {
    page = pageOf(item.find("Pg"), page);
    if (page == Page::left || kind == KidKind::none) return false;
    if (kind == KidKind::object) return copyOf(item.find("Obj")).has_value();
    if (page == Page::unknown && !allPages_) return false;
    if (kind == KidKind::identifier) return true;
    const Value stream = item.find("Stm");
    return (stream.isNull() || copyOf(stream)) &&
           reader_.resolveIfSound(item.find("MCID")).integer().has_value();
}

void ContentItems::append(Value item, KidKind kind, ByteBuffer& out) const {
    if (kind == KidKind::identifier) {
        out.append(item.text());
        return;
    }
    out.append(kind == KidKind::object ? "<</Type/OBJR" : "<</Type/MCR");
    appendReferenceEntry("/Pg", copyOfPage(item.find("Pg")), out);
    appendCopy("/Obj", item.find("Obj"), out);
    appendCopy("/Stm", item.find("Stm"), out);
    appendCopy("/StmOwn ", item.find("StmOwn"), out);
    if (const Value id = reader_.resolveIfSound(item.find("MCID")); id.integer()) {
        out.append("/MCID ");
        out.append(id.text());
    }
    out.append(">>");
}

void ContentItems::appendCopy(std::string_view key, Value object, ByteBuffer& out) const {
    appendReferenceEntry(key, copyOf(object), out);
}

}  // namespace quirebind
