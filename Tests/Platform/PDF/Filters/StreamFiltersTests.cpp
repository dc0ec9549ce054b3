// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "Platform/PDF/Filters/StreamFilters.h"

namespace quirebind::pdftest {
namespace {

/// References lead to the objects 1, /Crypt; 2, an array of filters; 3, parameters.
Value resolved(Value value) {
    if (value.text() == "1 0 R") return Value("/Crypt");
    if (value.text() == "2 0 R") return Value("[/Crypt /FlateDecode]");
    if (value.text() == "3 0 R") return Value("<< /Name /Mine >>");
    return value.reference() ? Value() : value;
}

std::optional<std::string> cryptFilter(std::string_view entries) {
    const std::string dictionary = "<< " + std::string(entries) + " >>";
    return StreamFilters(Value(dictionary), resolved).cryptFilter();
}

/// The filters that remain, each with its parameters in brackets.
std::string others(std::string_view entries) {
    const std::string dictionary = "<< " + std::string(entries) + " >>";
    const StreamFilters filters(Value(dictionary), resolved);
    std::string result;
    for (const auto& [name, parameters] : filters.others())
        result += std::string(name.text()) + "(" + std::string(parameters.text()) + ")";
    return result;
}

TEST(StreamFilters, nameNoCryptFilterWhereThereIsNone) {
    EXPECT_EQ(cryptFilter(""), std::nullopt);
    EXPECT_EQ(cryptFilter("/Filter null"), std::nullopt);
    EXPECT_EQ(cryptFilter("/Filter /FlateDecode /DecodeParms << /Name /Mine >>"), std::nullopt);
    EXPECT_EQ(cryptFilter("/Filter [/FlateDecode /LZWDecode] /Name /Crypt"), std::nullopt);
}

TEST(StreamFilters, nameTheCryptFilter) {
    EXPECT_EQ(cryptFilter("/Filter /Crypt /DecodeParms << /Name /Mine >>"), "Mine");
    EXPECT_EQ(cryptFilter("/Filter [/Crypt] /DecodeParms [<< /Name /Mine >>]"), "Mine");
    EXPECT_EQ(cryptFilter("/Filter [/Crypt /FlateDecode] /DecodeParms << /Name /Mine >>"), "Mine");
    EXPECT_EQ(cryptFilter("/Filter [/FlateDecode /Crypt] /DecodeParms [null << /Name /Mine >>]"),
              "Mine");
    EXPECT_EQ(cryptFilter("/Filter /Crypt /DP << /Name /Mine >>"), "Mine");
    EXPECT_EQ(cryptFilter("/Filter /Crypt /DecodeParms null /DP << /Name /Mine >>"), "Mine");
    EXPECT_EQ(cryptFilter("/Filter /Cr#79pt /DecodeParms << /Name /M#69ne >>"), "Mine");
}

TEST(StreamFilters, areFoundThroughReferences) {
    EXPECT_EQ(cryptFilter("/Filter 1 0 R /DecodeParms 3 0 R"), "Mine");
    EXPECT_EQ(cryptFilter("/Filter 2 0 R /DecodeParms [3 0 R]"), "Mine");
    EXPECT_EQ(cryptFilter("/Filter [1 0 R] /DecodeParms 3 0 R"), "Mine");
    EXPECT_EQ(others("/Filter 2 0 R"), "/FlateDecode()");
}

TEST(StreamFilters, nameIdentityWhereNothingElseIsSaid) {
    for (const std::string parameters :
         {"", "/DecodeParms null", "/DecodeParms [null]", "/DecodeParms []", "/DecodeParms << >>",
          "/DecodeParms << /Name 5 >>", "/DecodeParms 9 0 R"})
        EXPECT_EQ(cryptFilter("/Filter /Crypt " + parameters), "Identity") << parameters;
}

TEST(StreamFilters, leaveTheOthersWithTheirParameters) {
    EXPECT_EQ(others("/Filter /Crypt"), "");
    EXPECT_EQ(others("/Filter [/Crypt /FlateDecode]"), "/FlateDecode()");
    EXPECT_EQ(others("/Filter [/Crypt /A /B] /DecodeParms [<< /Name /Mine >> null <</C 1>>]"),
              "/A(null)/B(<</C 1>>)");
    EXPECT_EQ(others("/Filter [/A /Crypt 5 0 R] /DP [<</C 1>> null 6 0 R]"),
              "/A(<</C 1>>)5 0 R(6 0 R)");
    EXPECT_EQ(others("/Filter [/Crypt /A /Crypt]"), "/A()");
}

TEST(StreamFilters, areNamedByTheAbbreviationWhereThatIsNoFile) {
    EXPECT_EQ(cryptFilter("/F /Crypt"), "Identity");
    EXPECT_EQ(others("/F [/Crypt /A] /DP [null <</C 1>>]"), "/A(<</C 1>>)");
    EXPECT_EQ(others("/F [/A] /Filter [/B]"), "/B()");
    EXPECT_EQ(others("/F (file) /DP <</C 1>>"), "");
    EXPECT_EQ(others("/F << /F (file) >>"), "");
}

TEST(StreamFilters, takeAnyNumberOfFilters) {
    std::string names;
    for (int i = 0; i < 100'000; ++i) names += "/Crypt";
    EXPECT_EQ(others("/Filter [" + names + "/A]"), "/A()");
}

}  // namespace
}  // namespace quirebind::pdftest
