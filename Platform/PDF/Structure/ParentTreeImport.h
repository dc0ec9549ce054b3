// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Structure/ElementCopies.h"
#include "Platform/PDF/Structure/ParentTreeWriter.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Brings along what the parent tree of one source says of what was copied.
class ParentTreeImport {
 public:
    /// All must outlive this.
    ParentTreeImport(ObjectCopier& copier, ElementCopies& elements, ParentTreeWriter& writer)
        : copier_(copier), elements_(elements), writer_(writer) {}

    /// Reads the source's tree. Elements that are in it only are to be copied, too.
    void run(Value parentTree);

 private:
    void add(std::uint32_t key, Value value);
    [[nodiscard]] std::string referenceTo(Reference reference);
    [[nodiscard]] std::string elementsIn(Value array);

    ObjectCopier& copier_;
    ElementCopies& elements_;
    ParentTreeWriter& writer_;
    std::map<std::uint32_t, std::string> arrays_;  // references to copies of arrays
};

}  // namespace quirebind
