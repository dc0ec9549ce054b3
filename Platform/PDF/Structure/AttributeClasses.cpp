// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/AttributeClasses.h"

#include <utility>

#include "Platform/PDF/Guards/Limits.h"

namespace quirebind {

AttributeClasses::AttributeClasses(SharedNames& classes, std::size_t source, ObjectCopier& copier)
    : classes_(classes),
      source_(source),
      copier_(copier),
      room_(limits::kSharedInStructure, copier.reader().image().storedBytes()) {}

void AttributeClasses::read(Value classMap) {
    DictionaryReader entries(classMap);
    while (const auto entry = entries.next())
        classMap_.insert_or_assign(entry->key.name(), entry->value.text());
}

const std::string& AttributeClasses::nameFor(const std::string& name) {
    if (const auto found = names_.find(name); found != names_.end()) return found->second;
    std::string output = classes_.nameFor(name, definitionOf(name), source_);
    return names_.emplace(name, std::move(output)).first->second;
}

/// Attributes are written out here, so that equal ones are seen to be equal, whatever objects they
/// are in their sources.
std::string AttributeClasses::definitionOf(const std::string& name) {
    const auto found = classMap_.find(name);
    if (found == classMap_.end()) return {};
    ByteBuffer out;
    const bool isSound = attempt(copier_.reader(), [&] {
        const Value value(found->second);
        const Value list = value.reference() ? copier_.reader().resolve(value) : value;
        room_.spend(list.text().size());
        if (!list.isArray()) {
            appendAttributes(value, out);
            return;
        }
        out.append("[");
        ArrayReader elements(list);
        while (const auto element = elements.next()) {
            appendAttributes(*element, out);
            out.append(" ");
        }
        out.append("]");
    });
    const Value definition(out.text());
    const bool isOne = definition.isDictionary() || definition.isArray() || definition.reference();
    return isSound && isOne ? std::string(out.text()) : std::string();
}

void AttributeClasses::appendAttributes(Value attributes, ByteBuffer& out) {
    ObjectReader& reader = copier_.reader();
    if (const auto reference = attributes.reference(); reference && reader.exists(*reference)) {
        const SourceObject object = reader.read(reference->number);
        if (!object.isStream && object.value.isDictionary()) {
            room_.spend(object.value.text().size());
            attributes = object.value;
        }
    }
    copier_.appendAs(Role::structureAttributes, attributes, out);
}

}  // namespace quirebind
