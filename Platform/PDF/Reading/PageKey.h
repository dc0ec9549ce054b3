// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// The attributes that a page takes from its ancestors where it has none of its own
/// (ISO 32000-2, 7.7.3.4).
inline constexpr std::array<std::string_view, 4> kInheritableAttributes{"Resources", "MediaBox",
                                                                        "CropBox", "Rotate"};

/// The keys of pages, and of nodes of the page tree, whose values are not just copied
/// (ISO 32000-2, tables 30 and 31). First the inheritable ones, as in kInheritableAttributes.
enum class PageKey : std::uint8_t {
    resources,          ///< /Resources
    mediaBox,           ///< /MediaBox
    cropBox,            ///< /CropBox
    rotate,             ///< /Rotate
    type,               ///< /Type
    kids,               ///< /Kids
    count,              ///< /Count
    parent,             ///< /Parent
    annotations,        ///< /Annots
    additionalActions,  ///< /AA
    presentationSteps,  ///< /PresSteps
    structParents,      ///< /StructParents
    structParent,       ///< /StructParent, which only objects on a page should have.
    other,              ///< Any other key: its value is copied as it is.
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
