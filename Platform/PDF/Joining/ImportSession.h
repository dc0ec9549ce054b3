// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <vector>

#include "Platform/PDF/Actions/ActionRewriter.h"
#include "Platform/PDF/Actions/AdditionalActionsRewriter.h"
#include "Platform/PDF/Actions/NavigationNodeRewriter.h"
#include "Platform/PDF/Annotations/AnnotationRewriter.h"
#include "Platform/PDF/Copying/DocumentPart.h"
#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Forms/FieldNamesRewriter.h"
#include "Platform/PDF/Forms/FieldRewriter.h"
#include "Platform/PDF/Forms/FormChanges.h"
#include "Platform/PDF/Forms/ScriptRewriter.h"
#include "Platform/PDF/Joining/OutputParts.h"
#include "Platform/PDF/Joining/PageRewriter.h"
#include "Platform/PDF/Layers/UnlistedLayers.h"
#include "Platform/PDF/Links/Destinations.h"
#include "Platform/PDF/Links/NamedDestinations.h"
#include "Platform/PDF/Links/PageCopies.h"
#include "Platform/PDF/Reading/Catalog.h"
#include "Platform/PDF/Reading/SourceDocument.h"

namespace quirebind {

/// The import of one source's pages into one output, each at most once. All pages are known before
/// anything is copied, so that every reference to a page of the source finds the number of that
/// page's copy, also when it is copied later; and when it never is, the reference means null. Nodes
/// of the page tree and what else stands for the source as a whole become null, so that no page
/// brings the document along.
///
/// When the last page is inserted, the source closes or the output is completed, what the pages
/// share is added to the output and the session ends.
class ImportSession : public SourceObserver {
 public:
    /// Both must live as long as the session is open.
    ImportSession(SourceDocument& source, OutputParts& output);

    /// The serial number of the source, by which sessions are told apart.
    [[nodiscard]] std::uint64_t serial() const { return serial_; }
    /// Whether pages can still be inserted.
    [[nodiscard]] bool isOpen() const { return open_; }
    /// Whether page `index`, which counts from 0, was inserted.
    [[nodiscard]] bool hasInserted(std::size_t index) const { return inserted_[index]; }
    /// Whether any page was.
    [[nodiscard]] bool hasInsertedAny() const { return toInsert_ != inserted_.size(); }

    /// Copies page `index` and everything it needs, below the page-tree node `parent`; gives the
    /// number of the new page. Throws DamagedDocument where the source is damaged.
    [[nodiscard]] std::uint32_t insertPage(std::size_t index, std::uint32_t parent);

    /// Ends the session unless it has ended. Throws DamagedDocument where the source is damaged,
    /// also if that came out when the source closed.
    void end();

    void sourceWillClose() noexcept override;

 private:
    void numberPackedPages(std::size_t first);
    void setRewriters();
    void assignPages(const SourceDocument& source);
    void addParts(const Catalog& catalog, OutputParts& output);
    void addStructure(const Catalog& catalog, OutputParts& output);

    std::uint64_t serial_;
    const PageTree& tree_;
    bool open_ = true;
    std::exception_ptr failure_;
    ObjectCopier copier_;
    PageRewriter pages_;
    PageCopies copies_;
    NamedDestinations names_;
    Destinations destinations_;
    AnnotationRewriter annotations_;
    ActionRewriter actions_;
    AdditionalActionsRewriter additionalActions_;
    NavigationNodeRewriter navigationNodes_;
    FormChanges formChanges_;
    FieldRewriter fields_;
    FieldNamesRewriter fieldNames_;
    ScriptRewriter scripts_;
    UnlistedLayers unlistedLayers_;
    std::vector<std::unique_ptr<DocumentPart>> parts_;
    std::vector<bool> inserted_;
    std::size_t toInsert_;
};

}  // namespace quirebind
