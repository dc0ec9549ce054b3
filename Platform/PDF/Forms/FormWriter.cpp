// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/FormWriter.h"

#include <string_view>

#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

void extend(std::vector<std::uint32_t>& all, const std::vector<std::uint32_t>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

}  // namespace

void FormWriter::add(const FormFields& fields) {
    extend(joined_.roots, fields.roots);
    extend(joined_.calculated, fields.calculated);
    joined_.needsAppearances = joined_.needsAppearances || fields.needsAppearances;
}

std::optional<std::uint32_t> FormWriter::finish(DocumentWriter& writer) const {
    if (joined_.roots.empty() && resources_.empty()) return std::nullopt;
    const std::uint32_t number = writer.reserve();
    ByteBuffer& out = writer.beginObject(number, writer.packs());
    out.append("<<");
    out.append("/Fields[");
    appendReferences(joined_.roots, out);
    out.append("]");
    appendReferencesEntry("/CO", joined_.calculated, out);
    if (!resources_.empty()) {
        out.append("/DR");
        resources_.write(out);
    }
    if (joined_.needsAppearances) out.append("/NeedAppearances true");
    out.append(">>");
    writer.endObject();
    return number;
}

}  // namespace quirebind
