// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/ElementPages.h"

#include <vector>

#include "Platform/PDF/Reading/TreeReader.h"

namespace quirebind {

std::optional<std::uint32_t> ElementPages::copyFor(std::uint32_t element) {
    if (tree_.pages().size() == 1) return copies_.ofIndex(0);
    if (element == 0) return std::nullopt;
    if (!isRead_) read();
    const std::uint32_t page = pages_.get(element);
    if (page == 0 || page == kSeveral) return std::nullopt;
    return copies_.ofIndex(page - 1);
}

void ElementPages::read() {
    isRead_ = true;
    const Keys keys = readKeys();
    if (keys.empty()) return;
    attempt(reader_, [&] {
        const Value parentTree = reader_.resolve(root_).find("ParentTree");
        visitTree(reader_, parentTree, "Nums", [&](Value key, Value value) {
            const auto number = reader_.resolveIfSound(key).integer();
            const auto page = number ? keys.find(*number) : keys.end();
            if (page != keys.end()) note(page->second, value);
            return true;
        });
    });
}

ElementPages::Keys ElementPages::readKeys() {
    Keys keys;
    const std::vector<PageTree::Page>& pages = tree_.pages();
    for (std::size_t i = 0; i < pages.size(); ++i) {
        attempt(reader_, [&] {
            const Value page = tree_.dictionaryOf(pages[i], reader_);
            if (const auto key = reader_.resolve(page.find("StructParents")).integer())
                keys.try_emplace(*key, i);
        });
    }
    return keys;
}

/// An array that several pages refer to is read once: it can be right of one only.
void ElementPages::note(std::size_t page, Value elements) {
    const auto reference = elements.reference();
    if (reference && !arrays_.insert(reference->number).second) return;
    const Value array = reader_.resolveIfSound(elements);
    if (!array.isArray()) {
        noteElement(page, elements);
        return;
    }
    ArrayReader reader(array);
    while (const auto element = reader.next()) noteElement(page, *element);
}

void ElementPages::noteElement(std::size_t page, Value element) {
    const auto reference = element.reference();
    if (!reference) return;
    std::uint32_t& known = pages_.at(reference->number);
    const auto noted = static_cast<std::uint32_t>(page + 1);
    known = known == 0 || known == noted ? noted : kSeveral;
}

}  // namespace quirebind
