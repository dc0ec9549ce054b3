// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/Recovery/ObjectMender.h"

#include <string_view>
#include <utility>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Reading/Recovery/FileScanner.h"
#include "Platform/PDF/Reading/Recovery/TableOfFile.h"

namespace quirebind {

ObjectLocation ObjectMender::find(std::uint32_t number, SourceImage& image) {
    if (!found_) {
        found_.emplace(image.size());  // stays empty where the scan fails
        found_ = tableOfFile(FileScanner(image).scan(), image.size());
    }
    return found_->find(number);
}

const ClosedObject* ObjectMender::close(std::uint32_t number, std::uint64_t offset,
                                        SourceImage& image, WorkBudget& budget) {
    if (closed_.size() == limits::kUnclosedObjects) return nullptr;
    const std::string_view text =
        image.view(offset, limits::kUnclosedObject).substr(0, limits::kUnclosedObject);
    budget.spend(text.size());
    auto closed = closeDictionaries(text);
    if (!closed) return nullptr;
    return &closed_.emplace(number, std::move(*closed)).first->second;
}

}  // namespace quirebind
