// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <span>

#include "Platform/Files/URL.h"
#include "Platform/Files/UUID.h"
#include "Quirebind/Workflow/CheckedAddition.h"

namespace quirebind {

/// One document in the list. A plain value whose identity is its `id`, not its URL: a file that is
/// listed twice is two entries.
struct InputPDF {
    UUID id;                 ///< Fresh when the file was opened to be added.
    URL url;                 ///< As the panel or the drop delivered it.
    std::int64_t pages = 0;  ///< The number of pages when it was added; at least 1.
};

/// The pages of all documents together. Stops the program where 64 bits do not hold them.
[[nodiscard]] inline std::int64_t totalPages(std::span<const InputPDF> files) {
    std::int64_t sum = 0;
    for (const InputPDF& file : files) sum = checkedSum(sum, file.pages);
    return sum;
}

}  // namespace quirebind
