// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/PDF/Copying/DocumentPart.h"
#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Links/PageCopies.h"
#include "Platform/PDF/Reading/Catalog.h"
#include "Platform/PDF/Reading/PageTree.h"
#include "Platform/PDF/Structure/AttributeClasses.h"
#include "Platform/PDF/Structure/AttributeRewriter.h"
#include "Platform/PDF/Structure/ContentItems.h"
#include "Platform/PDF/Structure/ElementCopies.h"
#include "Platform/PDF/Structure/ElementIDs.h"
#include "Platform/PDF/Structure/ElementPages.h"
#include "Platform/PDF/Structure/ElementRewriter.h"
#include "Platform/PDF/Structure/ElementSelection.h"
#include "Platform/PDF/Structure/StructureTypes.h"
#include "Platform/PDF/Structure/StructureWriter.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Brings the logical structure of one source along (ISO 32000-2, 14.7), as far as it is about the
/// copied pages, and with it what the source's parent tree says of them.
///
/// The tree is gone through once, from the root down, after all pages are copied: then it is known
/// which annotations and forms are there to be referred to. Types, classes and identifiers come
/// along as elements use them.
class StructureImport : public DocumentPart {
 public:
    /// What the structure is about.
    struct Pages {
        const PageTree& tree;
        const PageCopies& copies;
        const std::vector<bool>& inserted;
    };

    /// Nothing where the source has no structure that can be read. `language` is the catalog's.
    /// Everything else must outlive the result.
    [[nodiscard]] static std::unique_ptr<StructureImport> open(ObjectCopier& copier,
                                                               const Catalog& catalog, Pages pages,
                                                               std::string language,
                                                               StructureWriter& writer);

    /// As `open`, with `root`, the structure tree root as the catalog has it. References to it are
    /// to the root of the output from now on; nothing is read before `finish`.
    StructureImport(ObjectCopier& copier, Value root, Pages pages, std::string language,
                    StructureWriter& writer);

    void finish() override;

 private:
    void readNamespaces(Value namespaces);
    void addFiles(Value root);
    [[nodiscard]] std::vector<std::uint32_t> copiesOf(Value files);
    void select();
    void copyElements();

    ObjectCopier& copier_;
    Value root_;  // as the catalog has it
    StructureWriter& writer_;
    std::uint32_t outputRoot_;
    std::size_t source_;  // counting from 1
    SourceIDs ids_;
    StructureTypes types_;
    AttributeClasses classes_;
    AttributeRewriter attributes_;
    ContentItems items_;
    ElementCopies copies_;
    ElementPages elementPages_;
    ElementRewriter elements_;
    std::optional<ElementSelection> selection_;  // where not all pages are copied
};

}  // namespace quirebind
