// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Platform/PDF/Forms/FieldRenames.h"

namespace quirebind {

/// `script` with the new names of the fields that it asks for; nothing where it stays. Both are
/// UTF-8. Names are where everyone writes them:
///
///     this.getField("root.child")
///     AFSimple_Calculate("SUM", new Array("root.child", "other"))
///     AFSimple_Calculate("SUM", "root.child, other")
///     this.resetForm(["root.child", "other"])
///
/// A name that a script puts together at run time from less than the root's name is not found.
[[nodiscard]] std::optional<std::string> renameFieldsInScript(std::string_view script,
                                                              const FieldRenames& renames);

}  // namespace quirebind
