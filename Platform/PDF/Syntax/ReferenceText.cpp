// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {

std::string referenceText(std::uint32_t number) {
    return referenceText(Reference{.number = number});
}

std::string referenceText(Reference reference) {
    return std::to_string(reference.number) + " " + std::to_string(reference.generation) + " R";
}

void appendReference(std::uint32_t number, ByteBuffer& out) {
    out.append(std::uint64_t{number});
    out.append(" 0 R");
}

void appendReferences(std::span<const std::uint32_t> numbers, ByteBuffer& out) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i != 0) out.append(" ");
        appendReference(numbers[i], out);
    }
}

void appendReferenceEntry(std::string_view key, std::optional<std::uint32_t> number,
                          ByteBuffer& out) {
    if (!number) return;
    out.append(key);
    out.append(" ");
    appendReference(*number, out);
}

void appendReferencesEntry(std::string_view key, std::span<const std::uint32_t> numbers,
                           ByteBuffer& out) {
    if (numbers.empty()) return;
    out.append(key);
    out.append("[");
    appendReferences(numbers, out);
    out.append("]");
}

}  // namespace quirebind
