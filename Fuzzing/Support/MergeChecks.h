// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace quirebind::fuzzing {

/// Merges the document, listed twice, in memory. It may be refused; where it is not, the result
///
///  1. opens without any recovery, and is not locked;
///  2. has each page twice;
///  3. can be merged again, and again, and stays the same.
void mergeAndCheck(std::string_view file);

}  // namespace quirebind::fuzzing
