// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <locale>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

#include <gtest/gtest.h>

#include "Platform/PDF/Syntax/RealNumber.h"

namespace quirebind {
namespace {

/// The locale of a country that writes 1.234,5.
class WithCommas : public testing::Test {
 protected:
    WithCommas()
        // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the locale owns it
        : before_(std::locale::global(std::locale(std::locale::classic(), new Punctuation))) {}

 public:
    WithCommas(const WithCommas&) = delete;
    WithCommas& operator=(const WithCommas&) = delete;
    WithCommas(WithCommas&&) = delete;
    WithCommas& operator=(WithCommas&&) = delete;
    ~WithCommas() override { std::locale::global(before_); }

 private:
    class Punctuation : public std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale before_;
};

TEST(RealNumber, IsReadInEverySpelling) {
    EXPECT_EQ(realNumber("612"), 612);
    EXPECT_EQ(realNumber("-17.25"), -17.25);
    EXPECT_EQ(realNumber("+.5"), 0.5);
    EXPECT_EQ(realNumber("4."), 4);
    EXPECT_EQ(realNumber("-.002"), -0.002);
    EXPECT_EQ(realNumber("--7"), -7);
    EXPECT_EQ(realNumber("000.10"), 0.1);
}

TEST(RealNumber, EndsBeforeWhatIsNoPartOfIt) {
    EXPECT_EQ(realNumber("1.5-3"), 1.5);
    EXPECT_EQ(realNumber("1.2.3"), 1.2);
    EXPECT_EQ(realNumber("2e5"), 2);  // there are no exponents (7.3.3)
    EXPECT_EQ(realNumber("12345678901234567890e5"), 12345678901234567890.0);
    EXPECT_EQ(realNumber("0x10"), 0);
}

TEST(RealNumber, IsNothingWithoutDigits) {
    for (const std::string_view text : {"", "-", ".", "+.", "inf", "-nan", "/Name", "e5"})
        EXPECT_EQ(realNumber(text), std::nullopt) << text;
}

TEST(RealNumber, IsNothingBeyondWhatADoubleHolds) {
    EXPECT_EQ(realNumber(std::string(308, '9')), std::stod("1e308"));
    EXPECT_EQ(realNumber(std::string(400, '9')), std::nullopt);
    EXPECT_EQ(realNumber("-" + std::string(400, '9')), std::nullopt);
    EXPECT_EQ(realNumber("0." + std::string(400, '0') + "1"), std::nullopt);
    EXPECT_EQ(realNumber("0." + std::string(4000, '0')), 0);
}

TEST(RealNumber, IsTheNearestOne) {
    EXPECT_EQ(realNumber("0.1000000000000000055511151231257827"), 0.1);
    EXPECT_EQ(realNumber("9007199254740993"), 9007199254740992.0);  // half way: to the even one
    EXPECT_EQ(realNumber("9007199254740993.0000000000000000001"), 9007199254740994.0);
    EXPECT_EQ(realNumber("841.8897637795276"), 841.8897637795276);
}

TEST_F(WithCommas, RealNumbersHavePoints) {
    EXPECT_EQ(realNumber("595.276"), 595.276);
    EXPECT_EQ(realNumber("595,276"), 595);
    EXPECT_EQ(realNumber("1234.567890123456789"), 1234.567890123456789);
}

#if defined(__cpp_lib_to_chars)

/// What the standard library makes of it.
std::optional<double> byTheLibrary(std::string_view text) {
    const bool negative = text.starts_with('-');
    while (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (result.ec != std::errc() || !std::isfinite(value)) return std::nullopt;
    return negative ? -value : value;
}

TEST(RealNumber, IsWhatTheStandardLibraryReads) {
    std::mt19937 random(20261123);  // NOLINT(*-msc51-cpp): always the same texts
    const auto below = [&random](std::size_t end) { return random() % end; };
    constexpr std::string_view kCharacters = "00123456789999.....-+eEinfx ";
    for (int round = 0; round < 200'000; ++round) {
        std::string text;
        // Numbers of many lengths, and texts that are hardly ones.
        const std::size_t length = below(round % 100 == 0 ? 700 : 28);
        const std::size_t kinds = round % 2 == 0 ? 15 : kCharacters.size();
        while (text.size() < length) text += kCharacters[below(kinds)];
        const auto expected = byTheLibrary(text);
        const auto found = realNumber(text);
        ASSERT_EQ(found, expected) << text;
        ASSERT_TRUE(!found || std::signbit(*found) == std::signbit(*expected)) << text;
    }
}

#endif

}  // namespace
}  // namespace quirebind
