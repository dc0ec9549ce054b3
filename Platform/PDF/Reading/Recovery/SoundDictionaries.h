// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace quirebind {

/// Whether every dictionary in `text` has a name wherever a key should stand. `text` is a value
/// whose brackets match, which is all that copying it takes. Where bytes of a file were overwritten
/// this tells that a value is more than odd: readers cannot tell keys from values any more and
/// leave out the object, or what of it they cannot use, each in its own way.
[[nodiscard]] bool hasSoundDictionaries(std::string_view text);

}  // namespace quirebind
