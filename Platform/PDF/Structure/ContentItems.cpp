// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/ContentItems.h"

#include <algorithm>
#include <string_view>

#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {

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

bool ContentItems::isCopied(const ElementKid& item, Page page) const {
    page = pageOf(item.page, page);
    if (page == Page::left || item.kind == KidKind::none) return false;
    if (item.kind == KidKind::object) return copyOf(item.object).has_value();
    if (page == Page::unknown && !allPages_) return false;
    if (item.kind == KidKind::identifier) return true;
    return (item.stream.isNull() || copyOf(item.stream)) &&
           reader_.resolveIfSound(item.identifier).integer().has_value();
}

void ContentItems::append(const ElementKid& item, ByteBuffer& out) const {
    if (item.kind == KidKind::identifier) {
        out.append(item.identifier.text());
        return;
    }
    out.append(item.kind == KidKind::object ? "<</Type/OBJR" : "<</Type/MCR");
    appendReferenceEntry("/Pg", copyOfPage(item.page), out);
    appendCopy("/Obj", item.object, out);
    appendCopy("/Stm", item.stream, out);
    appendCopy("/StmOwn ", item.streamOwner, out);
    if (const Value id = reader_.resolveIfSound(item.identifier); id.integer()) {
        out.append("/MCID ");
        out.append(id.text());
    }
    out.append(">>");
}

void ContentItems::appendCopy(std::string_view key, Value object, ByteBuffer& out) const {
    appendReferenceEntry(key, copyOf(object), out);
}

}  // namespace quirebind
