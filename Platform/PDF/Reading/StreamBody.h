// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>

#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/ByteSource.h"

namespace quirebind {

/// Whether something that ends a stream body stands at `offset`, behind white space: the keyword
/// endstream, or, where that is missing, endobj, the next object or a cross-reference section.
[[nodiscard]] bool streamBodyEndsAt(ByteSource& bytes, std::uint64_t offset);

/// The length in bytes of the stream body that begins at `offset`: `declared`, the value under
/// /Length, where a body ends there, otherwise up to the end of line before the first thing that
/// ends one (ISO 32000-2, 7.3.8.1). About one file in a hundred declares a wrong length. Where
/// there is no such thing, because the file was cut off behind the last byte of the body or in the
/// keyword, `declared` is right all the same. Throws DamagedDocument where the stream has no end.
[[nodiscard]] std::uint64_t streamBodyLength(ByteSource& bytes, std::uint64_t offset,
                                             std::optional<std::int64_t> declared,
                                             WorkBudget& budget);

}  // namespace quirebind
