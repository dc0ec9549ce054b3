// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quirebind::test {

/// Throws std::invalid_argument, "line N: what".
[[noreturn]] void failAtLine(std::size_t line, const std::string& what);

/// A directive of a fixture, taken apart but not yet understood.
struct FixtureDirective {
    std::string name;
    std::vector<std::string> arguments;                       ///< Those without an equals sign.
    std::map<std::string, std::string, std::less<>> options;  ///< key=value.
    std::size_t line = 0;                                     ///< From 1.
    bool startsLine = false;                                  ///< Only blanks before it.
    bool endsLine = false;                                    ///< Only blanks behind it.

    [[nodiscard]] bool has(std::string_view option) const;
    /// The option's value, or `otherwise` if it is not given.
    [[nodiscard]] std::string option(std::string_view key, std::string_view otherwise) const;
    /// Both throw std::invalid_argument if the text is no decimal number.
    [[nodiscard]] std::uint64_t number(std::size_t argument) const;
    [[nodiscard]] std::uint64_t optionNumber(std::string_view key, std::uint64_t otherwise) const;
};

/// Text to be copied; line ends are single line feeds.
struct FixtureText {
    std::string text;
};

using FixturePiece = std::variant<FixtureText, FixtureDirective>;

/// Splits a fixture into its text and its directives, and drops the lines that hold nothing but
/// directives that write nothing.
[[nodiscard]] std::vector<FixturePiece> lexFixture(std::string_view text);

/// `text` as a decimal number of at most 64 bits, with nothing around it. Throws with that line.
[[nodiscard]] std::uint64_t parseDecimal(std::string_view text, std::size_t line);

/// `text` cut at every comma.
[[nodiscard]] std::vector<std::string> splitAtCommas(std::string_view text);

}  // namespace quirebind::test
