// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The directives of FixtureExpander that make streams and cross-reference sections.

#include <algorithm>
#include <numeric>
#include <set>

#include "Tests/Support/FixtureEncoding.h"
#include "Tests/Support/FixtureExpander.h"

namespace quirebind::test {

namespace {

constexpr std::string_view kWhitespace = " \t\r\n";
constexpr std::string_view kNameEnds = " \t\r\n/<>[]()";

std::string trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(kWhitespace);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(kWhitespace) - first + 1);
}

/// The names in a dictionary's entries that are not part of an inner object.
std::set<std::string> outerNames(const std::string& entries) {
    std::set<std::string> names;
    int depth = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const char c = entries[i];
        if (c == '[' || c == '<' || c == '(') ++depth;
        if (c == ']' || c == '>' || c == ')') --depth;
        if (c != '/' || depth > 0) continue;
        const auto end = std::min(entries.find_first_of(kNameEnds, i + 1), entries.size());
        names.insert(entries.substr(i, end - i));
    }
    return names;
}

std::vector<std::size_t> widthsOf(const FixtureDirective& directive) {
    constexpr std::size_t kWidest = 64;
    std::vector<std::size_t> widths;
    for (const std::string& width : splitAtCommas(directive.option("W", "1,4,2"))) {
        widths.push_back(parseDecimal(width, directive.line));
        if (widths.back() > kWidest) failAtLine(directive.line, "W= has a width above 64");
    }
    if (widths.size() != 3) failAtLine(directive.line, "W= has three widths");
    return widths;
}

}  // namespace

void FixtureExpander::open(Place place, const FixtureDirective& directive) {
    opening_ = directive;
    captured_.clear();
    place_ = place;
}

void FixtureExpander::recordStreamLength(std::uint64_t length) {
    learned_.objects.at(object_.value_or(0)).back().streamLength = length;
}

void FixtureExpander::stream(const FixtureDirective& directive) {
    if (!object_) failAtLine(directive.line, "stream stands before any object");
    if (!directive.endsLine) failAtLine(directive.line, "stream must end its line");
    out_ += streamKeyword();
    open(Place::stream, directive);
}

void FixtureExpander::endStream(const FixtureDirective& directive) {
    // The line end behind the opening directive, and the one before this, are not data.
    std::string_view data = captured_;
    data.remove_prefix(data.find(eol_) + eol_.size());
    if (directive.startsLine) {
        data = data.substr(0, data.find_last_not_of(" \t") + 1);
        if (data.ends_with(eol_)) data.remove_suffix(eol_.size());
    }
    const std::string encoded = StreamEncoding::fromDirective(opening_, 1).encode(data);
    recordStreamLength(encoded.size());
    out_ += encoded + eol_ + "endstream";
    place_ = Place::document;
}

void FixtureExpander::objectStream(const FixtureDirective& directive) {
    beginObject(directive);
    head_.clear();
    members_.clear();
    open(Place::objectStreamHead, directive);
}

void FixtureExpander::member(const FixtureDirective& directive) {
    const std::uint64_t number = directive.number(0);
    (place_ == Place::objectStreamHead ? head_ : members_.back().second) = captured_;
    captured_.clear();
    place_ = Place::objectStreamMember;
    const auto index = static_cast<std::uint64_t>(members_.size());
    sections_.declare(number, {.type = 2, .second = object_.value_or(0), .third = index});
    members_.emplace_back(number, "");
}

void FixtureExpander::endObjectStream(const FixtureDirective&) {
    (place_ == Place::objectStreamHead ? head_ : members_.back().second) = captured_;
    // N pairs of object number and offset, then the objects (ISO 32000-2, 7.5.7).
    std::string pairs;
    std::string bodies;
    for (const auto& [number, text] : members_) {
        pairs += std::to_string(number) + " " + std::to_string(bodies.size()) + " ";
        bodies += text.substr(std::min(text.find_first_not_of(kWhitespace), text.size()));
    }
    if (!pairs.empty()) pairs.replace(pairs.size() - 1, 1, eol_);
    captured_ = head_;
    writeStreamObject({{"/Type", "/ObjStm"},
                       {"/N", std::to_string(members_.size())},
                       {"/First", std::to_string(pairs.size())}},
                      pairs + bodies, 1);
}

void FixtureExpander::xref(const FixtureDirective& directive) {
    const auto listing = sections_.take(FixtureSections::Kind::table, directive, here());
    std::string text = tableText(listing, directive, eol_);
    // The last line end is the author's.
    text.erase(text.size() - eol_.size());
    out_ += text;
}

void FixtureExpander::xrefStream(const FixtureDirective& directive) {
    if (directive.arguments.size() > 2 && directive.arguments[2] != "hybrid") {
        failAtLine(directive.line, "the third argument of xrefstream can only be hybrid");
    }
    beginObject(directive);
    open(Place::xrefStreamHead, directive);
}

void FixtureExpander::endXrefStream(const FixtureDirective&) {
    const bool isHybrid = opening_.arguments.size() > 2;
    const auto widths = widthsOf(opening_);
    const auto listing =
        sections_.take(isHybrid ? FixtureSections::Kind::hybrid : FixtureSections::Kind::stream,
                       opening_, learned_.objects.at(object_.value_or(0)).back().offset);
    DictionaryEntries generated{
        {"/Type", "/XRef"},
        {"/Size", std::to_string(sections_.size())},
        {"/W", "[" + std::to_string(widths[0]) + " " + std::to_string(widths[1]) + " " +
                   std::to_string(widths[2]) + "]"}};
    const bool isWhole = listing.subsections.size() == 1 &&
                         listing.subsections[0] == FixtureRange{0, sections_.size() - 1};
    if (!isWhole) generated.emplace_back("/Index", indexValue(listing));
    const auto rowSize = std::accumulate(widths.begin(), widths.end(), std::size_t{0});
    writeStreamObject(std::move(generated), streamRows(listing, widths, opening_.line),
                      std::max<std::size_t>(rowSize, 1));
}

void FixtureExpander::writeStreamObject(DictionaryEntries generated, std::string_view data,
                                        std::size_t defaultColumns) {
    const auto encoding = StreamEncoding::fromDirective(opening_, defaultColumns);
    const std::string encoded = encoding.encode(data);
    recordStreamLength(encoded.size());
    generated.emplace_back("/Length", std::to_string(encoded.size()));
    generated.emplace_back("/Filter", encoding.filterValue());
    generated.emplace_back("/DecodeParms", encoding.parametersValue());

    const std::string further = trimmed(captured_);
    std::set<std::string> excluded = outerNames(further);
    for (auto& name : splitAtCommas(opening_.option("without", ""))) excluded.insert(name);
    out_ += eol_ + "<<";
    for (const auto& [key, value] : generated) {
        if (value.empty() || excluded.contains(key)) continue;
        out_.append(" ").append(key).append(" ").append(value);
    }
    out_ += (further.empty() ? "" : eol_ + further) + " >>" + eol_;
    out_ += streamKeyword() + encoded + eol_ + "endstream" + eol_ + "endobj";
    place_ = Place::document;
}

}  // namespace quirebind::test
