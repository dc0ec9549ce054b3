// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind {

/// What the optional content groups of one source become (ISO 32000-2, 8.11.4): all references are
/// to objects of the output.
struct LayerSettings {
    /// A group that is off and hides nothing, since none of its intents is the configuration's.
    struct Inactive {
        std::uint32_t group = 0;
        std::set<std::string> intents;
    };

    std::vector<std::uint32_t> groups;
    std::vector<std::uint32_t> hidden;  ///< Those of them that are off by default.
    std::vector<Inactive> inactive;
    std::vector<std::uint32_t> locked;  ///< Those whose state users cannot change.
    std::string order;                  ///< The elements of /Order.
    std::string radioGroups;            ///< The elements of /RBGroups.
    std::string usages;                 ///< The elements of /AS.
    std::set<std::string> intents;      ///< Of the configuration, without solidus.
    bool listsVisiblePagesOnly = false;
};

/// Whether a group with those intents can hide anything in a configuration with these (ISO 32000-2,
/// 8.11.2.3).
[[nodiscard]] bool sharesIntent(const std::set<std::string>& group,
                                const std::set<std::string>& configuration);

/// Joins the optional content properties of the sources:
///
///     << /OCGs [groups]
///        /D << /OFF [hidden] /Order [...] /RBGroups [...] /Locked [...] /AS [...] >> >>
///
/// Sources differ in what state their groups have unless told otherwise (/BaseState). Here every
/// group is on unless it is listed, so that each is in the state that it had.
class LayerWriter {
 public:
    /// A number for a source with layers, from 1 on.
    [[nodiscard]] std::uint32_t nextSource() { return ++sources_; }

    /// Whether an earlier source than `source` has a group of that name.
    [[nodiscard]] bool isTaken(std::string_view name, std::uint32_t source) {
        return names_.try_emplace(std::string(name), source).first->second != source;
    }

    /// Adds the groups of a source; there are some.
    void add(const LayerSettings& settings);

    /// Adds groups of a source that does not list any: all are on.
    void addShown(const std::vector<std::uint32_t>& groups);

    /// Writes the properties; gives their number, nothing where no source has layers.
    [[nodiscard]] std::optional<std::uint32_t> finish(DocumentWriter& writer) const;

 private:
    [[nodiscard]] std::vector<std::uint32_t> hidden() const;

    std::uint32_t sources_ = 0;
    std::map<std::string, std::uint32_t> names_;  // with the first source that has it
    LayerSettings joined_;
    bool isEmpty_ = true;
};

}  // namespace quirebind
