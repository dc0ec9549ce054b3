// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Copying/ObjectRewriter.h"

namespace quirebind {

/// Writes navigation nodes (ISO 32000-2, 12.4.4.2), the steps in which a page is presented: what is
/// done at each of them, forwards and backwards, are actions. They are a list linked in both ways,
/// of objects of their own.
class NavigationNodeRewriter : public ObjectRewriter {
 public:
    /// `copier` must outlive this.
    explicit NavigationNodeRewriter(ObjectCopier& copier) : copier_(copier) {}

    void rewrite(Value value, MappedText& text, ByteBuffer& out) override;

 private:
    ObjectCopier& copier_;
};

}  // namespace quirebind
