// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Joining/ImportSession.h"

#include <utility>

#include "Platform/PDF/Articles/ArticleImport.h"
#include "Platform/PDF/Forms/FormImport.h"
#include "Platform/PDF/Layers/LayerImport.h"
#include "Platform/PDF/Structure/Marking.h"
#include "Platform/PDF/Structure/StructureImport.h"

namespace quirebind {

ImportSession::ImportSession(SourceDocument& source, OutputParts& output)
    : serial_(source.serial()),
      tree_(source.pageTree()),
      copier_(source.reader(), output.writer, output.sharedStreams, output.structureKeys,
              output.objectParts),
      pages_(source.pageTree(), copier_, output.pageEntries),
      copies_(copier_.map(), source.pageTree().pages().size()),
      names_(source.reader(), source.catalog()),
      destinations_(source.reader(), names_, copies_),
      annotations_(copier_, destinations_, copies_),
      actions_(copier_, destinations_, source.catalog()),
      additionalActions_(copier_),
      navigationNodes_(copier_),
      fields_(copier_, formChanges_),
      fieldNames_(copier_, formChanges_.names),
      scripts_(copier_.reader(), formChanges_.names),
      unlistedLayers_(copier_, output.layers),
      inserted_(source.pageTree().pages().size()),
      toInsert_(inserted_.size()) {
    setRewriters();
    output.writer.addSource(source.reader().image().size());
    output.writer.allowPacked(static_cast<double>(source.reader().table().storedBytes()));
    assignPages(source);
    addParts(source.catalog(), output);
    output.outputIntents.add(source.reader(), source.catalog());
    addStructure(source.catalog(), output);
}

void ImportSession::setRewriters() {
    copier_.setRewriter(Role::annotation, annotations_);
    copier_.setRewriter(Role::action, actions_);
    copier_.setRewriter(Role::additionalActions, additionalActions_);
    copier_.setRewriter(Role::navigationNode, navigationNodes_);
    copier_.setRewriter(Role::fieldNames, fieldNames_);
    copier_.setRewriter(Role::script, scripts_);
    copier_.setRewriter(Role::layer, unlistedLayers_);
}

/// Settles what references to pages become, and those to what no page needs.
void ImportSession::assignPages(const SourceDocument& source) {
    ReferenceMap& map = copier_.map();
    for (const std::uint32_t object : source.documentObjects()) map.assignNull(object);
    for (const PageTree::Node& node : source.pageTree().nodes()) map.assignNull(node.object);
    const std::vector<PageTree::Page>& pages = source.pageTree().pages();
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const std::uint32_t object = pages[i].object;
        // Nothing can refer to a page that is no object. One that the tree lists twice is two
        // pages; references lead to the first.
        if (object != 0 && !map.isAssigned(object)) map.assignPage(object, i);
    }
}

/// What pages share, but for the structure.
void ImportSession::addParts(const Catalog& catalog, OutputParts& output) {
    if (!catalog.find("OCProperties").isNull())
        parts_.push_back(std::make_unique<LayerImport>(copier_, catalog, output.layers));
    if (!catalog.find("Threads").isNull())
        parts_.push_back(std::make_unique<ArticleImport>(copier_, catalog, output.threads));
    if (!catalog.find("AcroForm").isNull()) {
        parts_.push_back(
            std::make_unique<FormImport>(copier_, copies_, catalog, output.forms, formChanges_));
        annotations_.setFieldRewriter(fields_);
        actions_.setForm(formChanges_);
    }
}

/// The last of the parts, since elements refer to what the others copy. What has lost its structure
/// is not tagged.
void ImportSession::addStructure(const Catalog& catalog, OutputParts& output) {
    Marking marking = readMarking(catalog, copier_.reader());
    if (!catalog.find("StructTreeRoot").isNull()) {
        auto structure = StructureImport::open(
            copier_, catalog, {.tree = tree_, .copies = copies_, .inserted = inserted_},
            marking.language, output.structure);
        if (structure)
            parts_.push_back(std::move(structure));
        else
            marking.isMarked = false;
    }
    output.marking.add(marking);
}

std::uint32_t ImportSession::insertPage(std::size_t index, std::uint32_t parent) {
    numberPackedPages(index);
    const std::uint32_t number = copies_.ofIndex(index);
    inserted_[index] = true;
    pages_.write(index, number, parent);
    copier_.copyPending(ObjectCopier::Damage::refused);
    if (--toInsert_ == 0) end();
    return number;
}

/// In a classic file the short numbers are best left to what many pages refer to. Packed references
/// take hardly any room, but a cross-reference stream takes less where objects of one kind follow
/// one another.
void ImportSession::numberPackedPages(std::size_t first) {
    const auto isPacked = [&](const PageTree::Page& page) {
        const ObjectTable& table = copier_.reader().table();
        return table.find(page.object).kind == ObjectLocation::Kind::inStream;
    };
    const std::vector<PageTree::Page>& pages = tree_.pages();
    if (copies_.isNumbered(first)) return;
    for (std::size_t i = first; i < pages.size() && isPacked(pages[i]); ++i)
        (void)copies_.ofIndex(i);
}

void ImportSession::end() {
    if (failure_) std::rethrow_exception(failure_);
    if (!std::exchange(open_, false)) return;
    copier_.map().bypassLostObjects();
    for (const auto& part : parts_) {
        part->finish();
        copier_.copyPending(ObjectCopier::Damage::bypassed);
    }
    unlistedLayers_.finish();
}

void ImportSession::sourceWillClose() noexcept {
    try {
        end();
    } catch (...) {  // for the next one who asks
        failure_ = std::current_exception();
    }
}

}  // namespace quirebind
