// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/StructureTypes.h"

#include <ranges>
#include <set>
#include <vector>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Guards/WorkBudget.h"
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

}  // namespace quirebind
