// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

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
        (void)scanValue(text_, 0, &parts_);  // its extent is known already
    }

    /// The value under `key`, as text that lives as long as this; absent where there is none.
    [[nodiscard]] Value find(std::string_view key) const {
        return findEntry(DictionaryReader(Value(text_), parts_), key);
    }

 private:
    std::string text_;
    FoundParts parts_;
};

}  // namespace quirebind
