// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace quirebind::fuzzing {

/// A document out of any bytes: a catalog, a page tree, and a few objects whose entries and values
/// the bytes choose among those that mean something in a PDF file. The syntax is always right, the
/// cross-reference section, too; what is written where is not.
[[nodiscard]] std::string graphDocument(std::string_view bytes);

}  // namespace quirebind::fuzzing
