// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Copying/ObjectRewriter.h"

namespace quirebind {

/// Writes dictionaries of actions by what triggers them (ISO 32000-2, 12.6.3).
class AdditionalActionsRewriter : public ObjectRewriter {
 public:
    /// `copier` must outlive this.
    explicit AdditionalActionsRewriter(ObjectCopier& copier) : copier_(copier) {}

    void rewrite(Value value, MappedText& text, ByteBuffer& out) override;

 private:
    ObjectCopier& copier_;
};

}  // namespace quirebind
