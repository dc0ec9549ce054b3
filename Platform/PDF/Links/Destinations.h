// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Links/NamedDestinations.h"
#include "Platform/PDF/Links/PageCopies.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// The destination that `value` means, as an explicit one (ISO 32000-2, 12.3.2): an array of a page
/// and a view. A name is looked up among the source's. Nothing where it leads nowhere. What is read
/// on the way is spent of `room`; throws DamagedDocument when that is used up.
[[nodiscard]] std::optional<Value> explicitDestination(Value value, ObjectReader& reader,
                                                       NamedDestinations& names, WorkBudget& room);

/// Writes the destinations of one source for the output. All become explicit: names of different
/// sources would clash, and most of the names that a document has are never used.
class Destinations {
 public:
    /// All must outlive this, and be about one source.
    Destinations(ObjectReader& reader, NamedDestinations& names, const PageCopies& pages)
        : reader_(reader),
          names_(names),
          pages_(pages),
          room_(limits::kDestinations, reader.image().storedBytes()) {}

    /// Appends the destination that `value` means: the copy of its page and the same view. Where
    /// there is no such page it appends null for it, which leads nowhere. False, and nothing
    /// appended, where `value` is no destination of this source. Throws DamagedDocument where links
    /// make more of it than its size allows.
    [[nodiscard]] bool append(Value value, ByteBuffer& out);

    /// Appends the view that the rest of a destination says: names and numbers. Throws likewise.
    void appendView(ArrayReader& elements, ByteBuffer& out);

    /// How many pages the source has.
    [[nodiscard]] std::size_t pageCount() const { return pages_.count(); }

 private:
    [[nodiscard]] std::optional<std::uint32_t> copyOf(Value page);

    ObjectReader& reader_;
    NamedDestinations& names_;
    const PageCopies& pages_;
    WorkBudget room_;  // for destinations as they are read, and their views as they are written
};

}  // namespace quirebind
