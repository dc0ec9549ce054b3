// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace quirebind {

/// Names an indirect object of a source (ISO 32000-2, 7.3.10).
struct Reference {
    std::uint32_t number = 0;
    std::uint32_t generation = 0;

    friend bool operator==(const Reference&, const Reference&) = default;
};

}  // namespace quirebind
