// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// What must arrive byte for byte: the bodies of streams, and strings and names as they are spelt.

#include <random>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;

/// A file, by hand, whose page has under /Here a stream with that dictionary and body (and what
/// stands between them and the keywords).
std::string withStream(const std::string& dictionary, const std::string& body) {
    const std::string text = replaced(onePageWith("{{object 6 0}}\n" + dictionary +
                                                  "\nBODY\nendobj\n{{object 7 0}}\n(after)\n"
                                                  "endobj\n"),
                                      "/MediaBox", "/Here 6 0 R /After 7 0 R /MediaBox");
    // Fixtures are text, so the body goes in as hexadecimal digits.
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string digits = "{{hex";
    for (const char c : "stream\n" + body + "\nendstream") {
        const auto byte = static_cast<unsigned char>(c);
        digits += {' ', kDigits[byte >> 4U], kDigits[byte & 15U]};
    }
    return replaced(text, "BODY", digits + "}}");
}

/// How a stream of that body must stand in a merged file.
std::string writtenOut(const std::string& body) {
    return "\nstream\n" + body + "\nendstream\nendobj\n";
}

std::string withLength(const std::string& body) {
    return "<< /Length " + std::to_string(body.size()) + " >>";
}

void expectBody(const std::string& body) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(withStream(withLength(body), body));
    expectPages(merged, {200}, {"one"});
    EXPECT_THAT(Bench::read(merged),
                HasSubstr("/Length " + std::to_string(body.size()) + " >>" + writtenOut(body)));
    EXPECT_THAT(everyObject(merged), HasSubstr("(after)"));
}

/// The same bytes each time, of all values.
std::string randomBytes(std::size_t count) {
    std::mt19937 random(1);  // NOLINT(cert-msc51-cpp,cert-msc32-c): a test is to be repeatable
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i) bytes.push_back(static_cast<char>(random() & 0xffU));
    return bytes;
}

TEST(StreamBody, isKeptWhenItIsBinary) {
    expectBody(randomBytes(5000));
}

TEST(StreamBody, isKeptWhenItIsLarge) {
    // Larger than what is read at once, so that it goes by another way.
    expectBody(randomBytes(400'000));
}

TEST(StreamBody, isKeptWhenItIsEmpty) {
    expectBody("");
}

TEST(StreamBody, isKeptWhenItContainsItsOwnEnd) {
    expectBody("before\nendstream\nendobj\n7 0 obj\n(not this)\nendobj\nxref\ntrailer\nbehind");
}

TEST(StreamBody, isKeptWhenItEndsInLineEnds) {
    expectBody("line\n");
    expectBody("line\r\n");
    expectBody("\r\n\r\n");
    expectBody("blank ");
    expectBody("\nfirst");
}

TEST(StreamBody, endsBeforeTheLineEndWhereTheLengthIsWrong) {
    const Bench bench;
    const std::string body = "some text that is no stream of any kind";
    for (const std::string length : {"0", "5", "70", "4000000000", "99 0 R", "null", "/A"}) {
        const std::string merged =
            bench.mergeFixture(withStream("<< /Length " + length + " >>", body));
        expectPages(merged, {200}, {"one"});
        EXPECT_THAT(Bench::read(merged), HasSubstr(writtenOut(body))) << length;
    }
}

TEST(StreamBody, isNotDecoded) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        withStream("<< /Length 9 /Filter [/ASCIIHexDecode] /DecodeParms [null] >>", "48 49 4A>"));
    expectSound(merged, 1);
    EXPECT_THAT(Bench::read(merged), HasSubstr(writtenOut("48 49 4A>")));
}

TEST(StreamBody, isKeptWhereTheFilterIsUnknown) {
    const Bench bench;
    const std::string merged =
        bench.mergeFixture(withStream("<< /Length 5 /Filter /Unknown >>", "12345"));
    EXPECT_TRUE(test::pageCounts(merged).allAre(1));
    EXPECT_THAT(Bench::read(merged), HasSubstr(writtenOut("12345")));
}

TEST(StreamDictionary, keepsItsOtherEntries) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        withStream("<< /A 7 0 R /Length 5 /DecodeParms << /Length 77 >> /B (b) >>", "12345"));
    expectSound(merged, 1);
    EXPECT_THAT(Bench::read(merged),
                HasSubstr("/Length 5 /DecodeParms << /Length 77 >> /B (b) >>"));
}

/// The values go into an array on the page, and come out as they were.
class VerbatimValue : public ::testing::TestWithParam<std::string_view> {};

TEST_P(VerbatimValue, isKeptByteForByte) {
    const std::string value(GetParam());
    const Bench bench;
    const std::string onPage = bench.merge({bench.fixture(
        "a.pdf", replaced(onePageWith(), "/MediaBox", "/Here [" + value + "] /MediaBox"))});
    expectPages(onPage, {200}, {"one"});
    EXPECT_THAT(Bench::read(onPage), HasSubstr("/Here [" + value + "] /MediaBox"));

    const std::string inObject = bench.merge(
        {bench.fixture("b.pdf", replaced(onePageWith("{{object 6 0}}\n[" + value + "]\nendobj\n"),
                                         "/MediaBox", "/Here 6 0 R /MediaBox"))});
    expectPages(inObject, {200}, {"one"});
    EXPECT_THAT(Bench::read(inObject), HasSubstr(" 0 obj\n[" + value + "]\nendobj"));
}

INSTANTIATE_TEST_SUITE_P(
    All, VerbatimValue,
    ::testing::Values("(plain)", "()", R"((with (nested (brackets)) and \( \) \\ escapes))",
                      R"((ends in a backslash\\))", R"((octal \101\7\0501))", "(a line\\\nbroken)",
                      "(two\nlines)", "(5 0 R << >> ] endobj)", "<48656C6C6F>", "<48 65\n6c>", "<>",
                      "<4>", "/Name", "/Name#20with#23escapes", "/", "/A;B_C-D*E", "-1.50", "+17",
                      ".5", "-.002", "4.", "0000123", "1234567890123456789", "true false null",
                      "[[[]]]", "<</A<</B<<>>>>>>", "/A/B(c)<64>[/E]", "5 0", "5 6 7 8"));

TEST(Verbatim, areBytesAbove127AndControls) {
    const Bench bench;
    std::string value;
    for (int c = 1; c < 256; ++c) {
        if (c == '(' || c == ')' || c == '\\' || c == '\r') continue;
        value.push_back(static_cast<char>(c));
    }
    std::string bytes = test::fixturePDF(replaced(
        onePageWith(), "/MediaBox", "/Here (" + std::string(value.size(), 'x') + ") /MediaBox"));
    bytes.replace(bytes.find(std::string(value.size(), 'x')), value.size(), value);
    const std::string merged = bench.merge({bench.add("a.pdf", bytes)});
    expectPages(merged, {200}, {"one"});
    EXPECT_THAT(Bench::read(merged), HasSubstr("/Here (" + value + ") /MediaBox"));
}

}  // namespace
}  // namespace quirebind::pdftest
