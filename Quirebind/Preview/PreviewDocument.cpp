// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/PreviewDocument.h"

#include <QElapsedTimer>
#include <utility>

#include "Platform/Files/FileSystem.h"
#include "Platform/Files/OpenToRead.h"
#include "Quirebind/Preview/OrNothing.h"
#include "Quirebind/Preview/RenderService.h"

namespace quirebind {

namespace {

constexpr int kMillisecondsForSizes = 8;  // in one turn of the event loop
constexpr std::size_t kSizesAtOnce = 64;

}  // namespace

std::optional<PreviewDocument> PreviewDocument::open(const URL& url, FileSystem& files,
                                                     RenderService& service) {
    FileDescriptor file = openToRead(url, files);
    if (file.number() < 0) return std::nullopt;
    FileDescriptor drawn = file.duplicate();
    auto pdf = PDFDocument::open(std::move(file), files);
    if (!pdf) return std::nullopt;
    std::shared_ptr<const RenderDocument> rendered;
    if (drawn.number() >= 0) rendered = service.document(std::move(drawn), pdf->hasForm());
    return PreviewDocument(url, std::move(*pdf), std::move(rendered));
}

PreviewDocument::PreviewDocument(URL url, PDFDocument pdf,
                                 std::shared_ptr<const RenderDocument> rendered)
    : url_(std::move(url)), pdf_(std::move(pdf)), rendered_(std::move(rendered)) {}

std::vector<PageSize> PreviewDocument::readSizes() {
    std::vector<PageSize> sizes;
    QElapsedTimer elapsed;
    elapsed.start();
    for (; !hasAllSizes(); ++sizesRead_) {
        if (sizes.size() % kSizesAtOnce == 0 && elapsed.elapsed() >= kMillisecondsForSizes) break;
        const auto size = orNothing([&] { return pdf_.pageSize(sizesRead_); });
        sizes.push_back(size.value_or(PageSize()));
    }
    return sizes;
}

}  // namespace quirebind
