// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Platform/PDF/Forms/FormResources.h"
#include "Platform/PDF/Forms/RootNames.h"
#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// What the form of one source becomes: all references are to objects of the output.
struct FormFields {
    std::vector<std::uint32_t> roots;
    std::vector<std::uint32_t> calculated;  ///< Fields, in the order in which they are calculated.
    bool needsAppearances = false;
};

/// Joins the forms of the sources (ISO 32000-2, 12.7.3):
///
///     << /Fields [roots] /CO [calculated] /DR << /Font << ... >> ... >> /NeedAppearances true >>
///
/// Each keeps its fields with their values. Names of root fields and of resources are claimed when
/// the import of a source begins; fields and resources are added when it ends.
class FormWriter {
 public:
    /// The names of root fields that all sources have claimed so far.
    [[nodiscard]] RootNames& names() { return names_; }
    /// The default resources that they have claimed so far; `finish` writes them.
    [[nodiscard]] FormResources& resources() { return resources_; }

    /// Adds the fields of a source, behind those of the sources before.
    void add(const FormFields& fields);

    /// Writes the form; gives its number, nothing where there is nothing in it.
    [[nodiscard]] std::optional<std::uint32_t> finish(DocumentWriter& writer) const;

 private:
    RootNames names_;
    FormResources resources_;
    FormFields joined_;
};

}  // namespace quirebind
