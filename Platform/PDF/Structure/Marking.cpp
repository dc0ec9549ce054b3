// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/Marking.h"

#include <algorithm>
#include <string_view>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/PDFString.h"
#include "Platform/PDF/Syntax/TextString.h"

namespace quirebind {

namespace {

/// Language tags are the same in upper and lower case (RFC 5646, 2.1.1).
bool isSameLanguage(std::string_view one, std::string_view other) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::ranges::equal(textOf(one), textOf(other), {}, lower, lower);
}

}  // namespace

Marking readMarking(const Catalog& catalog, ObjectReader& reader) {
    const Value info = reader.resolveIfSound(catalog.find("MarkInfo"));
    const auto says = [&](std::string_view key) {
        return reader.resolveIfSound(info.find(key)).boolean().value_or(false);
    };
    const Value language = reader.resolveIfSound(catalog.find("Lang"));
    const bool isUsable = language.text().size() <= limits::kLanguage;
    return {.isMarked = says("Marked"),
            .hasUserProperties = says("UserProperties"),
            .isSuspect = says("Suspects"),
            .language = isUsable ? stringBytes(language) : std::string()};
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
    if (!isSameLanguage(joined_.language, marking.language)) joined_.language.clear();
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
