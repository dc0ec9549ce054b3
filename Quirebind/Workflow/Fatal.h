// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <source_location>
#include <string_view>

namespace quirebind {

/// Stops the program because of a mistake in it that it must not live on with, after writing the
/// message and the place to standard error. In every kind of build.
[[noreturn]] void fatal(std::string_view message,
                        std::source_location where = std::source_location::current()) noexcept;

}  // namespace quirebind
