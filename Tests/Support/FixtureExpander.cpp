// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Support/FixtureExpander.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <limits>

namespace quirebind::test {

/// Where a directive may stand and what it takes.
struct FixtureExpander::Rule {
    using Expand = void (FixtureExpander::*)(const FixtureDirective&);

    Rule(std::string_view itsName, std::vector<Place> itsPlaces, std::size_t atLeast,
         std::size_t atMost, std::vector<std::string_view> itsOptions, Expand itsExpand)
        : name(itsName),
          places(std::move(itsPlaces)),
          fewest(atLeast),
          most(atMost),
          options(std::move(itsOptions)),
          expand(itsExpand) {}

    std::string_view name;
    std::vector<Place> places;  ///< None: everywhere.
    std::size_t fewest;         ///< Arguments.
    std::size_t most;
    std::vector<std::string_view> options;
    Expand expand;
};

std::span<const FixtureExpander::Rule> FixtureExpander::rules() {
    using E = FixtureExpander;
    static const std::vector<Place> document{Place::document};
    static const std::vector<Place> inObjectStream{Place::objectStreamHead,
                                                   Place::objectStreamMember};
    constexpr std::size_t kMany = std::numeric_limits<std::size_t>::max();
    static const std::vector<Rule> all{
        {"header", document, 1, 1, {"origin"}, &E::header},
        {"eol", document, 1, 1, {}, &E::eol},
        {"label", document, 1, 1, {}, &E::label},
        {"offset", {}, 1, 1, {}, &E::offset},
        {"hex", {}, 1, kMany, {}, &E::hex},
        {"fill", {}, 2, 2, {}, &E::fill},
        {"#", {}, 0, 0, {}, &E::comment},
        {"object", document, 2, 2, {}, &E::object},
        {"object", inObjectStream, 1, 1, {}, &E::member},
        {"stream", document, 0, 0, {"filter", "predictor", "columns", "early"}, &E::stream},
        {"endstream", {Place::stream}, 0, 0, {}, &E::endStream},
        {"length", {}, 0, 1, {}, &E::length},
        {"objectstream",
         document,
         2,
         2,
         {"filter", "predictor", "columns", "early", "without"},
         &E::objectStream},
        {"endobjectstream", inObjectStream, 0, 0, {}, &E::endObjectStream},
        {"free", document, 2, 2, {}, &E::freeObject},
        {"entry", document, 4, 4, {}, &E::entry},
        {"omit", document, 1, kMany, {}, &E::omit},
        {"xref", document, 0, 0, {"split", "only", "zero", "entry", "shift"}, &E::xref},
        {"xrefstream",
         document,
         2,
         3,
         {"split", "only", "zero", "filter", "predictor", "columns", "early", "without", "W"},
         &E::xrefStream},
        {"endxrefstream", {Place::xrefStreamHead}, 0, 0, {}, &E::endXrefStream},
        {"prev", {}, 0, 0, {}, &E::prev},
        {"size", {}, 0, 0, {}, &E::size},
        {"startxref", document, 0, 0, {}, &E::startXref},
    };
    return all;
}

void FixtureExpander::run() {
    std::size_t line = 1;
    for (piece_ = 0; piece_ < pieces_.size(); ++piece_) {
        if (const auto* text = std::get_if<FixtureText>(&pieces_[piece_])) {
            copy(text->text);
        } else {
            const auto& directive = std::get<FixtureDirective>(pieces_[piece_]);
            line = directive.line;
            expand(directive);
        }
    }
    if (place_ != Place::document) failAtLine(opening_.line, opening_.name + " is not ended");
    if (out_.empty()) failAtLine(line, "the fixture is empty");
}

void FixtureExpander::requireResolved() const {
    if (unresolved_) failAtLine(unresolved_->first, unresolved_->second);
}

void FixtureExpander::expand(const FixtureDirective& directive) {
    bool isKnown = false;
    for (const Rule& rule : rules()) {
        if (rule.name != directive.name) continue;
        isKnown = true;
        if (!rule.places.empty() && std::ranges::find(rule.places, place_) == rule.places.end()) {
            continue;
        }
        const std::size_t count = directive.arguments.size();
        if (count < rule.fewest || count > rule.most) {
            failAtLine(directive.line, directive.name + ": wrong number of arguments");
        }
        for (const auto& [key, value] : directive.options) {
            if (std::ranges::find(rule.options, key) == rule.options.end()) {
                failAtLine(directive.line, directive.name + " has no option " + key);
            }
        }
        (this->*rule.expand)(directive);
        return;
    }
    failAtLine(directive.line, isKnown ? directive.name + " cannot stand here"
                                       : "unknown directive '" + directive.name + "'");
}

void FixtureExpander::copy(std::string_view text) {
    for (const char c : text) {
        if (c == '\n') {
            target() += eol_;
        } else {
            target() += c;
        }
    }
}

FixtureExpander::Reference FixtureExpander::parseReference(std::string_view text,
                                                           std::size_t line) {
    Reference reference;
    const auto sign = std::min(text.find_first_of("+-"), text.size());
    reference.base = text.substr(0, sign);
    if (sign < text.size()) {
        const auto delta = static_cast<std::int64_t>(parseDecimal(text.substr(sign + 1), line));
        reference.delta = text[sign] == '-' ? -delta : delta;
    }
    return reference;
}

const FixtureSymbols::Object* FixtureExpander::knownObject(std::uint64_t number) const {
    const auto candidates = known_->objects.find(number);
    if (candidates == known_->objects.end()) return nullptr;
    const FixtureSymbols::Object* found = &candidates->second.front();
    for (const auto& candidate : candidates->second) {
        if (candidate.piece <= piece_) found = &candidate;
    }
    return found;
}

std::uint64_t FixtureExpander::shifted(std::optional<std::uint64_t> value, std::int64_t delta,
                                       std::size_t line, const std::string& lacking) {
    if (!value) {
        if (!unresolved_) unresolved_ = {line, lacking};
        return 0;
    }
    const std::int64_t sum = static_cast<std::int64_t>(*value) + delta;
    if (sum < 0) {
        if (!unresolved_) unresolved_ = {line, "the number is negative"};
        return 0;
    }
    return static_cast<std::uint64_t>(sum);
}

std::uint64_t FixtureExpander::resolveOffset(std::string_view text, std::size_t line) {
    const Reference reference = parseReference(text, line);
    std::optional<std::uint64_t> value;
    if (reference.base.find_first_not_of("0123456789") == std::string::npos) {
        const auto* found = knownObject(parseDecimal(reference.base, line));
        if (found != nullptr) value = found->offset;
    } else if (const auto found = known_->labels.find(reference.base);
               found != known_->labels.end()) {
        value = found->second;
    }
    return shifted(value, reference.delta, line, "'" + reference.base + "' is not known");
}

void FixtureExpander::header(const FixtureDirective& directive) {
    const std::string origin = directive.option("origin", "header");
    if (origin != "header" && origin != "file") {
        failAtLine(directive.line, "origin= is header or file");
    }
    if (hasHeader_ || !learned_.objects.empty() || !learned_.labels.empty()) {
        failAtLine(directive.line, "the header must stand once and first");
    }
    hasHeader_ = true;
    if (origin == "header") origin_ = out_.size();
    out_ += "%PDF-" + directive.arguments[0] + eol_ + "%\xE2\xE3\xCF\xD3";
}

void FixtureExpander::eol(const FixtureDirective& directive) {
    const std::string& kind = directive.arguments[0];
    if (kind != "lf" && kind != "cr" && kind != "crlf") {
        failAtLine(directive.line, "a line end is lf, cr or crlf");
    }
    eol_ = kind == "lf" ? "\n" : "\r";
    if (kind == "crlf") eol_ += '\n';
}

void FixtureExpander::label(const FixtureDirective& directive) {
    const std::string& name = directive.arguments[0];
    const bool isName =
        std::isalpha(static_cast<unsigned char>(name[0])) != 0 &&
        std::ranges::all_of(name, [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; });
    if (!isName) failAtLine(directive.line, "'" + name + "' is not a name for a label");
    if (!learned_.labels.emplace(name, here()).second) {
        failAtLine(directive.line, "label " + name + " is there already");
    }
}

void FixtureExpander::offset(const FixtureDirective& directive) {
    target() += std::to_string(resolveOffset(directive.arguments[0], directive.line));
}

void FixtureExpander::hex(const FixtureDirective& directive) {
    for (const std::string& pair : directive.arguments) {
        unsigned value = 0;
        const char* const end = pair.data() + pair.size();
        const auto [stop, error] = std::from_chars(pair.data(), end, value, 16);
        if (error != std::errc{} || stop != end || pair.size() != 2) {
            failAtLine(directive.line, "'" + pair + "' is not a byte of two digits");
        }
        target() += static_cast<char>(static_cast<unsigned char>(value));
    }
}

void FixtureExpander::fill(const FixtureDirective& directive) {
    constexpr std::uint64_t kMost = 1U << 28U;
    const std::uint64_t count = directive.number(0);
    if (count > kMost) failAtLine(directive.line, "that is too much to fill");
    FixtureDirective byte = directive;
    byte.arguments.erase(byte.arguments.begin());
    hex(byte);
    const char last = target().back();
    target().pop_back();
    target().append(count, last);
}

void FixtureExpander::comment(const FixtureDirective&) {}

void FixtureExpander::object(const FixtureDirective& directive) {
    beginObject(directive);
}

void FixtureExpander::beginObject(const FixtureDirective& directive) {
    const std::uint64_t number = directive.number(0);
    const std::uint64_t generation = directive.number(1);
    sections_.declare(number, {.type = 1, .second = here(), .third = generation});
    learned_.objects[number].push_back({piece_, here(), std::nullopt});
    object_ = number;
    out_ += std::to_string(number) + " " + std::to_string(generation) + " obj";
}

void FixtureExpander::length(const FixtureDirective& directive) {
    const std::string text = directive.arguments.empty() ? "" : directive.arguments[0];
    const Reference reference = parseReference(text, directive.line);
    const FixtureSymbols::Object* found = nullptr;
    if (!reference.base.empty()) {
        found = knownObject(parseDecimal(reference.base, directive.line));
    } else if (object_) {
        found = knownObject(*object_);
    } else {
        failAtLine(directive.line, "length stands before any object");
    }
    const auto value = found == nullptr ? std::nullopt : found->streamLength;
    target() += std::to_string(shifted(value, reference.delta, directive.line,
                                       "there is no stream to take the length of"));
}

void FixtureExpander::freeObject(const FixtureDirective& directive) {
    sections_.declare(directive.number(0),
                      {.type = 0, .third = directive.number(1), .linked = true});
}

void FixtureExpander::entry(const FixtureDirective& directive) {
    const std::string& second = directive.arguments[2];
    const std::uint64_t value =
        second.starts_with('@') ? resolveOffset(std::string_view(second).substr(1), directive.line)
                                : directive.number(2);
    sections_.declare(directive.number(0),
                      {.type = directive.number(1), .second = value, .third = directive.number(3)});
}

void FixtureExpander::omit(const FixtureDirective& directive) {
    for (std::size_t i = 0; i < directive.arguments.size(); ++i) {
        sections_.omit(directive.number(i));
    }
}

void FixtureExpander::prev(const FixtureDirective& directive) {
    const auto& offsets = sections_.offsets();
    const std::size_t back = place_ == Place::xrefStreamHead ? 1 : 2;
    if (offsets.size() < back) failAtLine(directive.line, "there is no section before this one");
    target() += std::to_string(offsets[offsets.size() - back]);
}

void FixtureExpander::size(const FixtureDirective&) {
    target() += std::to_string(sections_.size());
}

void FixtureExpander::startXref(const FixtureDirective& directive) {
    if (sections_.offsets().empty()) failAtLine(directive.line, "there is no section above");
    out_ += "startxref" + eol_ + std::to_string(sections_.offsets().back());
}

}  // namespace quirebind::test
