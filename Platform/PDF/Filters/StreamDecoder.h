// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

#include "Platform/PDF/Filters/Decoded.h"
#include "Platform/PDF/Filters/StreamFilters.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Decodes the body of a stream through the chain of filters that its dictionary names, with their
/// predictors (ISO 32000-2, 7.3.8.2 and 7.4). A crypt filter does nothing: `body` is in clear.
/// Damaged where a filter is not one of those that may stand on a cross-reference stream or an
/// object stream. What each stage gives is limited, and
/// spent from `budget`.
[[nodiscard]] Decoded decodeStream(Value dictionary, std::string_view body, const Resolve& resolve,
                                   WorkBudget& budget);

}  // namespace quirebind
