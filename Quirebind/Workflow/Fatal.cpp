// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Workflow/Fatal.h"

#include <cstdlib>
#include <iostream>

namespace quirebind {

void fatal(std::string_view message, std::source_location where) noexcept {
    std::cerr << where.file_name() << ':' << where.line() << ": Fatal error: " << message << '\n'
              << std::flush;
    std::abort();
}

}  // namespace quirebind
