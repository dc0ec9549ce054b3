// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

#include "Platform/PDF/Forms/FieldRenames.h"
#include "Platform/PDF/Forms/UniqueNames.h"

namespace quirebind {

/// The names of the root fields of all sources of an output.
class RootNames {
 public:
    /// Takes the names of the root fields of a further source, in their order. Those that another
    /// source has, too, are replaced; two fields of one name stay one field.
    [[nodiscard]] FieldRenames claim(const std::vector<std::string>& roots);

 private:
    UniqueNames names_;
};

}  // namespace quirebind
