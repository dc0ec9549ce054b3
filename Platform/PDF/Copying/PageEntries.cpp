// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Copying/PageEntries.h"

namespace quirebind {

std::span<const PageEntries::Entry> PageEntries::of(Value page) {
    if (shape_ != 0 && shape_ == parts_.shape()) return entries_;
    shape_ = parts_.shape();
    entries_.clear();
    DictionaryReader reader(page, parts_);
    for (std::size_t index = 0; const auto entry = reader.next(); ++index) {
        const PageKey key = pageKeyOf(entry->key);
        if (key != PageKey::other || entry->value.text().empty()) entries_.push_back({index, key});
    }
    return entries_;
}

}  // namespace quirebind
