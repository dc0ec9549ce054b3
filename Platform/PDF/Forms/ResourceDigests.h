// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/PDF/Copying/KeyedHash.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Syntax/FoundParts.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Tells which resources are the same, in one document or in several: those that say the same, with
/// all that they refer to, however it is numbered, spelt and divided into objects.
class ResourceDigests {
 public:
    /// Digests by the same `hash` can be compared. Both must outlive this.
    ResourceDigests(ObjectReader& reader, KeyedHash& hash);

    /// A digest of what `resource` says; the same for two that are the same. Nothing where that is
    /// too much to be compared. Throws DamagedDocument where the source is damaged.
    [[nodiscard]] std::optional<std::string> of(Value resource);

    /// Whether it is the digest of null, of an absent value or of a reference that comes back to
    /// itself.
    [[nodiscard]] static bool isOfNothing(std::string_view digest);

 private:
    class Walk;

    [[nodiscard]] const std::string& bodyDigest(const SourceObject& stream);
    [[nodiscard]] std::string computeBodyDigest(const SourceObject& stream);

    ObjectReader& reader_;
    KeyedHash& hash_;
    // Of objects; nothing for those that are too much. Forms that draw with the same fonts are
    // compared as quickly as the fonts.
    std::map<std::uint32_t, std::optional<std::string>> digests_;
    std::map<std::uint32_t, std::string> bodies_;  // of streams
    FoundParts parts_;                             // of the object that was read last
    WorkBudget graphs_;
    WorkBudget bodyBytes_;  // bodies do not overlap, so together they fit the file
};

}  // namespace quirebind
