// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// The keys of pages, and of nodes of the page tree, whose values are not just copied
/// (ISO 32000-2, tables 30 and 31). First the inheritable ones, as in kInheritableAttributes.
enum class PageKey : std::uint8_t {
    resources,
    mediaBox,
    cropBox,
    rotate,
    type,
    kids,
    count,
    parent,
    annotations,
    additionalActions,
    presentationSteps,
    structParents,
    structParent,
    other,
};

/// Which of them `key` is, a key of a dictionary in any spelling. In one go: to ask for one after
/// the other takes longer than all else that is done with most pages.
[[nodiscard]] PageKey pageKeyOf(Value key);

/// The key's index in kInheritableAttributes.
[[nodiscard]] inline std::optional<std::size_t> inheritableAttribute(PageKey key) {
    if (key > PageKey::rotate) return std::nullopt;
    return static_cast<std::size_t>(key);
}

}  // namespace quirebind
