// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/FieldRewriter.h"

#include <cstddef>
#include <vector>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/PDFString.h"

namespace quirebind {

FormChanges::Field FieldRewriter::changesOf(std::uint32_t number, Value annotation) {
    const auto found = changes_.fields.find(number);
    if (found != changes_.fields.end()) return found->second;
    FormChanges::Field change;
    change.taken = changes_.defaults.takenByStray(annotation, reader_);
    return change;
}

void FieldRewriter::begin(const FormChanges::Field& change, Value field, MappedText& text,
                          ByteBuffer& out) {
    if (!change.taken.appearance && !change.taken.quadding) return;
    constexpr std::string_view kBracket = "<<";
    text.copyTo(text.beginOf(field) + kBracket.size(), Role::plain, out);
    changes_.defaults.append(change.taken, out);
}

bool FieldRewriter::rewriteEntry(FormChanges::Field& change, Value field,
                                 const DictionaryEntry& entry, EntryRewriter& entries) {
    const Value key = entry.key;
    if (key.isName("T")) return change.isRenamed && rename(entry.value, entries);
    if (key.isName("Kids") && !change.kids.empty()) {
        // Without kids it is what it would be had it never had any: a field with its own widget.
        if (change.kids == "[]")
            entries.drop();
        else
            copier_.appendValue(Value(change.kids), Role::annotation, entries.replace());
        return true;
    }
    // An entry that means null stands in the way of the one that takes its place.
    const bool isReplaced = (key.isName("DA") && change.taken.appearance) ||
                            (key.isName("Q") && change.taken.quadding) ||
                            (key.isName("V") && holdsSignature(change, field));
    if (isReplaced) {
        entries.drop();
        return true;
    }
    return key.isName("DA") && !changes_.resources.empty() &&
           rewriteAppearance(entry.value, entries);
}

bool FieldRewriter::rename(Value name, EntryRewriter& entries) {
    const auto renamed = changes_.names.renamed(stringBytes(reader_.resolve(name)));
    if (!renamed) return false;
    room_.spend(renamed->size());
    appendLiteralString(*renamed, entries.replace());
    return true;
}

bool FieldRewriter::rewriteAppearance(Value appearance, EntryRewriter& entries) {
    const auto renamed =
        renameResources(stringBytes(reader_.resolve(appearance)), changes_.resources);
    if (!renamed) return false;
    room_.spend(renamed->size());
    appendLiteralString(*renamed, entries.replace());
    return true;
}

bool FieldRewriter::holdsSignature(FormChanges::Field& change, Value field) {
    if (!change.holdsSignature) change.holdsSignature = isSigned(field);
    return *change.holdsSignature;
}

/// The type of a field is inherited (table 226). What is no field of a known type holds one where
/// the value says which bytes were signed.
bool FieldRewriter::isSigned(Value field) {
    if (const auto type = inheritedType(field)) return *type == Type::signature;
    return !reader_.resolve(reader_.resolve(field.find("V")).find("ByteRange")).isNull();
}

/// Many fields have the same parent, and that may be large.
std::optional<FieldRewriter::Type> FieldRewriter::inheritedType(Value field) {
    std::vector<std::uint32_t> parents;
    std::optional<Type> found;
    Value node = field;
    for (int i = 0; i < limits::kFieldParents && node.isDictionary(); ++i) {
        const Value type = reader_.resolve(node.find("FT"));
        if (!type.isNull()) {
            found = type.isName("Sig") ? Type::signature : Type::other;
            break;
        }
        const Value parent = node.find("Parent");
        if (const auto reference = parent.reference()) {
            if (const auto known = types_.find(reference->number); known != types_.end()) {
                found = known->second;
                break;
            }
            parents.push_back(reference->number);
        }
        node = reader_.resolve(parent);
    }
    for (const std::uint32_t parent : parents) types_.emplace(parent, found);
    return found;
}

}  // namespace quirebind
