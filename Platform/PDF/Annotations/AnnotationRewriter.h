// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Copying/ObjectRewriter.h"
#include "Platform/PDF/Forms/FieldRewriter.h"
#include "Platform/PDF/Links/Destinations.h"
#include "Platform/PDF/Links/PageCopies.h"

namespace quirebind {

/// Writes annotations (ISO 32000-2, 12.5), and the form fields that some of them belong to or are:
/// links lead to the copies of their pages, pop-ups and replies go with what they belong to.
class AnnotationRewriter : public ObjectRewriter {
 public:
    /// All must outlive this, and be about the source that `copier` copies from.
    AnnotationRewriter(ObjectCopier& copier, Destinations& destinations, const PageCopies& pages)
        : copier_(copier), destinations_(destinations), pages_(pages) {}

    /// From now on `fields`, which must live as long as it is used, writes what is particular to
    /// fields. Without it they are plain annotations.
    void setFieldRewriter(FieldRewriter& fields) { fields_ = &fields; }

    /// An annotation or field, or an array of them.
    void rewrite(Value value, MappedText& text, ByteBuffer& out) override;

 private:
    void rewriteAnnotation(Value annotation, MappedText& text, ByteBuffer& out);
    void rewriteEntry(const DictionaryEntry& entry, EntryRewriter& entries, MappedText& text,
                      ByteBuffer& out);
    void copyKids(Value kids, EntryRewriter& entries, MappedText& text, ByteBuffer& out);

    ObjectCopier& copier_;
    Destinations& destinations_;
    const PageCopies& pages_;
    FieldRewriter* fields_ = nullptr;
    int depth_ = 0;  // of the direct fields that stand in one another
};

}  // namespace quirebind
