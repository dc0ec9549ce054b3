// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Syntax/FoundParts.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// A document's catalog (ISO 32000-2, 7.7.2). Whatever a document may have begins here, so of each
/// one some twenty entries are asked for that most do not have: it is scanned once.
class Catalog {
 public:
    /// Without entries.
    Catalog() = default;

    /// `dictionary` is copied.
    explicit Catalog(Value dictionary) : text_(dictionary.text()) {
        FoundParts parts;
        (void)scanValue(text_, 0, &parts);  // its extent is known already
        entries_ = parts.entries();
    }

    /// The value under `key`, as text that lives as long as this; absent where there is none. Of
    /// repeated keys the last counts.
    [[nodiscard]] Value find(std::string_view key) const {
        Value value;
        for (const FoundEntry& found : entries_) {
            const DictionaryEntry entry = entryAt(found, text_);
            if (entry.key.isName(key)) takeLast(value, entry.value);
        }
        return value;
    }

 private:
    std::string text_;
    std::vector<FoundEntry> entries_;
};

}  // namespace quirebind
