// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "Platform/PDF/Syntax/Reference.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// One object of a source, as text. Valid until ObjectReader::trim.
struct SourceObject {
    std::uint32_t number = 0;
    std::uint32_t generation = 0;  ///< As the object itself says.
    Value value;  ///< For a stream, its dictionary. Null for an object that is not there.
    bool isStream = false;
    bool packed = false;           ///< It came out of an object stream.
    double packedSize = 0;         ///< What it took there, compressed, in bytes.
    std::uint64_t bodyOffset = 0;  ///< Where a stream's body begins.

    /// What it is called in its file.
    [[nodiscard]] Reference id() const { return {number, generation}; }
};

}  // namespace quirebind
