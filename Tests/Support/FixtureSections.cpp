// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Support/FixtureSections.h"

#include <algorithm>
#include <set>

namespace quirebind::test {

namespace {

/// The numbers that the option only= admits; without it, nothing.
std::optional<std::vector<FixtureRange>> onlyRanges(const FixtureDirective& directive) {
    if (!directive.has("only")) return std::nullopt;
    std::vector<FixtureRange> ranges;
    for (const std::string& part : splitAtCommas(directive.option("only", ""))) {
        const auto dash = part.find('-');
        const auto first = parseDecimal(std::string_view(part).substr(0, dash), directive.line);
        const auto last = dash == std::string::npos
                              ? first
                              : parseDecimal(std::string_view(part).substr(dash + 1),  //
                                             directive.line);
        ranges.emplace_back(first, last);
    }
    return ranges;
}

std::vector<FixtureRange> subsectionsOf(const FixtureEntries& entries,
                                        const FixtureDirective& directive) {
    std::set<std::uint64_t> starts;
    if (directive.has("split")) {
        for (const std::string& part : splitAtCommas(directive.option("split", ""))) {
            starts.insert(parseDecimal(part, directive.line));
        }
    }
    std::vector<FixtureRange> ranges;
    for (const auto& [number, entry] : entries) {
        if (ranges.empty() || number != ranges.back().second + 1 || starts.contains(number)) {
            ranges.emplace_back(number, number);
        } else {
            ranges.back().second = number;
        }
    }
    return ranges;
}

std::string padded(std::uint64_t value, std::size_t digits, std::size_t line) {
    const std::string text = std::to_string(value);
    if (text.size() > digits) failAtLine(line, text + " is too large for a table");
    return std::string(digits - text.size(), '0') + text;
}

void appendField(std::string& row, std::uint64_t value, std::size_t width, std::size_t line) {
    constexpr std::size_t kWidest = 8;
    if (width < kWidest && (value >> (8 * width)) != 0) {
        failAtLine(line, std::to_string(value) + " does not fit into " + std::to_string(width) +
                             " bytes of a cross-reference stream");
    }
    for (std::size_t i = width; i > 0; --i) {
        const std::uint64_t byte = i > kWidest ? 0 : (value >> (8 * (i - 1))) & 0xFFU;
        row.push_back(static_cast<char>(static_cast<unsigned char>(byte)));
    }
}

}  // namespace

void FixtureSections::declare(std::uint64_t object, const FixtureEntry& entry) {
    pending_.insert_or_assign(object, entry);
    size_ = std::max(size_, object + 1);
}

void FixtureSections::omit(std::uint64_t object) {
    pending_.erase(object);
}

FixtureListing FixtureSections::take(Kind kind, const FixtureDirective& directive,
                                     std::uint64_t offset) {
    const auto only = onlyRanges(directive);
    const auto isWanted = [&](std::uint64_t number, const FixtureEntry& entry) {
        if (kind == Kind::table && entry.type == 2) return false;
        if (!only) return kind != Kind::hybrid || entry.type == 2;
        return std::ranges::any_of(*only, [number](const FixtureRange& range) {
            return number >= range.first && number <= range.second;
        });
    };
    FixtureListing listing;
    std::erase_if(pending_, [&](const auto& declared) {
        if (!isWanted(declared.first, declared.second)) return false;
        listing.entries.insert(declared);
        return true;
    });
    addHead(kind, directive, listing.entries);
    listing.subsections = subsectionsOf(listing.entries, directive);
    if (kind != Kind::hybrid) offsets_.push_back(offset);
    return listing;
}

/// The free objects of a section go in front of those of the sections before it
/// (ISO 32000-2, 7.5.4: object 0 is the head, the last one points to object 0).
void FixtureSections::addHead(Kind kind, const FixtureDirective& directive,
                              FixtureEntries& entries) {
    const std::string zero = directive.option("zero", "");
    if (!zero.empty() && zero != "yes" && zero != "no") {
        failAtLine(directive.line, "zero= is yes or no");
    }
    FixtureEntry* last = nullptr;
    std::uint64_t first = firstFree_;
    for (auto& [number, entry] : entries) {
        if (!entry.linked || number == 0) continue;
        if (last == nullptr) {
            first = number;
        } else {
            last->second = number;
        }
        last = &entry;
    }
    if (last != nullptr) last->second = firstFree_;
    firstFree_ = first;

    const bool byItself = kind != Kind::hybrid && (offsets_.empty() || last != nullptr);
    if (zero == "yes" || (zero.empty() && byItself)) {
        constexpr std::uint64_t kHeadGeneration = 65535;
        entries.try_emplace(0, FixtureEntry{.third = kHeadGeneration, .linked = true});
    }
    const auto head = entries.find(0);
    if (head != entries.end() && head->second.linked) head->second.second = firstFree_;
    size_ = std::max<std::uint64_t>(size_, 1);
}

std::string tableText(const FixtureListing& listing, const FixtureDirective& directive,
                      std::string_view eol) {
    const std::uint64_t entrySize = directive.optionNumber("entry", 20);
    if (entrySize != 19 && entrySize != 20) failAtLine(directive.line, "entry= is 19 or 20");
    if (entrySize == 19 && eol.size() != 1) {
        failAtLine(directive.line, "entry=19 needs line ends of one byte");
    }
    const std::uint64_t shift = directive.optionNumber("shift", 0);
    const bool hasBlank = entrySize == 20 && eol.size() == 1;
    const std::string entryEnd = (hasBlank ? " " : "") + std::string(eol);
    std::string text = "xref" + std::string(eol);
    if (listing.subsections.empty()) text += "0 0" + std::string(eol);
    for (const auto& [first, last] : listing.subsections) {
        text += std::to_string(first + shift) + " " + std::to_string(last - first + 1);
        text += eol;
        for (auto number = first; number <= last; ++number) {
            const FixtureEntry& entry = listing.entries.at(number);
            if (entry.type > 2) {
                failAtLine(directive.line, "a table has no entries of type " +  //
                                               std::to_string(entry.type));
            }
            text += padded(entry.second, 10, directive.line) + " ";
            text += padded(entry.third, 5, directive.line) + (entry.type == 0 ? " f" : " n");
            text += entryEnd;
        }
    }
    return text;
}

std::string streamRows(const FixtureListing& listing, const std::vector<std::size_t>& widths,
                       std::size_t line) {
    std::string rows;
    for (const auto& [number, entry] : listing.entries) {
        // A type field of no width stands for type 1 (ISO 32000-2, table 17).
        if (widths[0] == 0 && entry.type != 1) {
            failAtLine(line, "object " + std::to_string(number) + " needs a type field");
        }
        if (widths[0] > 0) appendField(rows, entry.type, widths[0], line);
        appendField(rows, entry.second, widths[1], line);
        appendField(rows, entry.third, widths[2], line);
    }
    return rows;
}

std::string indexValue(const FixtureListing& listing) {
    std::string value;
    for (const auto& [first, last] : listing.subsections) {
        if (!value.empty()) value += ' ';
        value += std::to_string(first) + " " + std::to_string(last - first + 1);
    }
    return "[" + value + "]";
}

}  // namespace quirebind::test
