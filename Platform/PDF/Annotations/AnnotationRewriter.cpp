// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Annotations/AnnotationRewriter.h"

#include "Platform/PDF/Guards/DepthGuard.h"
#include "Platform/PDF/Guards/Limits.h"

namespace quirebind {

void AnnotationRewriter::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    if (value.isDictionary()) {
        rewriteAnnotation(value, text, out);
    } else if (value.isArray()) {
        ArrayReader elements(value);
        while (const auto element = elements.next()) {
            if (!element->isDictionary()) continue;
            text.copyTo(text.beginOf(*element), Role::annotation, out);
            rewriteAnnotation(*element, text, out);
        }
    }
    text.copyTo(text.endOf(value), Role::annotation, out);
}

void AnnotationRewriter::rewriteAnnotation(Value annotation, MappedText& text, ByteBuffer& out) {
    EntryRewriter entries(annotation, text, out);
    if (fields_ == nullptr) {
        while (const auto* const entry = entries.next()) rewriteEntry(*entry, entries, text, out);
    } else {
        FormChanges::Field change = fields_->changesOf(text.objectOf(annotation), annotation);
        fields_->begin(change, annotation, text, out);
        while (const auto* const entry = entries.next())
            if (!fields_->rewriteEntry(change, annotation, *entry, entries))
                rewriteEntry(*entry, entries, text, out);
    }
    entries.finish();
}

void AnnotationRewriter::rewriteEntry(const DictionaryEntry& entry, EntryRewriter& entries,
                                      MappedText& text, ByteBuffer& out) {
    const Value key = entry.key;
    if (key.isName("Dest")) {
        ByteBuffer destination;
        if (destinations_.append(entry.value, destination))
            entries.replace().append(destination.text());
    } else if (key.isName("A") || key.isName("PA") || key.isName("Lock")) {
        // What a signature locks is named as in actions (table 236).
        copier_.copyAs(Role::action, entry.value, text, out);
    } else if (key.isName("AA")) {
        copier_.copyAs(Role::additionalActions, entry.value, text, out);
    } else if (key.isName("P")) {
        // Files have annotations of pages that they no longer have.
        const auto page = entry.value.reference();
        if (page && !pages_.indexOf(page->number)) entries.drop();
    } else if (key.isName("Kids")) {
        copyKids(entry.value, entries, text, out);
    } else if (key.isName("Parent") || key.isName("Popup") || key.isName("IRT")) {
        entries.copyAs(Role::annotation);
    } else {
        copier_.rewriteCommonEntry(entry, entries);
    }
}

/// Kids should be objects; some stand in their parent directly.
void AnnotationRewriter::copyKids(Value kids, EntryRewriter& entries, MappedText& text,
                                  ByteBuffer& out) {
    if (depth_ == limits::kNestedFields) {
        entries.copyAs(Role::annotation);
        return;
    }
    const DepthGuard guard(depth_);
    copier_.copyAs(Role::annotation, kids, text, out);
}

}  // namespace quirebind
