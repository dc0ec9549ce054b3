// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/Marking.h"

#include "Platform/PDF/PDFString.h"

namespace quirebind {

Marking readMarking(const Catalog& catalog, ObjectReader& reader) {
    const Value info = reader.resolveIfSound(catalog.find("MarkInfo"));
    const auto says = [&](std::string_view key) {
        return reader.resolveIfSound(info.find(key)).boolean().value_or(false);
    };
    return {.isMarked = says("Marked"),
            .hasUserProperties = says("UserProperties"),
            .isSuspect = says("Suspects"),
            .language = stringBytes(reader.resolveIfSound(catalog.find("Lang")))};
}

void MarkingWriter::add(const Marking& marking) {
    if (isEmpty_) {
        joined_ = marking;
        isEmpty_ = false;
        return;
    }
    joined_.isMarked = joined_.isMarked && marking.isMarked;
    joined_.hasUserProperties = joined_.hasUserProperties || marking.hasUserProperties;
    joined_.isSuspect = joined_.isSuspect || marking.isSuspect;
    if (joined_.language != marking.language) joined_.language.clear();
}

void MarkingWriter::append(ByteBuffer& out) const {
    if (joined_.isMarked || joined_.hasUserProperties || joined_.isSuspect) {
        out.append("/MarkInfo<<");
        if (joined_.isMarked) out.append("/Marked true");
        if (joined_.hasUserProperties) out.append("/UserProperties true");
        if (joined_.isSuspect) out.append("/Suspects true");
        out.append(">>");
    }
    if (joined_.language.empty()) return;
    out.append("/Lang");
    appendLiteralString(joined_.language, out);
}

}  // namespace quirebind
