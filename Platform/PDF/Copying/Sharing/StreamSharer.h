// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Platform/PDF/Copying/ReferenceMap.h"
#include "Platform/PDF/Copying/Sharing/SharedStreams.h"
#include "Platform/PDF/Copying/Sharing/StandIns.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// Lets a source share streams with those before it. Only what does not belong to a place on a page
/// is shared, and only where it says itself what it is: images, font programs, character maps,
/// colour profiles; nothing that stands in the structure of its document or on a layer of it. Of an
/// encrypted source nothing is.
class StreamSharer : public StandIns {
 public:
    /// For one source, whose copies have the numbers of `map`; `writer` is asked what stands in the
    /// output already, `shared` collects from all sources. All must outlive this.
    StreamSharer(ObjectReader& reader, ReferenceMap& map, const DocumentWriter& writer,
                 SharedStreams& shared);

    [[nodiscard]] std::optional<std::uint32_t> standInFor(std::uint32_t source) override;

    /// Lets later sources share the stream, which was written, if it may be shared. `dictionary` is
    /// the one of the source, in which `parts` were found.
    void add(Value dictionary, const FoundParts& parts, const SharedStreams::Stream& stream);

 private:
    [[nodiscard]] bool mayBeShared(std::uint64_t offset);
    [[nodiscard]] std::optional<std::uint32_t> find(std::uint32_t source);

    ObjectReader& reader_;
    ReferenceMap& map_;
    const DocumentWriter& writer_;
    SharedStreams& shared_;
    std::vector<std::uint32_t> asked_;  // objects that are being compared, each part of the next
    WorkBudget bodies_;
    std::string piece_;  // of a body, reused
};

}  // namespace quirebind
