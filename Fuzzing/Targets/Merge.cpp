// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Merging a file.

#include "Fuzzing/Support/MergeChecks.h"
#include "Fuzzing/Support/Target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quirebind::fuzzing::mergeAndCheck(quirebind::fuzzing::textOf(data, size));
    return 0;
}
