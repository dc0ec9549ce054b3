// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string_view>

#include "Platform/PDF/Filters/Filter.h"
#include "Platform/PDF/Value.h"

namespace quirebind {

/// Follows a value that may be an indirect reference to the value itself.
using Resolve = std::function<Value(Value)>;

/// Decodes the body of a stream through the chain of filters that its dictionary names, with their
/// predictors (ISO 32000-2, 7.3.8.2 and 7.4). Damaged where a filter is not one of those that may
/// stand on a cross-reference stream or an object stream. No stage gives more than `limit` bytes.
[[nodiscard]] Decoded decodeStream(Value dictionary, std::string_view body, std::size_t limit,
                                   const Resolve& resolve);

}  // namespace quirebind
