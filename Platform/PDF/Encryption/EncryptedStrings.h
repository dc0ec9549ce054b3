// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>
#include <vector>

#include "Platform/PDF/Syntax/ValueScanner.h"

namespace quirebind {

/// The strings in `text`, a value as scanValue sees it, that are encrypted in an encrypted
/// document, in the order in which they stand: all but the /Contents of signatures, which are
/// dictionaries with a /ByteRange (ISO 32000-2, 7.6.2).
[[nodiscard]] std::vector<Extent> findEncryptedStrings(std::string_view text);

}  // namespace quirebind
