// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Forms/UniqueNames.h"

namespace quirebind {

// A field's fully qualified name is made of the partial names (/T) from its root field down
// (ISO 32000-2, 12.7.4.2):
//
//     root.child.grandchild
//
// What comes before the first period is the name of the root here, also where a file has a period
// in a partial name, which it must not have: so it agrees with what readers make of both.

/// The name of the root in `name`, a field's partial or fully qualified name. Both are UTF-8.
[[nodiscard]] std::string_view rootName(std::string_view name);

/// The new names of root fields of one source.
class FieldRenames {
 public:
    /// `root` becomes `root` and `suffix`, which is ASCII.
    void add(std::string root, std::string suffix);
    [[nodiscard]] bool empty() const { return suffixes_.empty(); }
    [[nodiscard]] bool contains(const std::string& root) const { return suffixes_.contains(root); }

    /// What a name of a field, partial or fully qualified, becomes; nothing where it stays. Both
    /// are the bytes of text strings, in the same encoding.
    [[nodiscard]] std::optional<std::string> renamed(std::string_view bytes) const;
    /// The same of names in UTF-8.
    [[nodiscard]] std::optional<std::string> renamedText(std::string_view name) const;

 private:
    std::map<std::string, std::string, std::less<>> suffixes_;
};

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
