// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Opening a file: cross-reference sections, repair, decryption, the page tree; and what is asked of
// an opened document.

#include "Fuzzing/Support/MemoryFileSystem.h"
#include "Fuzzing/Support/Target.h"
#include "Platform/PDF/PDFDocument.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quirebind;  // NOLINT(google-build-using-namespace): a program of its own
    fuzzing::MemoryFileSystem files(fuzzing::textOf(data, size));
    const auto document = PDFDocument::open(URL::file("/source.pdf"), files);
    if (!document) return 0;
    fuzzing::require(!document->isLocked() || document->pageCount() == 0,
                     "a locked document shows no pages");
    constexpr std::size_t kPages = 16;
    for (std::size_t i = 0; i < document->pageCount() && i < kPages; ++i) {
        const auto pageSize = document->pageSize(i);
        fuzzing::require(pageSize && pageSize->width > 0 && pageSize->height > 0,
                         "every page has a size");
        for (const PageLink& link : document->pageLinks(i))
            if (const auto position = document->positionOf(link))
                fuzzing::require(position->page < document->pageCount(),
                                 "a link leads to a page that is there");
    }
    return 0;
}
