// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "QuirebindCore/PDFMerger.h"

#include <new>
#include <optional>

#include "Platform/Files/AtomicWrite.h"
#include "QuirebindCore/MergeOn.h"

namespace quirebind::PDFMerger {
namespace {

/// Two spellings of one location have this in common, as far as links and dots make the difference.
URL normalized(const URL& url) {
    return url.resolvingSymlinksInPath().standardizedFileURL();
}

void refuseToOverwrite(std::span<const URL> sources, const URL& destination) {
    const URL target = normalized(destination);
    for (const URL& source : sources)
        if (normalized(source) == target) throw Failure::sourceOverwrite();
}

void appendSource(PDFDocument& output, FileSystem& files, const URL& url) {
    const PDFDocument source = openOn(files, url);
    const std::size_t pageCount = source.pageCount();
    for (std::size_t index = 0; index < pageCount; ++index) {
        const auto page = source.pageAtIndex(index);
        if (!page || !output.insertPage(*page, output.pageCount()))
            throw Failure::invalid(url.lastPathComponent());
    }
    if (!source.isUnchangedOnDisk()) throw Failure::invalid(url.lastPathComponent());
}

std::optional<ByteBuffer> serialized(PDFDocument output) {
    try {
        return std::move(output).dataRepresentation();
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

}  // namespace

PDFDocument openOn(FileSystem& files, const URL& url) {
    auto document = PDFDocument::open(url, files);
    if (!document) throw Failure::invalid(url.lastPathComponent());
    if (document->isLocked()) throw Failure::locked(url.lastPathComponent());
    if (document->pageCount() < 1) throw Failure::empty();
    return std::move(*document);
}

void mergeOn(FileSystem& files, std::span<const URL> sources, const URL& destination) {
    refuseToOverwrite(sources, destination);
    PDFDocument output;
    for (const URL& url : sources) {
        try {
            appendSource(output, files, url);
        } catch (const std::bad_alloc&) {
            throw Failure::invalid(url.lastPathComponent());
        }
    }
    if (output.pageCount() < 1) throw Failure::empty();
    const auto data = serialized(std::move(output));
    if (!data) throw Failure::empty();
    writeAtomically(data->bytes(), destination, files);
}

PDFDocument open(const URL& url) {
    try {
        return openOn(FileSystem::native(), url);
    } catch (const std::bad_alloc&) {
        throw Failure::invalid(url.lastPathComponent());
    }
}

void merge(std::span<const URL> sources, const URL& destination) {
    mergeOn(FileSystem::native(), sources, destination);
}

}  // namespace quirebind::PDFMerger
