// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/SourceDocument.h"

#include <algorithm>
#include <atomic>
#include <optional>
#include <utility>

#include "Platform/PDF/Encryption/StandardSecurityHandler.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Reading/CrossReferenceReader.h"
#include "Platform/PDF/Reading/Recovery/FileScanner.h"
#include "Platform/PDF/Reading/Recovery/LostObjects.h"
#include "Platform/PDF/Reading/Recovery/RootSearch.h"
#include "Platform/PDF/Reading/Recovery/TableOfFile.h"
#include "Platform/PDF/Reading/Recovery/TableWithStreams.h"

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

SourceDocument::SourceDocument(const URL& url, FileSystem& files, Recovery recovery)
    : serial_(nextSerial()), url_(url) {
    auto image = SourceImage::open(url, files);
    if (!image) throw DamagedDocument("the file cannot be opened");
    readStructure(std::move(*image), recovery);
}

SourceDocument::SourceDocument(FileDescriptor file, FileSystem& files) : serial_(nextSerial()) {
    auto image = SourceImage::adopt(std::move(file), files);
    if (!image) throw DamagedDocument("no regular file");
    readStructure(std::move(*image), Recovery::attempted);
}

SourceDocument::~SourceDocument() {
    for (const auto& weak : observers_)
        if (const auto observer = weak.lock()) observer->sourceWillClose();
}

// A file is read as it says that it is to be read, and where that leads nowhere, by what stands in
// it:
//
//  1. The cross-reference sections are read, from startxref back along /Prev.
//  2. The catalog and the page tree are read by them: every object has to be where it should be,
//     every node and page what it should be.
//  3. Where 1 or 2 fails, the whole file is scanned for objects (FileScanner). They make a new
//     table (tableWithStreams) and say where the document begins (RootSearch). What the old
//     sections say of objects that were not found is remembered (LostObjects).
//  4. The catalog and the page tree are read again, by the new table; damage in the tree is now
//     bypassed as long as no page is lost. Where that fails, the document is refused.
//  5. Where 1 and 2 did not fail, but a page needs an object that is not where it should be, the
//     file is scanned then, for objects like this one only (ObjectReader::mendWrongEntries).
//
// So a file is scanned at most once, and a sound one never.

void SourceDocument::readStructure(SourceImage image, Recovery recovery) {
    const std::string_view head = image.view(0, limits::kJunkBeforeHeader + kHeader.size());
    std::size_t header = head.find(kHeader);
    if (header > limits::kJunkBeforeHeader) header = 0;  // or npos: there is none
    if (head.substr(header).starts_with(kHeader))
        version_ = parseVersion(head.substr(header + kHeader.size())).value_or(Version());
    try {
        CrossReference crossReference = readCrossReference(image, header);
        reader_ = std::make_unique<ObjectReader>(std::move(image), std::move(crossReference.table));
        readPages(Value(crossReference.trailer), PageTree::Damage::refused);
        if (recovery == Recovery::attempted) reader_->mendWrongEntries();
        sectionOffset_ = crossReference.newest;
        trailer_ = std::move(crossReference.trailer);
        return;
    } catch (const DamagedDocument&) {
        if (recovery == Recovery::refused) throw;
        if (reader_) image = std::move(reader_->image());
    }
    rebuildStructure(std::move(image));
}

void SourceDocument::rebuildStructure(SourceImage image) {
    image.setOrigin(0);
    const FileScan scan = FileScanner(image).scan();
    const std::uint64_t size = image.size();
    reader_ = std::make_unique<ObjectReader>(std::move(image), tableOfFile(scan, size));
    documentObjects_.clear();
    if (version_ == Version()) version_ = scan.version.value_or(Version());

    RootSearch search(scan, *reader_);
    if (const std::string encrypted = search.encryptedTrailer(); !encrypted.empty()) {
        locked_ = !unlock(Value(encrypted));
        if (locked_) return;
    }
    reader_->replaceTable(tableWithStreams(scan, *reader_));
    const std::string trailer = search.trailer();
    reader_->setLostObjects(LostObjects(scan));
    readPages(Value(trailer), PageTree::Damage::bypassed);
}

void SourceDocument::readPages(Value trailer, PageTree::Damage damage) {
    locked_ = !unlock(trailer);
    if (locked_) return;
    const Value root = trailer.find("Root");
    const Value catalog = reader_->resolve(root);
    if (!catalog.isDictionary()) throw DamagedDocument("no catalog");
    catalog_ = Catalog(catalog);
    const std::string version = reader_->resolve(catalog_.find("Version")).name();
    version_ = std::max(version_, parseVersion(version).value_or(Version()));

    for (const Value& value : {root, catalog_.find("StructTreeRoot")})
        if (const auto reference = value.reference()) documentObjects_.push_back(reference->number);
    pageTree_ = PageTree::read(*reader_, catalog_.find("Pages"), damage);
}

/// Lets the reader decrypt where the document is encrypted; false where that takes a password.
bool SourceDocument::unlock(Value trailer) {
    if (reader_->isEncrypted()) return true;
    const Value entry = trailer.find("Encrypt");
    Value dictionary;
    try {
        dictionary = reader_->resolve(entry);
    } catch (const DamagedDocument&) {
        if (reader_->isExhausted()) throw;
        return false;  // it is encrypted, nobody knows how any more
    }
    if (dictionary.isNull()) return true;
    if (!dictionary.isDictionary()) throw DamagedDocument("no encryption dictionary");
    auto decryptor = openWithoutPassword(dictionary, trailer.find("ID"),
                                         [this](Value value) { return reader_->resolve(value); });
    if (!decryptor) return false;
    reader_->decryptWith(std::move(*decryptor));
    if (const auto reference = entry.reference()) documentObjects_.push_back(reference->number);
    return true;
}

void SourceDocument::addObserver(std::weak_ptr<SourceObserver> observer) {
    observers_.push_back(std::move(observer));
}

}  // namespace quirebind
