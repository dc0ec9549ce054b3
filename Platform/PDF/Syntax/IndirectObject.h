// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// An indirect object as it stands in a file (ISO 32000-2, 7.3.10):
///
///     12 0 obj  value  endobj
///     12 0 obj  dictionary  stream EOL  body  EOL endstream  endobj
struct IndirectObject {
    Reference id;
    Value value;  ///< For a stream, its dictionary.
    bool isStream = false;
    std::size_t end = 0;     ///< Behind the value; for a stream, where its body begins.
    std::size_t looked = 0;  ///< How far the text was read.
};

/// Parses the indirect object that begins at the start of `text` (white space before it is
/// skipped). Nothing where the text is no object or may have ended too early to tell; `isWhole`
/// says that the text goes on to the end of the file, so that there is no more to be seen.
/// References are found as by scanValue, their positions counting from the value's own beginning.
[[nodiscard]] std::optional<IndirectObject> parseIndirectObject(std::string_view text, bool isWhole,
                                                                FoundParts* parts = nullptr);

/// Reads the "N G obj" that an indirect object begins with, and moves `at` behind it.
[[nodiscard]] std::optional<Reference> parseObjectHeader(std::string_view text, std::size_t& at);

}  // namespace quirebind
