// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace quirebind {

/// The names that all sources define in one dictionary of the output: types in the role map,
/// classes in the class map. What is defined alike is shared; of names with several definitions the
/// first source keeps its own, and later ones get new names.
class SharedNames {
 public:
    /// The output's name for `name` of a source, where it is defined so; an empty definition is
    /// for a name that is used without one. `source` counts the sources from 1.
    [[nodiscard]] std::string nameFor(const std::string& name, const std::string& definition,
                                      std::size_t source);

    /// The same, but always a new name: `name` has a meaning without any definition.
    [[nodiscard]] std::string otherNameFor(const std::string& name, const std::string& definition,
                                           std::size_t source);

    /// By name, with those that have no definition.
    [[nodiscard]] const std::map<std::string, std::string>& definitions() const {
        return definitions_;
    }

 private:
    std::map<std::string, std::string> definitions_;
    std::map<std::pair<std::string, std::string>, std::string> others_;  // new names by the old
};

}  // namespace quirebind
