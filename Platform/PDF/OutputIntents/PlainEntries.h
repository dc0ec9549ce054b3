// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// The entries of a dictionary of an output intent that `isWanted` accepts by their keys, with
/// their values resolved, in the order of the file. They are not sorted before they are compared: a
/// program writes the same profile in the same order each time. Throws DamagedDocument where a
/// value refers to an object.
template <typename IsWanted>
std::string plainEntries(ObjectReader& reader, Value dictionary, IsWanted isWanted) {
    std::string entries;
    DictionaryReader found(dictionary);
    while (const auto entry = found.next()) {
        if (!isWanted(entry->key)) continue;
        const Value value = reader.resolve(entry->value);
        FoundParts parts;
        (void)scanValue(value.text(), 0, &parts);
        if (!parts.references().empty())
            throw DamagedDocument("an output intent that is no plain value");
        entries.append(entry->key.text()).append(" ").append(value.text()).append("\n");
        if (entries.size() > limits::kOutputIntentText)
            throw DamagedDocument("too long an output intent");
    }
    return entries;
}

}  // namespace quirebind
