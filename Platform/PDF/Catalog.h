// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/FoundParts.h"
#include "Platform/PDF/Value.h"

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

    /// The value under `key`, as text that lives as long as this; absent where there is none.
    [[nodiscard]] Value find(std::string_view key) const {
        const std::string_view text(text_);
        for (const FoundEntry& entry : entries_) {
            const Value found(text.substr(entry.keyBegin, entry.keyEnd - entry.keyBegin));
            if (found.isName(key))
                return Value(text.substr(entry.valueBegin, entry.valueEnd - entry.valueBegin));
        }
        return {};
    }

 private:
    std::string text_;
    std::vector<FoundEntry> entries_;
};

}  // namespace quirebind
