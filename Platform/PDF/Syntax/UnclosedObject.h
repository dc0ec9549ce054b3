// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quirebind {

/// The text of an indirect object whose dictionaries were closed, and a little of what follows it.
struct ClosedObject {
    std::string text;
    std::size_t added = 0;  ///< Bytes that the file has not, before the keyword behind the value.
};

/// Closes the dictionaries that are still open where an indirect object ends, as other readers do
/// (ISO 32000-2, 7.3.7, does not allow them to be open):
///
///     5 0 obj << /Font << /F 6 0 R >>    endobj
///     5 0 obj << /Font << /F 6 0 R >> >> endobj
///
/// `text` begins with the object and may go on behind it. Nothing where the object has no end in
/// it, or where something else is wrong: behind an open array, elements may be missing.
[[nodiscard]] std::optional<ClosedObject> closeDictionaries(std::string_view text);

}  // namespace quirebind
