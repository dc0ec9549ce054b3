// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Platform/PDF/Copying/KeyedHash.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// The stream with the ICC profile of an output intent (ISO 32000-2, 14.11.5 and 8.6.5.5). A plain
/// value that needs no source any more.
class ColourProfile {
 public:
    /// Takes it over as it is encoded, in clear. Throws DamagedDocument where it is too large or
    /// refers to other objects.
    [[nodiscard]] static ColourProfile read(ObjectReader& reader, const SourceObject& stream);

    /// Whether both give the same colours: the profiles are the same, encoded in whatever way, but
    /// for when they were made. Some programs write that anew into each document. What is decoded
    /// for that is spent from `budget`; profiles beyond it are different. One profile is always
    /// given the same `hash`.
    [[nodiscard]] bool matches(ColourProfile& other, KeyedHash& hash, WorkBudget& budget);

    /// Writes it as it was read; gives the number of its stream.
    [[nodiscard]] std::uint32_t write(DocumentWriter& writer) const;

 private:
    [[nodiscard]] const std::string& digest(KeyedHash& hash, WorkBudget& budget);

    std::string entries_;  // of its dictionary, without /Length and how the body is encoded
    std::string coding_;   // the entries that tell how
    std::string body_;
    std::optional<std::string> digest_;  // once it was asked for; empty where there is none
};

}  // namespace quirebind
