// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Platform/PDF/OutputIntents/ColourProfile.h"
#include "Platform/PDF/Reading/Catalog.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Syntax/Value.h"
#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// The output intents of a document (ISO 32000-2, 14.11.5): for which device it was made, usually
/// with a colour profile. Plain values that need no source any more.
class OutputIntents {
 public:
    OutputIntents() = default;

    /// Reads what is under /OutputIntents of the catalog. None where there are none, or where they
    /// cannot be told as plain values. Throws DamagedDocument only where the source is exhausted.
    [[nodiscard]] static OutputIntents read(ObjectReader& reader, const Catalog& catalog);

    /// Whether the document says of no device that it was made for it.
    [[nodiscard]] bool empty() const { return intents_.empty(); }

    /// Writes them; gives the number of their array.
    [[nodiscard]] std::uint32_t write(DocumentWriter& writer) const;

    /// Whether both are for the same devices and give the same colours. Intents are always given
    /// the same `hash`.
    [[nodiscard]] bool match(OutputIntents& other, KeyedHash& hash);

 private:
    struct Intent {
        std::string entries;  // without the profile
        std::optional<ColourProfile> profile;
    };

    [[nodiscard]] static OutputIntents readSound(ObjectReader& reader, const Catalog& catalog);
    [[nodiscard]] static Intent readIntent(ObjectReader& reader, Value intent);

    std::vector<Intent> intents_;
};

/// What the output is made for: what all sources are made for, where they agree.
class CommonOutputIntents {
 public:
    /// Adds what a source, with whatever catalog, is made for.
    void add(ObjectReader& reader, const Catalog& catalog);

    /// Writes them; gives the number of their array, nothing where there are none.
    [[nodiscard]] std::optional<std::uint32_t> finish(DocumentWriter& writer) const;

 private:
    OutputIntents common_;
    KeyedHash hash_;
    bool isFirst_ = true;
};

}  // namespace quirebind
