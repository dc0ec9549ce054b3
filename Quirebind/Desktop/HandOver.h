// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

namespace quirebind {

/// Leaves an object to the toolkit, which deletes it: with its parent, or with whatever it was
/// given to. For the places where the toolkit owns by plain pointer.
template <typename T>
T* handOver(std::unique_ptr<T> object) {
    return object.release();
}

}  // namespace quirebind
