// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/SourceDocument.h"

#include <algorithm>
#include <atomic>
#include <optional>
#include <utility>

#include "Platform/PDF/CrossReferenceReader.h"
#include "Platform/PDF/DamagedDocument.h"
#include "Platform/PDF/Limits.h"

namespace quirebind {
namespace {

constexpr std::string_view kHeader = "%PDF-";

std::uint64_t nextSerial() {
    static std::atomic<std::uint64_t> last{0};
    return ++last;
}

/// Lets the image count from the header and reads the cross-reference sections. Where junk stands
/// before the header, most files count their offsets from the header (as readers have always
/// expected), but some from the start of the file.
CrossReference readCrossReference(SourceImage& image, std::size_t header) {
    image.setOrigin(header);
    if (header != 0) {
        try {
            return CrossReferenceReader(image).read();
        } catch (const DamagedDocument&) {
            image.setOrigin(0);
        }
    }
    return CrossReferenceReader(image).read();
}

}  // namespace

SourceDocument::SourceDocument(const URL& url, FileSystem& files)
    : serial_(nextSerial()), url_(url) {
    auto image = SourceImage::open(url, files);
    if (!image) throw DamagedDocument("the file cannot be opened");
    readStructure(std::move(*image));
}

SourceDocument::~SourceDocument() {
    for (const auto& weak : observers_)
        if (const auto observer = weak.lock()) observer->sourceWillClose();
}

void SourceDocument::readStructure(SourceImage image) {
    const std::string_view head = image.view(0, limits::kJunkBeforeHeader + kHeader.size());
    const std::size_t header = head.find(kHeader);
    if (header > limits::kJunkBeforeHeader)  // or npos
        throw DamagedDocument("no PDF header");
    version_ = parseVersion(head.substr(header + kHeader.size())).value_or(Version());

    CrossReference crossReference = readCrossReference(image, header);
    const Value trailer(crossReference.trailer);
    reader_ = std::make_unique<ObjectReader>(std::move(image), std::move(crossReference.table));
    if (!reader_->resolve(trailer.find("Encrypt")).isNull()) {
        locked_ = true;
        return;
    }
    const Value root = trailer.find("Root");
    const Value catalog = reader_->resolve(root);
    if (!catalog.isDictionary()) throw DamagedDocument("no catalog");
    catalog_ = catalog.text();
    const std::string version = reader_->resolve(catalog.find("Version")).name();
    version_ = std::max(version_, parseVersion(version).value_or(Version()));

    for (const Value& value : {root, Value(catalog_).find("StructTreeRoot")})
        if (const auto reference = value.reference()) documentObjects_.push_back(reference->number);
    pageTree_ = PageTree::read(*reader_, Value(catalog_).find("Pages"));
}

void SourceDocument::addObserver(std::weak_ptr<SourceObserver> observer) {
    observers_.push_back(std::move(observer));
}

}  // namespace quirebind
