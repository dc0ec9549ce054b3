// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace quirebind {

/// The name of the root in `name`, a field's partial or fully qualified name. Both are UTF-8.
///
/// A field's fully qualified name is made of the partial names (/T) from its root field down
/// (ISO 32000-2, 12.7.4.2):
///
///     root.child.grandchild
///
/// What comes before the first period is the name of the root here, also where a file has a period
/// in a partial name, which it must not have: so it agrees with what readers make of both.
[[nodiscard]] inline std::string_view rootName(std::string_view name) {
    return name.substr(0, name.find('.'));
}

}  // namespace quirebind
