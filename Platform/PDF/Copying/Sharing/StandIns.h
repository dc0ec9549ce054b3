// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>

namespace quirebind {

/// Knows which objects of a source need no copy of their own, since the output has what they say.
class StandIns {
 public:
    StandIns() = default;
    StandIns(const StandIns&) = delete;
    StandIns& operator=(const StandIns&) = delete;
    StandIns(StandIns&&) = delete;
    StandIns& operator=(StandIns&&) = delete;
    virtual ~StandIns() = default;

    /// The object of the output that does for object `source`; nothing where there is none. Asked
    /// at the first reference to the object; what the object refers to may be mapped meanwhile.
    [[nodiscard]] virtual std::optional<std::uint32_t> standInFor(std::uint32_t source) = 0;
};

}  // namespace quirebind
