// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Indirect references (ISO 32000-2, 7.3.10): what they name, and what they name no more.

#include <regex>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

std::string withEntry(const std::string& entry, const std::string& objects = "") {
    return replaced(onePageWith(objects), "/MediaBox", entry + " /MediaBox");
}

std::string pageOf(const std::string& path) {
    return test::pageDictionaries(path).at(0);
}

const std::string kFontOfGeneration7 =
    replaced(replaced(onePageWith(), "{{object 5 0}}", "{{object 5 7}}"), "5 0 R", "5 7 R");

INSTANTIATE_TEST_SUITE_P(
    Reference, ReadableFile,
    ::testing::Values(Kind("withAGeneration", kFontOfGeneration7),
                      Kind("withTheLastGeneration",
                           replaced(replaced(onePageWith(), "{{object 5 0}}", "{{object 5 65535}}"),
                                    "5 0 R", "5 65535 R")),
                      Kind("withLeadingZeros", replaced(onePageWith(), "5 0 R", "0005 000 R")),
                      Kind("toAPageOfAnotherGeneration",
                           replaced(replaced(onePageWith(), "{{object 3 0}}", "{{object 3 2}}"),
                                    "[3 0 R]", "[3 2 R]")),
                      // What the object says counts, not what the table says of it.
                      Kind("withAGenerationThatTheTableDoesNotHave",
                           replaced(kFontOfGeneration7, "\n{{xref}}",
                                    "\n{{entry 5 1 @5 0}}\n{{xref}}"))),
    nameOfKind);

TEST(Copy, hasGenerationZeroWhateverTheOriginalHas) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(kFontOfGeneration7);
    expectSound(merged, 1);
    EXPECT_THAT(Bench::read(merged), Not(HasSubstr(" 7 obj")));
    EXPECT_THAT(Bench::read(merged), Not(HasSubstr(" 7 R")));
}

TEST(Reference, toAnObjectThatIsNotThereIsNull) {
    const Bench bench;
    const std::string merged =
        bench.mergeFixture(withEntry("/Here [(x) 99 0 R 0 0 R 4294967297 0 R 9999999999 0 R (y)]"));
    expectPages(merged, {200}, {"one"});
    EXPECT_THAT(pageOf(merged), HasSubstr("/Here [ (x) null null null null (y) ]"));
}

TEST(Reference, ofAnotherGenerationIsNull) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        withEntry("/Here [6 0 R 6 1 R 6 2 R 7 1 R 7 99999 R]",
                  "{{object 6 1}}\n(six)\nendobj\n{{object 7 0}}\n(seven)\nendobj\n"));
    expectSound(merged, 1);
    EXPECT_THAT(pageOf(merged),
                ::testing::MatchesRegex(".*/Here \\[ null [0-9]+ 0 R null null null \\].*"));
    EXPECT_THAT(everyObject(merged), HasSubstr("(six)"));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("(seven)")));
}

TEST(Reference, toAFreeObjectIsNull) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        withEntry("/Here [6 0 R]", "{{object 6 0}}\n(six)\nendobj\n{{free 6 1}}\n"));
    expectSound(merged, 1);
    EXPECT_THAT(pageOf(merged), HasSubstr("/Here [ null ]"));
}

TEST(Reference, toAnEmptyObjectIsNull) {
    const Bench bench;
    const std::string merged =
        bench.mergeFixture(withEntry("/Here [6 0 R]", "{{object 6 0}}\nendobj\n"));
    expectSound(merged, 1);
    std::smatch number;
    const std::string page = pageOf(merged);
    ASSERT_TRUE(std::regex_search(page, number, std::regex("/Here \\[ ([0-9]+) 0 R \\]"))) << page;
    EXPECT_EQ(test::objectText(merged, number.str(1)), "null");
}

// A reference to a reference is no PDF, but readers follow it.
TEST(Reference, toAReferenceIsKept) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(withEntry(
        "/Here [6 0 R]", "{{object 6 0}}\n7 0 R\nendobj\n{{object 7 0}}\n(seven)\nendobj\n"));
    EXPECT_TRUE(test::pageCounts(merged).allAre(1));
    EXPECT_THAT(Bench::read(merged), HasSubstr("(seven)"));
}

TEST(Reference, isFoundInArraysOfArraysAndDictionaries) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        withEntry("/Here [[[6 0 R]<</A[<</B 7 0 R>>]>>]8 0 R]",
                  "{{object 6 0}}\n(six)\nendobj\n{{object 7 0}}\n(seven)\nendobj\n"
                  "{{object 8 0}}\n[9 0 R[9 0 R]]\nendobj\n{{object 9 0}}\n(nine)\nendobj\n"));
    expectSound(merged, 1);
    for (const char* const text : {"(six)", "(seven)", "(nine)"}) {
        EXPECT_THAT(everyObject(merged), HasSubstr(text));
    }
}

TEST(Reference, isNotFoundInStringsNamesCommentsAndNumbers) {
    const Bench bench;
    const std::string merged =
        bench.mergeFixture(withEntry("/Here [(6 0 R) (a\\)6 0 R) /6 0 /R % 6 0 R\n 6 0 6.0 0]",
                                     "{{object 6 0}}\n(six)\nendobj\n"));
    expectSound(merged, 1);
    EXPECT_THAT(pageOf(merged), HasSubstr("(6 0 R) (a\\)6 0 R) /6 0 /R 6 0 6.0 0"));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("(six)")));
}

TEST(Object, isCopiedOnceHoweverOftenItIsReferredTo) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        withEntry("/Here [6 0 R 6 0 R << /A 6 0 R >>]", "{{object 6 0}}\n(six)\nendobj\n"));
    expectSound(merged, 1);
    const std::string bytes = Bench::read(merged);
    const std::size_t first = bytes.find("(six)");
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(bytes.find("(six)", first + 1), std::string::npos);
}

TEST(Object, mayReferToItselfAndToWhatRefersToIt) {
    const Bench bench;
    const std::string merged =
        bench.mergeFixture(withEntry("/Here 6 0 R",
                                     "{{object 6 0}}\n<< /Self 6 0 R /Other 7 0 R >>\nendobj\n"
                                     "{{object 7 0}}\n<< /Back 6 0 R /Name (other) >>\nendobj\n"));
    expectPages(merged, {200}, {"one"});
    EXPECT_THAT(everyObject(merged), HasSubstr("(other)"));
}

}  // namespace
}  // namespace quirebind::pdftest
