// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Joining/ImportSession.h"
#include "Platform/PDF/Joining/OutputParts.h"
#include "Platform/PDF/Reading/SourceDocument.h"
#include "Platform/PDF/Writing/PageTreeWriter.h"

namespace quirebind {

/// A document being put together: the writing side of PDFDocument. Used by one thread.
class OutputDocument {
 public:
    /// A document without pages.
    OutputDocument() : pageTree_(parts_.writer) {}

    /// See PDFDocument::borrowing.
    void borrowLongBodies() { parts_.writer.borrowLongBodies(); }

    /// The pages that were inserted so far, however often one of them was.
    [[nodiscard]] std::size_t pageCount() const { return pageTree_.pageCount(); }

    /// Copies page `page` of `source` to `index` (at most pageCount). The first page from a source
    /// opens an import session with it; a page that the session has inserted already opens another,
    /// so that each copy of a document is whole in itself. Throws DamagedDocument where the source
    /// is damaged; the document is then of no use.
    void insertPage(const std::shared_ptr<SourceDocument>& source, std::size_t page,
                    std::size_t index);

    /// The document as a file. Ends its life.
    [[nodiscard]] ByteBuffer finish();

 private:
    [[nodiscard]] ImportSession& sessionFor(SourceDocument& source, std::size_t page);

    OutputParts parts_;
    PageTreeWriter pageTree_;
    Version version_;
    std::vector<std::shared_ptr<ImportSession>> sessions_;
};

}  // namespace quirebind
