// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/Recovery/LostObjects.h"

#include <algorithm>
#include <ranges>
#include <string>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Reading/CrossReferenceReader.h"

namespace quirebind {

LostObjects::LostObjects(const FileScan& scan) : sections_(scan.tables), trailers_(scan.trailers) {
    std::uint64_t lastObject = 0;
    std::uint64_t end = trailers_.empty() ? 0 : trailers_.back();
    for (const ScannedObject& object : scan.objects) {
        if (object.kind == ScannedObject::Kind::crossReferenceStream) {
            sections_.push_back(object.offset);
            end = std::max(end, object.offset);
        } else {
            lastObject = object.offset;
        }
    }
    std::ranges::sort(sections_);
    endIsThere_ = end > lastObject;
}

bool LostObjects::include(Reference reference, SourceImage& image) {
    if (!endIsThere_) return true;
    if (!claims_) claims_ = readSections(image);
    const ObjectLocation claim = claims_->find(reference.number);
    switch (claim.kind) {
        case ObjectLocation::Kind::inFile:
            return claim.detail == reference.generation;
        case ObjectLocation::Kind::inStream:
            return reference.generation == 0;
        case ObjectLocation::Kind::free:
            return false;
        case ObjectLocation::Kind::unlisted:
            break;
    }
    return reference.number < size_ && !allReadable_;
}

ObjectTable LostObjects::readSections(SourceImage& image) {
    WorkBudget budget(limits::kScan, image.storedBytes());
    CrossReferenceReader reader(image);
    const auto noteSize = [this](const std::string& trailer) {
        const auto size = Value(trailer).find("Size").integer();
        if (size && *size > 0) size_ = std::max(size_, static_cast<std::uint64_t>(*size));
    };
    // A table that was lost has left its trailer behind.
    allReadable_ = !sections_.empty() && sections_.size() >= trailers_.size();
    for (auto* const offsets : {&sections_, &trailers_}) {
        if (offsets->size() <= limits::kCrossReferenceSections) continue;
        offsets->erase(offsets->begin(), offsets->end() - limits::kCrossReferenceSections);
        allReadable_ = false;
    }
    for (const std::uint64_t offset : std::views::reverse(sections_)) {
        try {
            noteSize(reader.readSection(offset));
        } catch (const DamagedDocument&) {
            allReadable_ = false;
        }
    }
    for (const std::uint64_t offset : trailers_) {
        try {
            noteSize(readTrailerDictionary(image, offset, budget));
        } catch (const DamagedDocument&) {
            continue;  // it says nothing then
        }
    }
    return reader.table();
}

}  // namespace quirebind
