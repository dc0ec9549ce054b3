// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/ObjectDecryption.h"

#include <utility>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/ValueScanner.h"

namespace quirebind {

ObjectDecryption::ObjectDecryption(Decryptor decryptor, std::uint64_t fileSize)
    : decryptor_(std::move(decryptor)),
      room_(limits::kResidentBytes + 2 * fileSize),
      left_(room_) {}

void ObjectDecryption::decryptStrings(SourceObject& object, FoundParts* parts, WorkBudget& budget) {
    if (object.isStream && isCrossReferenceStream(object.value)) return;
    auto held = texts_.find(object.number);
    if (held == texts_.end()) {
        auto text = decryptor_.decryptStrings(object.value, object.id(), budget);
        if (!text) return;
        left_.spend(text->size());
        held = texts_.emplace(object.number, std::move(*text)).first;
    }
    object.value = Value(held->second);
    (void)scanValue(held->second, 0, parts);  // only the strings are others now
}

std::string ObjectDecryption::decryptBody(std::string body, const SourceObject& stream,
                                          const StreamFilters& filters) const {
    return decryptor_.decryptBody(std::move(body), stream.value, filters, stream.id());
}

void ObjectDecryption::trim() {
    texts_.clear();
    left_ = WorkBudget(room_);
}

}  // namespace quirebind
