// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Structure/SharedNames.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// What the attribute classes of one source are called in the output (ISO 32000-2, 14.7.6.2).
class AttributeClasses {
 public:
    /// `copier` has a rewriter for attributes.
    AttributeClasses(SharedNames& classes, std::size_t source, ObjectCopier& copier);

    /// Reads the source's class map.
    void read(Value classMap);

    /// The output's name for a class, which with its attributes comes into the output's class map.
    [[nodiscard]] const std::string& nameFor(const std::string& name);

 private:
    [[nodiscard]] std::string definitionOf(const std::string& name);
    void appendAttributes(Value attributes, ByteBuffer& out);

    SharedNames& classes_;
    std::size_t source_;
    ObjectCopier& copier_;
    std::map<std::string, std::string> classMap_;
    std::map<std::string, std::string> names_;
    WorkBudget room_;  // for attributes that many classes share
};

}  // namespace quirebind
