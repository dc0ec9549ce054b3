// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/StructureImport.h"

#include <set>
#include <utility>

#include "Platform/PDF/Structure/ParentTreeImport.h"

namespace quirebind {

std::unique_ptr<StructureImport> StructureImport::open(ObjectCopier& copier, const Catalog& catalog,
                                                       Pages pages, std::string language,
                                                       StructureWriter& writer) {
    const Value root = catalog.find("StructTreeRoot");
    if (!copier.reader().resolveIfSound(root).isDictionary()) return nullptr;
    return std::make_unique<StructureImport>(copier, root, pages, std::move(language), writer);
}

StructureImport::StructureImport(ObjectCopier& copier, Value root, Pages pages,
                                 std::string language, StructureWriter& writer)
    : copier_(copier),
      root_(root),
      writer_(writer),
      outputRoot_(writer.root(copier.writer())),
      source_(writer.addSource()),
      ids_(writer.ids(), source_),
      types_(writer.types(), source_),
      classes_(writer.classes(), source_, copier),
      attributes_(copier, ids_),
      items_(copier.reader(), copier.map(), pages.copies, pages.inserted),
      copies_(copier),
      elementPages_(copier.reader(), pages.tree, pages.copies, root),
      elements_({.copier = copier,
                 .copies = copies_,
                 .items = items_,
                 .pages = elementPages_,
                 .types = types_,
                 .classes = classes_,
                 .ids = ids_,
                 .root = outputRoot_,
                 .language = std::move(language)}) {
    if (const auto reference = root.reference())
        copier.map().assign(reference->number, outputRoot_);
    copier.setRewriter(Role::structureElement, elements_);
    copier.setRewriter(Role::structureAttributes, attributes_);
}

void StructureImport::finish() {
    ObjectReader& reader = copier_.reader();
    items_.noteInsertion();
    if (!items_.areAllPagesCopied()) select();
    Value root = reader.resolveIfSound(root_);
    types_.read(reader.resolveIfSound(root.find("RoleMap")), reader);
    classes_.read(reader.resolveIfSound(root.find("ClassMap")));
    readNamespaces(root.find("Namespaces"));
    std::string topElements = elements_.topElements(root);
    if (!topElements.empty()) addFiles(root);
    writer_.setTopElements(source_, std::move(topElements));
    copyElements();

    // This comes last: it may tell of elements that are not in the tree.
    root = reader.resolveIfSound(root_);
    ParentTreeImport(copier_, copies_, writer_.parentTree()).run(root.find("ParentTree"));
    copyElements();
}

/// How words are said, and what belongs to the structure as a whole (table 354).
void StructureImport::addFiles(Value root) {
    for (const std::uint32_t file : copiesOf(root.find("PronunciationLexicon")))
        writer_.addLexicon(file);
    for (const std::uint32_t file : copiesOf(root.find("AF"))) writer_.addAssociatedFile(file);
}

/// The copies of file specifications, each once. One that is no object becomes one.
std::vector<std::uint32_t> StructureImport::copiesOf(Value files) {
    std::vector<std::uint32_t> copies;
    std::set<std::uint32_t> met;
    DocumentWriter& writer = copier_.writer();
    ArrayReader elements(copier_.reader().resolveIfSound(files));
    while (const auto element = elements.next()) {
        if (const auto reference = element->reference()) {
            const auto copy = copier_.map().map(*reference, Role::plain);
            if (copy && met.insert(*copy).second) copies.push_back(*copy);
        } else if (element->isDictionary()) {
            copies.push_back(writer.reserve());
            copier_.appendValue(*element, Role::plain,
                                writer.beginObject(copies.back(), writer.packs()));
            writer.endObject();
        }
    }
    return copies;
}

/// Copying may trim, so that no text of the source is held while it goes on.
void StructureImport::copyElements() {
    do {
        copier_.copyPending(ObjectCopier::Damage::bypassed);
    } while (elements_.writeDirect() || (!selection_ && copies_.copyWaiting(outputRoot_)));
}

void StructureImport::select() {
    selection_.emplace(copier_.reader(), items_);
    selection_->run(copier_.reader().resolveIfSound(root_));
    copies_.restrictTo(*selection_);
    elements_.restrictTo(*selection_);
}

/// Namespaces (14.7.4): those that are the same in every respect are shared.
void StructureImport::readNamespaces(Value namespaces) {
    ObjectReader& reader = copier_.reader();
    ReferenceMap& map = copier_.map();
    ArrayReader elements(reader.resolveIfSound(namespaces));
    while (const auto element = elements.next()) {
        const auto reference = element->reference();
        if (!reference || map.isAssigned(reference->number)) continue;
        const Value space = reader.resolveIfSound(*element);
        if (!space.isDictionary()) continue;
        FoundParts parts;
        (void)scanValue(space.text(), 0, &parts);  // its extent is known already
        const std::string_view text =
            parts.references().empty() ? space.text() : std::string_view();
        if (const auto known = text.empty() ? std::nullopt : writer_.namespaceLike(text))
            map.assign(reference->number, *known);
        else if (const auto copy = map.map(*reference, Role::plain))
            writer_.addNamespace(*copy, text);
    }
}

}  // namespace quirebind
