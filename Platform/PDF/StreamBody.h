// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>

#include "Platform/PDF/SourceImage.h"
#include "Platform/PDF/WorkBudget.h"

namespace quirebind {

/// The length in bytes of the stream body that begins at `offset`: `declared`, the value under
/// /Length, where the keyword endstream (or endobj, where that is missing) stands behind it,
/// otherwise up to the end of line before the first such keyword (ISO 32000-2, 7.3.8.1). About one
/// file in a hundred declares a wrong length. Throws DamagedDocument where the stream has no end.
[[nodiscard]] std::uint64_t streamBodyLength(SourceImage& image, std::uint64_t offset,
                                             std::optional<std::int64_t> declared,
                                             WorkBudget& budget);

}  // namespace quirebind
