// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/ReadIndirectObject.h"

#include <cstddef>
#include <string_view>

#include "Platform/PDF/Guards/DamagedDocument.h"

namespace quirebind {
namespace {

/// How much of the file is looked at first for an object: most are smaller.
constexpr std::size_t kFirstLook = 1024;

}  // namespace

IndirectObject readIndirectObject(SourceImage& image, std::uint64_t offset, WorkBudget& budget,
                                  FoundParts* parts) {
    std::size_t length = kFirstLook;
    for (;;) {
        const std::string_view text = image.view(offset, length);
        const bool isWhole = offset + text.size() >= image.size();
        if (auto object = parseIndirectObject(text, isWhole, parts)) {
            budget.spend(object->looked);
            return *object;
        }
        budget.spend(text.size());
        if (isWhole) throw DamagedDocument("no object where one should be");
        length = 2 * text.size();
    }
}

}  // namespace quirebind
