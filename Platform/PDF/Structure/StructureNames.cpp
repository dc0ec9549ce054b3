// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/StructureNames.h"

#include <ranges>
#include <set>
#include <vector>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Structure/StandardTypes.h"

namespace quirebind {

void StructureTypes::read(Value roleMap, ObjectReader& reader) {
    WorkBudget room(limits::kSharedInStructure, reader.image().storedBytes());
    DictionaryReader entries(roleMap);
    while (const auto entry = entries.next()) {
        const Value type = reader.resolveIfSound(entry->value);
        room.spend(type.text().size());
        const std::string name = entry->key.name();
        // Files map types to themselves, which says nothing; of repeated keys the last counts.
        if (type.isName() && type.name() != name)
            roleMap_.insert_or_assign(name, type.name());
        else
            roleMap_.erase(name);
    }
}

const std::string* StructureTypes::mapped(const std::string& type) const {
    const auto found = roleMap_.find(type);
    return found == roleMap_.end() ? nullptr : &found->second;
}

/// A type may be mapped to one that is mapped itself, and so on until there is a standard one. Then
/// names are found from the last one back, since a name is defined by the next one's name. A map
/// that loops ends where it does.
const std::string& StructureTypes::nameFor(const std::string& type) {
    if (const auto known = names_.find(type); known != names_.end()) return known->second;
    std::vector<std::string> way{type};
    std::set<std::string> met{type};
    while (!names_.contains(way.back())) {
        const std::string* next = mapped(way.back());
        if (next == nullptr || isStandardType(*next) || !met.insert(*next).second) break;
        way.push_back(*next);
    }
    for (const std::string& name : way | std::views::reverse) {
        if (names_.contains(name)) continue;
        const std::string* next = mapped(name);
        std::string target;
        if (next != nullptr && isStandardType(*next))
            target = *next;
        else if (next != nullptr && names_.contains(*next))
            target = names_.at(*next);
        if (!isStandardType(name))
            names_.emplace(name, types_.nameFor(name, target, source_));
        else if (target.empty())
            names_.emplace(name, name);
        else  // for other sources it is still what it always was
            names_.emplace(name, types_.otherNameFor(name, target, source_));
    }
    return names_.at(type);
}

void StructureTypes::mention(const std::string& type) {
    if (mapped(type) != nullptr && !isStandardType(type)) (void)nameFor(type);
}

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
