// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <new>

namespace quirebind {

/// What the library answers to `call`; nothing (no link, no place, no size) where there is no
/// memory for it. A preview goes without rather than end the program.
template <typename Call>
[[nodiscard]] auto orNothing(const Call& call) -> decltype(call()) {
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return {};
    }
}

}  // namespace quirebind
