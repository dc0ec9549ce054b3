// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Platform/PDF/Syntax/PDFString.h"

namespace quirebind::pdftest {
namespace {

TEST(StringBytes, ofLiteralStrings) {
    EXPECT_EQ(stringBytes(Value("()")), "");
    EXPECT_EQ(stringBytes(Value("(plain (nested))")), "plain (nested)");
    EXPECT_EQ(stringBytes(Value(R"((\n\r\t\b\f\(\)\\))")), "\n\r\t\b\f()\\");
    EXPECT_EQ(stringBytes(Value(R"((\101\7\0501\400\8x))")), std::string("A\x07(1\0", 5) + "8x");
    EXPECT_EQ(stringBytes(Value("(a\\\nb\\\r\nc\\\rd)")), "abcd");
    EXPECT_EQ(stringBytes(Value(R"((\q))")), "q");
}

TEST(StringBytes, takeEveryLineEndForALineFeed) {
    EXPECT_EQ(stringBytes(Value("(a\rb\r\nc\nd)")), "a\nb\nc\nd");
}

TEST(StringBytes, areNoneWhereThereIsNoString) {
    for (const std::string_view other : {"", "5", "/A", "<<>>", "[(a)]", "null"})
        EXPECT_EQ(stringBytes(Value(other)), "") << other;
}

// Encrypted bytes are of any value, and the readers that people use take them as they stand.
TEST(StringBytes, keepLineEndsWhereToldTo) {
    EXPECT_EQ(stringBytes(Value("(a\rb\r\nc\nd)"), LineEnds::kept), "a\rb\r\nc\nd");
}

TEST(StringBytes, ofHexadecimalStrings) {
    EXPECT_EQ(stringBytes(Value("<>")), "");
    EXPECT_EQ(stringBytes(Value("<48 65\n6C6c 6F>")), "Hello");
    EXPECT_EQ(stringBytes(Value("<485>")), "HP");
    EXPECT_EQ(stringBytes(Value("<4x8>")), "H");
}

TEST(LiteralString, bringsAnyBytesBack) {
    std::string all;
    for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
    for (const std::string& bytes : {std::string(), std::string("(()"), std::string("\\"), all}) {
        std::string text = "before";
        appendLiteralString(bytes, text);
        EXPECT_TRUE(text.starts_with("before(")) << text;
        EXPECT_EQ(stringBytes(Value(std::string_view(text).substr(6)), LineEnds::kept), bytes);
    }
}

TEST(LiteralString, hasNoBareCarriageReturn) {
    std::string text;
    appendLiteralString("a\r\nb\r", text);
    EXPECT_EQ(text, "(a\\r\nb\\r)");
}

}  // namespace
}  // namespace quirebind::pdftest
