// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Syntax/Reference.h"

namespace quirebind {

/// A reference to an object, where there is only a number to one of the output (ISO
/// 32000-2, 7.3.10). What comes next has to begin with a delimiter or white space.
[[nodiscard]] std::string referenceText(std::uint32_t number);
/// The same with a generation, as the references of a source have one.
[[nodiscard]] std::string referenceText(Reference reference);
/// Appends referenceText of the number.
void appendReference(std::uint32_t number, ByteBuffer& out);

/// Appends the references, the elements of an array.
void appendReferences(std::span<const std::uint32_t> numbers, ByteBuffer& out);

/// Appends the dictionary entry of this key, given with its solidus, where there is an object.
void appendReferenceEntry(std::string_view key, std::optional<std::uint32_t> number,
                          ByteBuffer& out);

/// Appends the dictionary entry of this key with an array of references, unless there are none.
void appendReferencesEntry(std::string_view key, std::span<const std::uint32_t> numbers,
                           ByteBuffer& out);

}  // namespace quirebind
