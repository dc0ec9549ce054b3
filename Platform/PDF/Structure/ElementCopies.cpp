// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/ElementCopies.h"

namespace quirebind {

/// Those that were referred to while pages were copied, too.
void ElementCopies::noteWaiting() {
    for (const std::uint32_t source : copier_.map().takeWaiting()) {
        parents_.at(source) = kWaits;
        waiting_.push_back(source);
    }
}

std::optional<std::uint32_t> ElementCopies::copy(Reference kid, std::uint32_t parent) {
    noteWaiting();
    if (selection_ != nullptr && !selection_->of({kid.number, 0}).isKept) return std::nullopt;
    const std::uint32_t current = parents_.get(kid.number);
    const bool isElement = current != 0 && current != kOther;
    const bool isSomethingElse = !isElement && copier_.map().isAssigned(kid.number);
    if (isSomethingElse || (isElement && current != kWaits)) return std::nullopt;
    const auto number = copier_.map().mapElement(kid);
    if (number) parents_.at(kid.number) = parent;
    return number;
}

std::uint32_t ElementCopies::copyDirect(Value element, Direct direct) {
    direct.number = copier_.writer().reserve();
    direct.text = element.text();
    direct_.push_back(std::move(direct));
    return direct_.back().number;
}

std::optional<std::uint32_t> ElementCopies::find(Reference element) {
    noteWaiting();
    ReferenceMap& map = copier_.map();
    const std::uint32_t parent = parents_.get(element.number);
    if (parent == kOther) return std::nullopt;
    if (parent != 0) return map.find(element.number);
    if (map.isAssigned(element.number)) return std::nullopt;
    if (selection_ != nullptr) {
        if (!selection_->of({element.number, 0}).isKept) return std::nullopt;
    } else if (!isElement(element)) {
        parents_.at(element.number) = kOther;  // not to be read again
        return std::nullopt;
    }
    return map.map(element, Role::structureElement);
}

bool ElementCopies::isElement(Reference reference) {
    ObjectReader& reader = copier_.reader();
    bool isElement = false;
    attempt(reader, [&] {
        if (!reader.exists(reference)) return;
        const SourceObject object = reader.read(reference.number);
        isElement = !object.isStream && isStructureElement(object.value);
    });
    return isElement;
}

bool ElementCopies::copyWaiting(std::uint32_t root) {
    noteWaiting();
    bool any = false;
    for (const std::uint32_t source : std::exchange(waiting_, {})) {
        if (parents_.get(source) != kWaits) continue;
        parents_.at(source) = root;
        copier_.map().queueElement(source);
        any = true;
    }
    return any;
}

}  // namespace quirebind
