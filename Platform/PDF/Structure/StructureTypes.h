// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Structure/SharedNames.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// What the structure types of one source are called in the output (ISO 32000-2, 14.7.3): a type
/// is, of all sources, what its own role map makes it.
class StructureTypes {
 public:
    /// `source` counts the sources from 1.
    StructureTypes(SharedNames& types, std::size_t source) : types_(types), source_(source) {}

    /// Reads the source's role map.
    void read(Value roleMap, ObjectReader& reader);

    /// The output's name for a type without a namespace. It and all that it is mapped to come into
    /// the output's role map.
    [[nodiscard]] const std::string& nameFor(const std::string& type);

    /// Brings the mapping along of a type that has a namespace, which keeps its name: readers that
    /// do not know of namespaces look into the role map.
    void mention(const std::string& type);

 private:
    [[nodiscard]] const std::string* mapped(const std::string& type) const;

    SharedNames& types_;
    std::size_t source_;
    std::map<std::string, std::string> roleMap_;
    std::map<std::string, std::string> names_;
};

}  // namespace quirebind
