// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace quirebind {

/// What an object is for, which says how it is rewritten when it is copied. It is known from how
/// the object was reached, not from its /Type, which files leave out or get wrong.
enum class Role : std::uint8_t {
    plain,                ///< Copied as it is, with its references mapped.
    annotation,           ///< An annotation, a form field, or an array of them.
    action,               ///< An action, or an array of them.
    additionalActions,    ///< A dictionary of actions by what triggers them.
    navigationNode,       ///< A step in the presentation of a page.
    fieldNames,           ///< A form field or the name of one, or an array of these.
    script,               ///< A script, a string or a stream.
    layer,                ///< An optional content group.
    structureElement,     ///< A structure element, or something else that is below one.
    structureAttributes,  ///< Attributes of structure elements, or an array of them.
};

/// How many there are.
inline constexpr std::size_t kRoles = 10;

}  // namespace quirebind
