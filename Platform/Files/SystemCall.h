// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cerrno>
#include <system_error>

namespace quirebind {

/// Throws the std::system_error of `error` (an errno); its what() is the system's message alone.
[[noreturn]] inline void throwSystemError(int error) {
    throw std::system_error(std::error_code(error, std::generic_category()));
}

/// Returns `result`, or throws the std::system_error of it where it is a negated errno.
template <typename Result>
Result orThrow(Result result) {
    if (result < 0) throwSystemError(static_cast<int>(-result));
    return result;
}

/// Makes the system call `call` again for as long as a signal interrupts it. Not for close(2): a
/// descriptor is gone even where closing it was interrupted.
template <typename Call>
auto uninterrupted(const Call& call) {
    auto result = call();
    while (result == -EINTR) result = call();
    return result;
}

}  // namespace quirebind
