// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/AttributeRewriter.h"

#include <string>

#include "Platform/PDF/Guards/DepthGuard.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/PDFString.h"

namespace quirebind {

void AttributeRewriter::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    if (value.isArray()) {
        ArrayReader elements(value);
        while (const auto element = elements.next()) rewriteElement(*element, text, out);
    } else {
        rewriteElement(value, text, out);
    }
    text.copyTo(text.endOf(value), Role::structureAttributes, out);
}

void AttributeRewriter::rewriteElement(Value value, MappedText& text, ByteBuffer& out) {
    if (value.isDictionary()) {
        text.copyTo(text.beginOf(value), Role::structureAttributes, out);
        rewriteAttributes(value, text, out);
    } else if (isString(value)) {
        const std::string id = stringBytes(value);
        const std::string changed = ids_.idFor(id);
        if (changed == id) return;
        text.copyTo(text.beginOf(value), Role::structureAttributes, out);
        text.skipTo(text.endOf(value));
        appendLiteralString(changed, out);
    }
}

void AttributeRewriter::rewriteAttributes(Value attributes, MappedText& text, ByteBuffer& out) {
    const bool isTable = copier_.reader().resolveIfSound(attributes.find("O")).isName("Table");
    EntryRewriter entries(attributes, text, out);
    const bool isRead = isTable && depth_ < limits::kNestedAttributes;
    const DepthGuard guard(depth_);
    while (const auto* const entry = isRead ? entries.next() : nullptr)
        if (entry->key.isName("Headers"))
            copier_.copyAs(Role::structureAttributes, entry->value, text, out);
    entries.finish();
}

}  // namespace quirebind
