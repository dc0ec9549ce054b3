// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/RealNumber.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {
namespace {

// std::from_chars would do all this, but not every standard library has it for double.

constexpr std::size_t kExactDigits = std::numeric_limits<double>::digits10;

constexpr auto kPowersOfTen = [] {
    std::array<double, kExactDigits + 1> powers{};
    double power = 1;
    for (double& each : powers) {
        each = power;
        power *= 10;
    }
    return powers;
}();

/// The digits, at the beginning of a text, of a number without a sign.
struct Digits {
    std::string_view whole;
    std::string_view fraction;

    [[nodiscard]] std::size_t count() const { return whole.size() + fraction.size(); }
};

std::string_view takeDigits(std::string_view& text) {
    std::size_t count = 0;
    while (count < text.size() && isDigit(text[count])) ++count;
    const std::string_view digits = text.substr(0, count);
    text.remove_prefix(count);
    return digits;
}

Digits digitsOf(std::string_view text) {
    Digits digits;
    digits.whole = takeDigits(text);
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        digits.fraction = takeDigits(text);
    }
    return digits;
}

/// Of so few digits that they and the power of ten are exact: then the quotient is the nearest.
double shortNumber(const Digits& digits) {
    std::uint64_t value = 0;
    for (const std::string_view part : {digits.whole, digits.fraction})
        for (const char digit : part) value = value * 10 + static_cast<std::uint64_t>(digit - '0');
    return static_cast<double>(value) / kPowersOfTen[digits.fraction.size()];
}

std::optional<double> longNumber(const Digits& digits) {
    std::istringstream stream(std::string(digits.whole) + '.' + std::string(digits.fraction));
    stream.imbue(std::locale::classic());
    double value = 0;
    stream >> value;
    // A failure is a number that is too large, or, to some libraries, one that is almost zero.
    if (!std::isfinite(value) || (stream.fail() && value > 1)) return std::nullopt;
    const bool isZero =
        (std::string(digits.whole) + std::string(digits.fraction)).find_first_not_of('0') ==
        std::string::npos;
    if (value == 0 && !isZero) return std::nullopt;
    return value;
}

}  // namespace

std::optional<double> realNumber(std::string_view text) {
    const bool negative = text.starts_with('-');
    while (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    const Digits digits = digitsOf(text);
    if (digits.count() == 0) return std::nullopt;
    const auto value = digits.count() <= kExactDigits ? shortNumber(digits) : longNumber(digits);
    if (!value) return std::nullopt;
    return negative ? -*value : *value;
}

}  // namespace quirebind
