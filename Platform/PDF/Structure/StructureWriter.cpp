// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/StructureWriter.h"

#include <algorithm>

#include "Platform/PDF/Syntax/PDFName.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

enum class Kind : std::uint8_t { names, texts };

/// Appends the dictionary of all names that have a definition, where there are any.
void appendDefinitions(std::string_view key, const SharedNames& names, Kind kind, ByteBuffer& out) {
    const std::size_t before = out.size();
    out.append(key);
    out.append("<<");
    const std::size_t empty = out.size();
    for (const auto& [name, definition] : names.definitions()) {
        if (definition.empty()) continue;
        appendName(name, out);
        if (kind == Kind::names) {
            appendName(definition, out);
        } else {
            out.append(" ");
            out.append(definition);
        }
    }
    if (out.size() == empty)
        out.shrink(before);
    else
        out.append(">>");
}

}  // namespace

std::uint32_t StructureWriter::root(DocumentWriter& writer) {
    if (root_ == 0) root_ = writer.reserve();
    return root_;
}

std::size_t StructureWriter::addSource() {
    topElements_.emplace_back();
    return topElements_.size();
}

std::optional<std::uint32_t> StructureWriter::namespaceLike(std::string_view text) const {
    const auto found = namespacesByText_.find(text);
    if (found == namespacesByText_.end()) return std::nullopt;
    return found->second;
}

void StructureWriter::addNamespace(std::uint32_t number, std::string_view text) {
    namespaces_.push_back(number);
    if (!text.empty()) namespacesByText_.emplace(text, number);
}

bool StructureWriter::isEmpty() const {
    return parentTree_.isEmpty() && std::ranges::all_of(topElements_, &std::string::empty);
}

std::optional<std::uint32_t> StructureWriter::finish(DocumentWriter& writer,
                                                     const StructureKeyCounter& keys) {
    if (isEmpty()) return std::nullopt;
    const auto parentTree = parentTree_.write(writer);
    const auto idTree = ids_.write(writer);
    ByteBuffer& out = writer.beginObject(root(writer), writer.packs());
    out.append("<</Type/StructTreeRoot");
    appendTopElements(out);
    appendReferenceEntry("/ParentTree", parentTree, out);
    out.append("/ParentTreeNextKey ");
    out.append(std::uint64_t{keys.count()});
    appendReferenceEntry("/IDTree", idTree, out);
    appendDefinitions("/RoleMap", types_, Kind::names, out);
    appendDefinitions("/ClassMap", classes_, Kind::texts, out);
    appendReferencesEntry("/Namespaces", namespaces_, out);
    appendReferencesEntry("/PronunciationLexicon", lexicons_, out);
    appendReferencesEntry("/AF", associatedFiles_, out);
    out.append(">>");
    writer.endObject();
    return root_;
}

void StructureWriter::appendTopElements(ByteBuffer& out) const {
    out.append("/K[");
    for (const std::string& references : topElements_) {
        out.append(references);
        out.append(" ");
    }
    out.append("]");
}

}  // namespace quirebind
