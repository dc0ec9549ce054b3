// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <vector>

#include "Platform/PDF/Copying/DocumentPart.h"
#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Reading/Catalog.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Lists the article threads of one source whose beads are on the copied pages (ISO 32000-2,
/// 12.4.3). The beads come along with their pages, and bring their thread.
class ArticleImport : public DocumentPart {
 public:
    /// All must outlive this. The numbers of the threads are appended to `threads`.
    ArticleImport(ObjectCopier& copier, const Catalog& catalog, std::vector<std::uint32_t>& threads)
        : copier_(copier), catalog_(catalog), threads_(threads) {}

    void finish() override;

 private:
    [[nodiscard]] bool isCopied(Value value) const;

    ObjectCopier& copier_;
    const Catalog& catalog_;
    std::vector<std::uint32_t>& threads_;
};

}  // namespace quirebind
