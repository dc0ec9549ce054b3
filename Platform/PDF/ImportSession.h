// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <vector>

#include "Platform/PDF/ObjectCopier.h"
#include "Platform/PDF/PageRewriter.h"
#include "Platform/PDF/SourceDocument.h"

namespace quirebind {

/// The import of one source's pages into one output, each at most once. Numbers for the copies of
/// all pages are reserved before anything is copied, so that every reference to a page of the
/// source finds that page's copy, also when it is copied later; and when it never is, the reference
/// means null. Nodes of the page tree and what else stands for the source as a whole become null,
/// so that no page brings the document along.
///
/// It lasts until the source closes or the output is completed.
class ImportSession : public SourceObserver {
 public:
    /// `source` and `writer` must outlive the session's last use; `sourceWillClose` ends that.
    ImportSession(SourceDocument& source, DocumentWriter& writer);

    [[nodiscard]] std::uint64_t serial() const { return serial_; }
    [[nodiscard]] bool isOpen() const { return open_; }
    [[nodiscard]] bool hasInserted(std::size_t index) const { return inserted_[index]; }

    /// Copies page `index` and everything it needs, below the page-tree node `parent`; gives the
    /// number of the new page. Throws DamagedDocument where the source is damaged.
    [[nodiscard]] std::uint32_t insertPage(std::size_t index, std::uint32_t parent);

    void close() noexcept { open_ = false; }
    void sourceWillClose() noexcept override { close(); }

 private:
    std::uint64_t serial_;
    bool open_ = true;
    ObjectCopier copier_;
    PageRewriter pages_;
    std::uint32_t firstPage_ = 0;  // the copies' numbers follow one another
    std::vector<bool> inserted_;
};

}  // namespace quirebind
