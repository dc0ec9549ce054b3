// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Fuzzing/Support/MergeChecks.h"

#include <optional>
#include <string>

#include "Fuzzing/Support/MemoryFileSystem.h"
#include "Fuzzing/Support/Target.h"
#include "Platform/PDF/DamagedDocument.h"
#include "Platform/PDF/PDFDocument.h"
#include "Platform/PDF/SourceDocument.h"

namespace quirebind::fuzzing {
namespace {

/// More pages take long and show nothing new.
constexpr std::size_t kMostPages = 48;

struct Merged {
    std::string bytes;
    std::size_t pages = 0;
};

/// Nothing where the document is refused.
std::optional<Merged> merge(std::string_view file, int copies) {
    MemoryFileSystem files(file);
    PDFDocument output;
    for (int copy = 0; copy < copies; ++copy) {
        const auto source = PDFDocument::open(URL::file("/source.pdf"), files);
        if (!source || source->isLocked()) return std::nullopt;
        if (source->pageCount() == 0 || source->pageCount() > kMostPages) return std::nullopt;
        for (std::size_t i = 0; i < source->pageCount(); ++i) {
            const auto page = source->pageAtIndex(i);
            require(page.has_value(), "a page that is counted is there");
            if (!output.insertPage(*page, output.pageCount())) return std::nullopt;
        }
    }
    const std::size_t pages = output.pageCount();
    const auto data = std::move(output).dataRepresentation();
    if (!data) return std::nullopt;
    return Merged{std::string(data->text()), pages};
}

void requireSound(const Merged& merged) {
    MemoryFileSystem files(merged.bytes);
    try {
        const SourceDocument document(URL::file("/merged.pdf"), files, Recovery::refused);
        require(!document.isLocked(), "a merged document is not locked");
        require(document.pageTree().pages().size() == merged.pages, "no page is lost or added");
    } catch (const DamagedDocument& damage) {
        require(false, damage.what());
    }
}

}  // namespace

void mergeAndCheck(std::string_view file) {
    const auto merged = merge(file, 2);
    if (!merged) return;
    requireSound(*merged);
    const auto again = merge(merged->bytes, 1);
    if (!again) {
        require(merged->pages > kMostPages, "what was merged can be merged");
        return;
    }
    require(again->pages == merged->pages, "merging again keeps all pages");
    requireSound(*again);
    const auto third = merge(again->bytes, 1);
    require(third && third->bytes == again->bytes, "merging again and again changes nothing");
}

}  // namespace quirebind::fuzzing
