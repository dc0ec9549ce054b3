// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/DocumentWriter.h"
#include "Platform/PDF/ObjectReader.h"
#include "Platform/PDF/ReferenceMap.h"

namespace quirebind {

/// Moves objects from a source to the output: the text between references goes over in bulk, the
/// references get the numbers of the copies, the bodies of streams go straight from the file into
/// the output. The rewriters for objects that need more than that stand upon this.
///
/// Throws DamagedDocument where the source is damaged; the output is then of no use.
class ObjectCopier {
 public:
    ObjectCopier(ObjectReader& reader, DocumentWriter& writer)
        : reader_(reader), writer_(writer), map_(reader, writer), bodies_(reader.image().size()) {}

    [[nodiscard]] ObjectReader& reader() { return reader_; }
    [[nodiscard]] DocumentWriter& writer() { return writer_; }
    [[nodiscard]] ReferenceMap& map() { return map_; }

    /// Copies all that waits in the map's queue, and what that refers to in turn.
    void copyPending();

    /// Appends `value` with its references mapped; what they name gets `role`.
    void appendValue(Value value, Role role, ByteBuffer& out);

 private:
    void copyPlain(const SourceObject& object, std::uint32_t output);
    void copyStream(const SourceObject& object, std::uint32_t output);

    ObjectReader& reader_;
    DocumentWriter& writer_;
    ReferenceMap map_;
    WorkBudget bodies_;                       // they do not overlap, so together they fit the file
    std::vector<FoundReference> references_;  // of the object being copied
};

}  // namespace quirebind
