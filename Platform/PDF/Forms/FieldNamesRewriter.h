// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Copying/ObjectRewriter.h"
#include "Platform/PDF/Forms/FieldRenames.h"

namespace quirebind {

/// Writes what says of an action which fields it is about: a field or its fully qualified name, or
/// an array of these (ISO 32000-2, 12.6.4.11, 12.7.6.2 and 12.7.6.3). The names follow the fields.
class FieldNamesRewriter : public ObjectRewriter {
 public:
    /// Both must outlive this.
    FieldNamesRewriter(ObjectCopier& copier, const FieldRenames& renames)
        : copier_(copier), renames_(renames) {}

    void rewrite(Value value, MappedText& text, ByteBuffer& out) override;

 private:
    void rewriteField(Value field, MappedText& text, ByteBuffer& out);

    ObjectCopier& copier_;
    const FieldRenames& renames_;
};

}  // namespace quirebind
