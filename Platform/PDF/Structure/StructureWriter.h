// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Copying/StructureKeys.h"
#include "Platform/PDF/Structure/ElementIDs.h"
#include "Platform/PDF/Structure/ParentTreeWriter.h"
#include "Platform/PDF/Structure/SharedNames.h"
#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// Joins the logical structures of the sources below one root (ISO 32000-2, 14.7.2, table 354):
///
///     << /Type /StructTreeRoot
///        /K [top elements of the first source, of the second ...]
///        /ParentTree ... /ParentTreeNextKey n
///        /IDTree ... /RoleMap << ... >> /ClassMap << ... >> /Namespaces [...]
///        /PronunciationLexicon [...] /AF [...] >>
class StructureWriter {
 public:
    /// The number of the root.
    [[nodiscard]] std::uint32_t root(DocumentWriter& writer);

    /// Opens a place for the top elements of another source; gives how many sources there are.
    [[nodiscard]] std::size_t addSource();
    /// Sets the top elements of that source: references.
    void setTopElements(std::size_t source, std::string references) {
        topElements_[source - 1] = std::move(references);
    }

    /// The namespace of the output that `text`, which refers to nothing, describes; nothing yet
    /// where no source had it.
    [[nodiscard]] std::optional<std::uint32_t> namespaceLike(std::string_view text) const;
    /// Adds a namespace; `text` is empty where it refers to others and so is like none.
    void addNamespace(std::uint32_t number, std::string_view text);

    /// Adds a file that is about all of a source's structure: object `number` of the output, which
    /// is under /PronunciationLexicon.
    void addLexicon(std::uint32_t number) { lexicons_.push_back(number); }
    /// The same for one that is under /AF.
    void addAssociatedFile(std::uint32_t number) { associatedFiles_.push_back(number); }

    /// What the sources share, and `finish` writes. The identifiers of elements.
    [[nodiscard]] ElementIDs& ids() { return ids_; }
    /// Types, which are defined by other types.
    [[nodiscard]] SharedNames& types() { return types_; }
    /// Classes, which are defined by attributes.
    [[nodiscard]] SharedNames& classes() { return classes_; }
    /// The parent tree, by the keys of all sources.
    [[nodiscard]] ParentTreeWriter& parentTree() { return parentTree_; }

    /// Writes the root, and what stands below it but the elements; gives its number, nothing where
    /// no source has structure.
    [[nodiscard]] std::optional<std::uint32_t> finish(DocumentWriter& writer,
                                                      const StructureKeyCounter& keys);

 private:
    [[nodiscard]] bool isEmpty() const;
    void appendTopElements(ByteBuffer& out) const;

    std::uint32_t root_ = 0;
    std::vector<std::string> topElements_;  // by source
    std::vector<std::uint32_t> namespaces_;
    std::vector<std::uint32_t> lexicons_;
    std::vector<std::uint32_t> associatedFiles_;
    std::map<std::string, std::uint32_t, std::less<>> namespacesByText_;
    ElementIDs ids_;
    SharedNames types_;
    SharedNames classes_;
    ParentTreeWriter parentTree_;
};

}  // namespace quirebind
