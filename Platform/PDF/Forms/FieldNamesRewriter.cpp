// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/FieldNamesRewriter.h"

#include "Platform/PDF/Syntax/PDFString.h"

namespace quirebind {

/// Arrays in an array mean nothing.
void FieldNamesRewriter::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    ArrayReader elements(value);
    while (const auto element = elements.next()) rewriteField(*element, text, out);
    rewriteField(value, text, out);
    text.copyTo(text.endOf(value), Role::fieldNames, out);
}

void FieldNamesRewriter::rewriteField(Value field, MappedText& text, ByteBuffer& out) {
    if (field.isDictionary()) {
        text.copyTo(text.beginOf(field), Role::fieldNames, out);
        copier_.copyAs(Role::annotation, field, text, out);
    } else if (isString(field)) {
        const auto renamed = renames_.renamed(stringBytes(field));
        if (!renamed) return;
        text.copyTo(text.beginOf(field), Role::fieldNames, out);
        appendLiteralString(*renamed, out);
        text.skipTo(text.endOf(field));
    }
}

}  // namespace quirebind
