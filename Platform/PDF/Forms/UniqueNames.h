// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace quirebind {

/// Names that are in use, and new ones made from them by counting: "total_2", "total_3". All of it
/// takes time linear in the number of names, whatever they are, but for a logarithm: each name that
/// stands in the way is met once.
class UniqueNames {
 public:
    /// Whether the name is in use.
    [[nodiscard]] bool contains(const std::string& name) const { return names_.contains(name); }
    /// From now on the name is in use.
    void insert(std::string name) { names_.insert(std::move(name)); }

    /// What makes of `name`, when it is appended, a name that is neither in use nor one of
    /// `others`.
    [[nodiscard]] std::string suffixFor(const std::string& name,
                                        const std::set<std::string>& others = {});

 private:
    std::set<std::string> names_;
    std::map<std::string, std::uint32_t> counts_;  // the last number tried for a name
};

}  // namespace quirebind
