// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Support/FixtureLexer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <utility>

namespace quirebind::test {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::array<std::string_view, 6> kSilent{"eol", "label", "free", "entry", "omit", "#"};

bool isBlank(std::string_view text) {
    return text.find_first_not_of(kBlanks) == std::string_view::npos;
}

bool isSilent(const FixturePiece& piece) {
    if (const auto* text = std::get_if<FixtureText>(&piece)) return isBlank(text->text);
    return std::ranges::find(kSilent, std::get<FixtureDirective>(piece).name) != kSilent.end();
}

std::vector<std::string> words(std::string_view text) {
    std::vector<std::string> found;
    while (!isBlank(text)) {
        text.remove_prefix(text.find_first_not_of(kBlanks));
        const auto length = std::min(text.find_first_of(kBlanks), text.size());
        found.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return found;
}

FixtureDirective lexDirective(std::string_view inside, std::size_t line) {
    FixtureDirective directive;
    directive.line = line;
    if (inside.starts_with('#')) {
        directive.name = "#";
        return directive;
    }
    const auto nameEnd = std::min(inside.find_first_of("+- \t"), inside.size());
    directive.name = inside.substr(0, nameEnd);
    if (directive.name.empty()) failAtLine(line, "a directive without a name");
    for (const std::string& word : words(inside.substr(nameEnd))) {
        const auto equals = word.find('=');
        if (equals == std::string::npos) {
            directive.arguments.push_back(word);
        } else if (!directive.options.emplace(word.substr(0, equals), word.substr(equals + 1))
                        .second) {
            failAtLine(line, "option " + word.substr(0, equals) + " is given twice");
        }
    }
    return directive;
}

std::vector<FixturePiece> lexLine(std::string_view text, std::size_t line) {
    std::vector<FixturePiece> pieces;
    std::size_t at = 0;
    while (at < text.size()) {
        const auto open = std::min(text.find("{{", at), text.size());
        if (open > at) pieces.emplace_back(FixtureText{std::string(text.substr(at, open - at))});
        if (open == text.size()) break;
        const auto close = text.find("}}", open);
        if (close == std::string_view::npos) {
            failAtLine(line, "a directive does not end in its line");
        }
        FixtureDirective directive = lexDirective(text.substr(open + 2, close - open - 2), line);
        at = close + 2;
        directive.startsLine = isBlank(text.substr(0, open));
        directive.endsLine = isBlank(text.substr(at));
        pieces.emplace_back(std::move(directive));
    }
    return pieces;
}

bool hasDirective(const std::vector<FixturePiece>& pieces) {
    return std::ranges::any_of(
        pieces, [](const auto& piece) { return std::holds_alternative<FixtureDirective>(piece); });
}

}  // namespace

void failAtLine(std::size_t line, const std::string& what) {
    throw std::invalid_argument("line " + std::to_string(line) + ": " + what);
}

bool FixtureDirective::has(std::string_view option) const {
    return options.contains(option);
}

std::string FixtureDirective::option(std::string_view key, std::string_view otherwise) const {
    const auto found = options.find(key);
    return found == options.end() ? std::string(otherwise) : found->second;
}

std::uint64_t FixtureDirective::number(std::size_t argument) const {
    if (argument >= arguments.size()) failAtLine(line, name + " lacks an argument");
    return parseDecimal(arguments[argument], line);
}

std::uint64_t FixtureDirective::optionNumber(std::string_view key, std::uint64_t otherwise) const {
    const auto found = options.find(key);
    return found == options.end() ? otherwise : parseDecimal(found->second, line);
}

std::vector<FixturePiece> lexFixture(std::string_view text) {
    std::vector<FixturePiece> pieces;
    std::size_t line = 1;
    while (text.starts_with('\n')) {
        text.remove_prefix(1);
        ++line;
    }
    for (; !text.empty(); ++line) {
        const auto end = text.find('\n');
        const bool endsInNewline = end != std::string_view::npos;
        auto found = lexLine(text.substr(0, end), line);
        text.remove_prefix(endsInNewline ? end + 1 : text.size());
        if (hasDirective(found) && std::ranges::all_of(found, isSilent)) {
            std::erase_if(found, [](const auto& piece) {
                return std::holds_alternative<FixtureText>(piece);
            });
        } else if (endsInNewline) {
            found.emplace_back(FixtureText{"\n"});
        }
        std::ranges::move(found, std::back_inserter(pieces));
    }
    return pieces;
}

std::uint64_t parseDecimal(std::string_view text, std::size_t line) {
    std::uint64_t value = 0;
    const std::string digits(text);
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (text.empty() || error != std::errc{} || stop != end) {
        failAtLine(line, "'" + std::string(text) + "' is not a number");
    }
    return value;
}

std::vector<std::string> splitAtCommas(std::string_view text) {
    std::vector<std::string> parts;
    while (true) {
        const auto comma = text.find(',');
        parts.emplace_back(text.substr(0, comma));
        if (comma == std::string_view::npos) return parts;
        text.remove_prefix(comma + 1);
    }
}

}  // namespace quirebind::test
