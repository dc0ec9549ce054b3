// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/PDFDocument.h"

#include <utility>

#include "Platform/Files/FileSystem.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Joining/OutputDocument.h"
#include "Platform/PDF/Links/LinkReader.h"
#include "Platform/PDF/Reading/PageGeometry.h"
#include "Platform/PDF/Reading/SourceDocument.h"

namespace quirebind {

/// One of the two is there. None is after a failed insertion.
struct PDFDocument::State {
    std::shared_ptr<SourceDocument> source;
    std::unique_ptr<LinkReader> links;  // once links are asked for
    std::unique_ptr<OutputDocument> output;
};

PDFDocument::PDFDocument() : state_(std::make_unique<State>()) {
    state_->output = std::make_unique<OutputDocument>();
}

PDFDocument PDFDocument::borrowing() {
    PDFDocument document;
    document.state_->output->borrowLongBodies();
    return document;
}

PDFDocument::PDFDocument(std::unique_ptr<State> state) : state_(std::move(state)) {}
PDFDocument::PDFDocument(PDFDocument&& other) noexcept = default;
PDFDocument& PDFDocument::operator=(PDFDocument&& other) noexcept = default;
PDFDocument::~PDFDocument() = default;

std::optional<PDFDocument> PDFDocument::open(const URL& url) {
    return open(url, FileSystem::native());
}

std::optional<PDFDocument> PDFDocument::open(const URL& url, FileSystem& files) {
    try {
        auto state = std::make_unique<State>();
        state->source = std::make_shared<SourceDocument>(url, files);
        return PDFDocument(std::move(state));
    } catch (const DamagedDocument&) {
        return std::nullopt;
    }
}

std::optional<PDFDocument> PDFDocument::open(FileDescriptor file, FileSystem& files) {
    try {
        auto state = std::make_unique<State>();
        state->source = std::make_shared<SourceDocument>(std::move(file), files);
        return PDFDocument(std::move(state));
    } catch (const DamagedDocument&) {
        return std::nullopt;
    }
}

std::optional<URL> PDFDocument::documentURL() const {
    if (!state_->source) return std::nullopt;
    return state_->source->url();
}

bool PDFDocument::isLocked() const {
    return state_->source && state_->source->isLocked();
}

std::size_t PDFDocument::pageCount() const {
    if (state_->source) return state_->source->pageTree().pages().size();
    return state_->output ? state_->output->pageCount() : 0;
}

bool PDFDocument::hasForm() const {
    return state_->source && !state_->source->catalog().find("AcroForm").isNull();
}

std::optional<PDFPage> PDFDocument::pageAtIndex(std::size_t index) const {
    if (!state_->source || index >= pageCount()) return std::nullopt;
    return PDFPage(state_->source, index);
}

std::optional<PageSize> PDFDocument::pageSize(std::size_t index) const {
    if (!state_->source || index >= pageCount()) return std::nullopt;
    return pageGeometry(*state_->source, index).size();
}

std::vector<PageLink> PDFDocument::pageLinks(std::size_t index) const {
    if (!state_->source || index >= pageCount()) return {};
    return linkReader().linksOn(index);
}

std::optional<PagePosition> PDFDocument::positionOf(const PageLink& link) const {
    if (!state_->source) return std::nullopt;
    return linkReader().positionOf(link);
}

LinkReader& PDFDocument::linkReader() const {
    if (!state_->links) state_->links = std::make_unique<LinkReader>(*state_->source);
    return *state_->links;
}

bool PDFDocument::insertPage(const PDFPage& page, std::size_t index) {
    const auto source = page.document_.lock();
    if (!source || !state_->output || index > pageCount()) return false;
    try {
        state_->output->insertPage(source, page.index_, index);
        return true;
    } catch (const DamagedDocument&) {
        state_->output.reset();
        return false;
    } catch (...) {  // memory: what was written is of no use either
        state_->output.reset();
        throw;
    }
}

bool PDFDocument::isUnchangedOnDisk() const {
    return !state_->source || state_->source->unchanged();
}

std::optional<FileStamp> PDFDocument::lentFile() const {
    return state_->source ? state_->source->lentFile() : std::nullopt;
}

std::optional<ByteBuffer> PDFDocument::dataRepresentation() && {
    if (!state_->output) return std::nullopt;
    try {
        return std::exchange(state_->output, nullptr)->finish();
    } catch (const DamagedDocument&) {  // it needs more object numbers than there are
        return std::nullopt;
    }
}

}  // namespace quirebind
