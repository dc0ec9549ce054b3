// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/PageKey.h"

#include <array>
#include <string_view>

namespace quirebind {
namespace {

/// In the order of PageKey.
constexpr std::array<std::string_view, static_cast<std::size_t>(PageKey::other)> kNames{
    "Resources", "MediaBox", "CropBox", "Rotate",    "Type",          "Kids",        "Count",
    "Parent",    "Annots",   "AA",      "PresSteps", "StructParents", "StructParent"};

constexpr bool beginsWithInheritables() {
    for (std::size_t i = 0; i < kInheritableAttributes.size(); ++i)
        if (kNames[i] != kInheritableAttributes[i]) return false;
    return true;
}
static_assert(beginsWithInheritables());

}  // namespace

PageKey pageKeyOf(Value key) {
    const std::string_view name = key.text().substr(key.text().empty() ? 0 : 1);
    for (std::size_t i = 0; i < kNames.size(); ++i) {
        const std::string_view known = kNames[i];
        if (name.size() == known.size() && name[0] == known[0] && name == known)
            return static_cast<PageKey>(i);
    }
    if (name.find('#') != std::string_view::npos) {
        for (std::size_t i = 0; i < kNames.size(); ++i)
            if (key.isName(kNames[i])) return static_cast<PageKey>(i);
    }
    return PageKey::other;
}

}  // namespace quirebind
