// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Copying/ObjectRewriter.h"
#include "Platform/PDF/Structure/ElementIDs.h"

namespace quirebind {

/// Writes the attributes of structure elements (ISO 32000-2, 14.7.6): the header cells that a cell
/// of a table names (14.8.5.7, /Headers) have other identifiers where those of its source clashed.
class AttributeRewriter : public ObjectRewriter {
 public:
    /// Both must outlive this; `ids` are those of the source that `copier` copies from.
    AttributeRewriter(ObjectCopier& copier, SourceIDs& ids) : copier_(copier), ids_(ids) {}

    /// A dictionary of attributes, an array of them with their revision numbers, an array of
    /// identifiers or one of these.
    void rewrite(Value value, MappedText& text, ByteBuffer& out) override;

 private:
    void rewriteElement(Value value, MappedText& text, ByteBuffer& out);
    void rewriteAttributes(Value attributes, MappedText& text, ByteBuffer& out);

    ObjectCopier& copier_;
    SourceIDs& ids_;
    int depth_ = 0;  // of the attributes that stand in one another
};

}  // namespace quirebind
