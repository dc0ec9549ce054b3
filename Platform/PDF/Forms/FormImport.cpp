// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/FormImport.h"

#include <cstddef>
#include <map>
#include <utility>

#include "Platform/PDF/Forms/RootName.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/PDFString.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

struct NamedEntry {
    std::string name;  ///< The key's.
    DictionaryEntry entry;
};

/// The entries of a dictionary in their order. Of repeated keys the last counts.
std::vector<NamedEntry> namedEntries(Value dictionary) {
    std::vector<NamedEntry> named;
    std::map<std::string, std::size_t> places;
    DictionaryReader entries(dictionary);
    while (const auto entry = entries.next()) {
        std::string name = entry->key.name();
        const auto [place, isNew] = places.try_emplace(name, named.size());
        if (isNew)
            named.push_back({std::move(name), *entry});
        else if (!entry->value.text().empty())
            named[place->second].entry = *entry;
    }
    return named;
}

}  // namespace

FormImport::FormImport(ObjectCopier& copier, const PageCopies& pages, const Catalog& catalog,
                       FormWriter& writer, FormChanges& changes)
    : copier_(copier), pages_(pages), writer_(writer), changes_(changes) {
    attempt(copier_.reader(),
            [&] { form_ = copier_.reader().resolve(catalog.find("AcroForm")).text(); });
    attempt(copier_.reader(), [&] { readResources(); });
    attempt(copier_.reader(), [&] { readDefaults(); });
    attempt(copier_.reader(), [&] { readRoots(); });
    std::vector<std::string> names;
    names.reserve(names_.size());
    for (const Name& name : names_) names.push_back(name.root);
    changes_.names = writer_.names().claim(names);
    for (const Name& name : names_)
        if (changes_.names.contains(name.root)) changes_.fields[name.field].isRenamed = true;
}

void FormImport::readResources() {
    ObjectReader& reader = copier_.reader();
    ResourceDigests digests(reader, writer_.resources().hash());
    WorkBudget room(limits::kFormResources);
    const Value resources = reader.resolve(entry("DR"));
    if (resources.text().size() > limits::kFormResources)
        throw DamagedDocument("a form with too many resources");
    for (const NamedEntry& category : namedEntries(resources)) {
        if (room.left() == 0) break;
        // What is no dictionary is the list of procedure sets, which nobody needs any more.
        attempt(copier_.reader(), [&] {
            readCategory(category.name, reader.resolve(category.entry.value), digests, room);
        });
    }
}

void FormImport::readCategory(const std::string& category, Value resources,
                              ResourceDigests& digests, WorkBudget& room) {
    ObjectReader& reader = copier_.reader();
    room.spend(resources.text().size());
    for (const auto& resource : namedEntries(resources)) {
        attempt(copier_.reader(), [&] {
            const DictionaryEntry& entry = resource.entry;
            auto digest = digests.of(entry.value);
            const bool isAbsent =
                digest ? ResourceDigests::isOfNothing(*digest) : reader.isAbsent(entry.value);
            if (isAbsent) return;
            const std::string_view spelling = entry.key.text();
            const FormResources::Claim claim =
                writer_.resources().claim({.category = category,
                                           .name = resource.name,
                                           .spelling = std::string(spelling),
                                           .digest = std::move(digest)});
            if (claim.spelling != spelling)
                changes_.resources[category][resource.name] = claim.spelling;
            if (claim.isNew)
                resources_.push_back({category, claim.spelling, std::string(entry.value.text())});
        });
    }
}

void FormImport::readDefaults() {
    ObjectReader& reader = copier_.reader();
    const auto number = reader.resolve(entry("Q")).integer();
    if (number == 1 || number == 2) changes_.defaults.setQuadding(std::to_string(*number));
    const Value appearance = reader.resolve(entry("DA"));
    if (!isString(appearance)) return;
    const std::string bytes = stringBytes(appearance);
    const std::string renamed = renameResources(bytes, changes_.resources).value_or(bytes);
    if (renamed.empty()) return;
    std::string text;
    appendLiteralString(renamed, text);
    if (text.size() > limits::kDefaultAppearance) {
        longAppearance_ = {.number = copier_.writer().reserve(), .text = std::move(text)};
        text = " " + referenceText(longAppearance_.number);
    }
    changes_.defaults.setAppearance(std::move(text));
}

void FormImport::readRoots() {
    const FieldTree::Visitor visitor{
        .root = [this](std::uint32_t number, Value field) { takeDefaults(number, field); },
        .firstName =
            [this](std::uint32_t number, const std::string& name) {
                if (name.size() > limits::kFieldName) return;
                names_.push_back({number, std::string(rootName(name))});
            },
        .kids = [this](std::uint32_t number,
                       std::string kids) { changes_.fields[number].kids = std::move(kids); }};
    // What is read on the way makes room for what comes.
    const std::string fields(copier_.reader().resolve(entry("Fields")).text());
    roots_ = FieldTree(copier_, visitor).walk(Value(fields));
}

void FormImport::takeDefaults(std::uint32_t number, Value field) {
    const FormDefaults::Taken taken = changes_.defaults.takenByRoot(field, copier_.reader());
    if (taken.appearance || taken.quadding) changes_.fields[number].taken = taken;
}

void FormImport::finish() {
    FormFields fields;
    for (const FieldTree::Root& root : roots_)
        attempt(copier_.reader(), [&] { addRoot(root, fields); });
    copier_.copyPending(ObjectCopier::Damage::bypassed);
    attempt(copier_.reader(), [&] { addCalculationOrder(fields); });
    attempt(copier_.reader(), [&] {
        const Value needed = copier_.reader().resolve(entry("NeedAppearances"));
        fields.needsAppearances = needed.boolean().value_or(false);
    });
    for (const Resource& resource : resources_)
        attempt(copier_.reader(), [&] { addResource(resource); });
    addRootList(fields);
    if (longAppearance_.number != 0) writeObject(longAppearance_.number, longAppearance_.text);
    writer_.add(fields);
}

void FormImport::addRoot(const FieldTree::Root& root, FormFields& fields) {
    if (!FieldTree::isDirect(root.number)) {
        const Reference reference = Value(root.text).reference().value_or(Reference());
        if (const auto copy = copier_.map().map(reference, Role::annotation))
            fields.roots.push_back(*copy);
        return;
    }
    ByteBuffer text;
    FoundParts parts;
    (void)scanValue(root.text, 0, &parts);  // its extent is known already
    MappedText mapped(root.text, parts, copier_.map(), root.number);
    copier_.copyAs(Role::annotation, Value(root.text), mapped, text);
    const std::uint32_t number = copier_.writer().reserve();
    writeObject(number, text.text());
    fields.roots.push_back(number);
}

void FormImport::writeObject(std::uint32_t number, std::string_view text) {
    DocumentWriter& writer = copier_.writer();
    writer.beginObject(number, writer.packs()).append(text);
    writer.endObject();
}

void FormImport::addRootList(const FormFields& fields) {
    if (changes_.rootList == 0) return;
    ByteBuffer list;
    list.append("[");
    appendReferences(fields.roots, list);
    list.append("]");
    writeObject(changes_.rootList, list.text());
}

/// What is calculated and no field any more is left out.
void FormImport::addCalculationOrder(FormFields& fields) {
    ArrayReader elements(copier_.reader().resolve(entry("CO")));
    while (const auto element = elements.next()) {
        const auto reference = element->reference();
        if (!reference || pages_.indexOf(reference->number)) continue;
        if (const auto copy = copier_.map().find(reference->number))
            fields.calculated.push_back(*copy);
    }
}

void FormImport::addResource(const Resource& resource) {
    ByteBuffer text;
    copier_.appendValue(Value(resource.value), Role::plain, text);
    writer_.resources().add(resource.category, resource.spelling, text.text());
}

}  // namespace quirebind
