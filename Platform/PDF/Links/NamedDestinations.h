// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/Catalog.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// The named destinations of one source (ISO 32000-2, 12.3.2.4): those of the name tree that is
/// /Dests of the catalog's /Names, and those of the catalog's own dictionary /Dests, which PDF 1.1
/// had. They are read when the first one is asked for, in time linear in their number.
class NamedDestinations {
 public:
    /// `catalog` and `reader` must outlive this.
    NamedDestinations(ObjectReader& reader, const Catalog& catalog)
        : reader_(reader),
          catalog_(catalog),
          room_(limits::kNamedDestinations, reader.image().storedBytes()) {}

    /// Where destinations are listed: what is a string in a link stands in the tree, what is a name
    /// in the dictionary. Files have them the other way round, too.
    enum class List : std::uint8_t { tree, dictionary };

    /// What stands under that name in `list` or, if nothing does, in the other one: a destination
    /// or a reference to one, valid as long as this. Nothing where there is none. Of a name that is
    /// listed twice the first counts in the tree, and the last, as of any key, in the dictionary.
    [[nodiscard]] std::optional<Value> find(std::string_view name, List list);

 private:
    struct Entry {
        std::size_t begin = 0;  // of the name in texts_, which the value's text follows
        std::uint32_t nameSize = 0;
        std::uint32_t valueSize = 0;
        List list = List::tree;
    };

    void read();
    void add(std::string_view name, Value value, List list);
    [[nodiscard]] std::string_view nameOf(const Entry& entry) const;

    ObjectReader& reader_;
    const Catalog& catalog_;
    WorkBudget room_;
    bool isRead_ = false;
    std::string texts_;
    std::vector<Entry> entries_;  // by name and list, once they are read
};

}  // namespace quirebind
