// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// What the groups of a source became.
struct GroupCopies {
    /// The copy of the group where it is used.
    std::function<std::optional<std::uint32_t>(Reference)> find;
    /// The copy of the group, which from now on is used.
    std::function<std::optional<std::uint32_t>(Reference)> use;
};

/// The elements of an /Order (ISO 32000-2, table 99), in which viewers list the groups, for the
/// copies of those that are used:
///
///     [ group  group [its subgroups ...]  [ (label)  group ... ] ... ]
///
/// A group above one that is used is listed, too. Labels are kept with what stands behind them.
[[nodiscard]] std::string orderOfCopies(Value order, ObjectReader& reader,
                                        const GroupCopies& copies);

}  // namespace quirebind
