// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "Platform/Files/URL.h"
#include "Platform/PDF/PDFDocument.h"
#include "Quirebind/Preview/RenderClient.h"

namespace quirebind {

class FileSystem;
class RenderService;

/// A document that is shown. It is opened once: the renderer draws the file that the sizes of pages
/// were read from, also where another has taken its name meanwhile. Main thread only.
class PreviewDocument {
 public:
    /// Nothing where it cannot be opened. Both must outlive what is opened.
    [[nodiscard]] static std::optional<PreviewDocument> open(const URL& url, FileSystem& files,
                                                             RenderService& service);

    /// Where it comes from.
    [[nodiscard]] const URL& url() const { return url_; }
    /// What stands in it.
    [[nodiscard]] const PDFDocument& pdf() const { return pdf_; }
    /// What the renderer knows it as; null where there was no descriptor left for it.
    [[nodiscard]] const std::shared_ptr<const RenderDocument>& rendered() const {
        return rendered_;
    }

    /// The sizes of the next pages, in points: as many as can be read in one turn of the event
    /// loop.
    [[nodiscard]] std::vector<PageSize> readSizes();
    /// How many were read so far.
    [[nodiscard]] std::size_t sizesRead() const { return sizesRead_; }
    /// Whether that is all of them.
    [[nodiscard]] bool hasAllSizes() const { return sizesRead_ >= pdf_.pageCount(); }

 private:
    PreviewDocument(URL url, PDFDocument pdf, std::shared_ptr<const RenderDocument> rendered);

    URL url_;
    PDFDocument pdf_;
    std::shared_ptr<const RenderDocument> rendered_;
    std::size_t sizesRead_ = 0;
};

}  // namespace quirebind
