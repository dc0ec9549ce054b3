// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/SourceImage.h"
#include "Platform/PDF/Syntax/IndirectObject.h"

namespace quirebind {

/// The parsed object at `offset`, with as much of the file fetched as it takes. Throws
/// DamagedDocument where there is none.
[[nodiscard]] IndirectObject readIndirectObject(SourceImage& image, std::uint64_t offset,
                                                WorkBudget& budget, FoundParts* parts = nullptr);

}  // namespace quirebind
