// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/FieldTree.h"

#include <algorithm>
#include <utility>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/PDFString.h"
#include "Platform/PDF/Syntax/TextString.h"

namespace quirebind {
namespace {

constexpr std::uint32_t kFirstDirect = limits::kObjectNumber + 1;

}  // namespace

bool FieldTree::isDirect(std::uint32_t number) {
    return number >= kFirstDirect;
}

/// 1. What /Fields lists is collected.
/// 2. From those without a parent the trees are walked.
/// 3. Those with a parent that were not reached are roots, too.
std::vector<FieldTree::Root> FieldTree::walk(Value fields) {
    std::vector<Root> listed = collect(fields);
    std::vector<bool> isRoot(listed.size());
    for (const bool withParent : {false, true}) {
        for (std::size_t i = 0; i < listed.size(); ++i) {
            if (isRoot[i] || isReached(listed[i].number)) continue;
            copier_.reader().trim();
            attempt(copier_.reader(), [&] { isRoot[i] = visitRoot(listed[i], withParent); });
            walkPending();
        }
    }
    std::vector<Root> roots;
    for (std::size_t i = 0; i < listed.size(); ++i)
        if (isRoot[i]) roots.push_back(std::move(listed[i]));
    return roots;
}

std::vector<FieldTree::Root> FieldTree::collect(Value fields) {
    std::vector<Root> listed;
    ArrayReader elements(fields);
    while (const auto element = elements.next()) {
        const auto reference = element->reference();
        if (reference ? !mark(reference->number, kListed) : !element->isDictionary()) continue;
        const auto direct = static_cast<std::uint32_t>(kFirstDirect + listed.size());
        listed.push_back({reference ? reference->number : direct, std::string(element->text())});
    }
    return listed;
}

bool FieldTree::visitRoot(const Root& root, bool withParent) {
    const auto reference = Value(root.text).reference();
    const Value field = reference ? fieldAt(*reference) : Value(root.text);
    if (!field.isDictionary()) return false;
    const Entries entries = entriesOf(field);
    if (copier_.reader().resolve(entries.parent).isDictionary() != withParent) return false;
    if (reference) mark(root.number, kReached);
    visitor_.root(root.number, field);
    visit(root.number, entries, {});
    return true;
}

void FieldTree::walkPending() {
    while (!pending_.empty()) {
        const Node node = pending_.back();
        pending_.pop_back();
        copier_.reader().trim();
        attempt(copier_.reader(),
                [&] { visit(node.field.number, entriesOf(fieldAt(node.field)), node); });
    }
}

FieldTree::Entries FieldTree::entriesOf(Value field) {
    Entries entries;
    DictionaryReader reader(field);
    while (const auto entry = reader.next()) {
        if (entry->key.isName("T")) takeLast(entries.name, entry->value);
        if (entry->key.isName("Kids")) takeLast(entries.kids, entry->value);
        if (entry->key.isName("Parent")) takeLast(entries.parent, entry->value);
    }
    return entries;
}

void FieldTree::visit(std::uint32_t number, const Entries& entries, Node node) {
    if (!node.hasName) {
        const std::string name = textOf(stringBytes(copier_.reader().resolve(entries.name)));
        if (!name.empty()) visitor_.firstName(number, name);
        node.hasName = !name.empty();
    }
    if (!entries.kids.isNull()) visitKids(number, entries.kids, node);
}

void FieldTree::visitKids(std::uint32_t number, Value kids, const Node& node) {
    const auto array = kids.reference();
    bool isWhole = !array || mark(array->number, kArray);
    const Value resolved = isWhole ? copier_.reader().resolve(kids) : Value();
    if (isWhole && !resolved.isArray()) return;
    std::string kept = "[";
    const std::size_t before = pending_.size();
    ArrayReader elements(resolved);
    while (const auto kid = elements.next()) {
        const auto reference = kid->reference();
        const bool isKept = reference ? isNewKid(*reference, node.depth + 1) : kid->isDictionary();
        isWhole = isWhole && isKept;
        if (!isKept) continue;
        kept.append(kid->text()).append(" ");
        if (reference) pending_.push_back({*reference, node.depth + 1, node.hasName});
    }
    std::reverse(pending_.begin() + static_cast<std::ptrdiff_t>(before), pending_.end());
    if (!isWhole) visitor_.kids(number, kept + "]");
}

bool FieldTree::isNewKid(Reference kid, std::size_t depth) {
    return depth < limits::kFieldTreeDepth && mark(kid.number, kReached) &&
           fieldAt(kid).isDictionary();
}

bool FieldTree::isReached(std::uint32_t number) const {
    return !isDirect(number) && (marks_.get(number) & kReached) != 0;
}

bool FieldTree::mark(std::uint32_t number, std::uint8_t mark) {
    std::uint8_t& marks = marks_.at(number);
    const bool isNew = (marks & mark) == 0;
    marks = static_cast<std::uint8_t>(marks | mark);
    return isNew;
}

Value FieldTree::fieldAt(Reference reference) {
    ObjectReader& reader = copier_.reader();
    Value field;
    attempt(reader, [&] {
        if (copier_.map().isAssigned(reference.number) || !reader.exists(reference)) return;
        const SourceObject object = reader.read(reference.number);
        if (!object.isStream && object.value.isDictionary()) field = object.value;
    });
    return field;
}

}  // namespace quirebind
