// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/ParentTreeImport.h"

#include "Platform/PDF/Reading/TreeReader.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
void ParentTreeImport::run(Value parentTree) {
    ObjectReader& reader = copier_.reader();
    visitTree(reader, parentTree, "Nums", [&](Value key, Value value) {
        const auto source = reader.resolveIfSound(key).integer();
        const auto output = source ? copier_.structureKeys().find(*source) : std::nullopt;
        if (output && !writer_.has(*output)) add(*output, value);
        return true;
    });
}

void ParentTreeImport::add(std::uint32_t key, Value value) {
    const auto reference = value.reference();
    const std::string copy = reference ? referenceTo(*reference) : elementsIn(value);
    if (!copy.empty()) writer_.add(key, copy);
}

/// An array that is an object stays one, and is shared where it was.
std::string ParentTreeImport::referenceTo(Reference reference) {
    if (const auto element = elements_.find(reference)) return referenceText(*element);
    const auto [known, isNew] = arrays_.try_emplace(reference.number);
    if (!isNew) return known->second;
    const std::string array =
        elementsIn(copier_.reader().resolveIfSound(Value(referenceText(reference))));
    if (array.empty()) return {};
    DocumentWriter& writer = copier_.writer();
    const std::uint32_t number = writer.reserve();
    writer.beginObject(number, writer.packs()).append(array);
    writer.endObject();
    known->second = referenceText(number);
    return known->second;
}

/// The copy of such an array; empty where no element is in it.
std::string ParentTreeImport::elementsIn(Value array) {
    std::string text = "[";
    bool isEmpty = true;
    ArrayReader elements(array);
    while (const auto element = elements.next()) {
        const auto reference = element->reference();
        const auto copy = reference ? elements_.find(*reference) : std::nullopt;
        text += copy ? referenceText(*copy) + " " : "null ";
        isEmpty = isEmpty && !copy;
    }
    if (isEmpty) return {};
    text.back() = ']';
    return text;
}

}  // namespace quirebind
