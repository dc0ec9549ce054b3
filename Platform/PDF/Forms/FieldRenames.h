// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quirebind {

/// The new names of root fields of one source.
class FieldRenames {
 public:
    /// `root` becomes `root` and `suffix`, which is ASCII.
    void add(std::string root, std::string suffix);
    /// Whether every field of the source keeps its name.
    [[nodiscard]] bool empty() const { return suffixes_.empty(); }
    /// Whether the root field `root`, in UTF-8, gets another name.
    [[nodiscard]] bool contains(const std::string& root) const { return suffixes_.contains(root); }

    /// What a name of a field, partial or fully qualified, becomes; nothing where it stays. Both
    /// are the bytes of text strings, in the same encoding.
    [[nodiscard]] std::optional<std::string> renamed(std::string_view bytes) const;
    /// The same of names in UTF-8.
    [[nodiscard]] std::optional<std::string> renamedText(std::string_view name) const;

 private:
    std::map<std::string, std::string, std::less<>> suffixes_;
};

}  // namespace quirebind
