// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Tests/Support/FixtureLexer.h"

namespace quirebind::test {

/// An entry of a cross-reference section, in the terms of a cross-reference stream
/// (ISO 32000-2, table 18).
struct FixtureEntry {
    std::uint64_t type = 0;
    std::uint64_t second = 0;
    std::uint64_t third = 0;
    bool linked = false;  ///< Free, and its second field is for the list of free objects to say.
};

/// Entries by object number.
using FixtureEntries = std::map<std::uint64_t, FixtureEntry>;

/// The first and the last number of a subsection.
using FixtureRange = std::pair<std::uint64_t, std::uint64_t>;

/// A section as it is to be written.
struct FixtureListing {
    FixtureEntries entries;
    std::vector<FixtureRange> subsections;
};

/// What has been declared of the objects and is not yet listed in a cross-reference section, and
/// where the sections are.
class FixtureSections {
 public:
    enum class Kind : std::uint8_t { table, stream, hybrid };

    void declare(std::uint64_t object, const FixtureEntry& entry);
    void omit(std::uint64_t object);

    /// Takes the entries of a section of that kind, which stands at `offset`, by the section
    /// options of the directive. Throws std::invalid_argument with its line.
    [[nodiscard]] FixtureListing take(Kind kind, const FixtureDirective& directive,
                                      std::uint64_t offset);

    /// One more than the highest number declared.
    [[nodiscard]] std::uint64_t size() const { return size_; }
    /// Where the sections are that count as such, in their order.
    [[nodiscard]] const std::vector<std::uint64_t>& offsets() const { return offsets_; }

 private:
    void addHead(Kind kind, const FixtureDirective& directive, FixtureEntries& entries);

    FixtureEntries pending_;
    std::vector<std::uint64_t> offsets_;
    std::uint64_t size_ = 0;
    std::uint64_t firstFree_ = 0;  ///< What the head of the list of free objects points to.
};

/// The text of a table, from `xref` to the last entry.
[[nodiscard]] std::string tableText(const FixtureListing& listing,
                                    const FixtureDirective& directive, std::string_view eol);

/// The data of a cross-reference stream before it is encoded. Throws std::invalid_argument with the
/// line if a field is wider than its width.
[[nodiscard]] std::string streamRows(const FixtureListing& listing,
                                     const std::vector<std::size_t>& widths, std::size_t line);

/// The value of /Index.
[[nodiscard]] std::string indexValue(const FixtureListing& listing);

}  // namespace quirebind::test
