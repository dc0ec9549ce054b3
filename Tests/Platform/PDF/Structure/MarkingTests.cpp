// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// What the catalog says of tags and languages.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Structure/StructureTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// The catalog of what documents with these entries in theirs are merged into.
std::string joinedCatalog(const Bench& bench, const std::vector<std::string>& entries) {
    std::vector<std::string> sources;
    for (const std::string& entry : entries)
        sources.push_back(
            bench.fixture(std::to_string(sources.size()) + ".pdf", paragraph("", "", entry)));
    const std::string merged = bench.merge(sources);
    expectSound(merged, static_cast<int>(sources.size()));
    return catalogOf(merged);
}

TEST(Marking, isThereWhereAllSourcesAreMarked) {
    const Bench bench;
    const std::string marked = "/MarkInfo << /Marked true >>";
    EXPECT_THAT(joinedCatalog(bench, {marked, marked}), HasSubstr("/MarkInfo << /Marked true >>"));
    EXPECT_THAT(joinedCatalog(bench, {marked, ""}), Not(HasSubstr("/Marked")));
    EXPECT_THAT(joinedCatalog(bench, {"", marked}), Not(HasSubstr("/Marked")));
    EXPECT_THAT(joinedCatalog(bench, {marked, "/MarkInfo << /Marked false >>"}),
                Not(HasSubstr("/Marked")));
}

TEST(Marking, isGoneWithASourceThatHasNoTags) {
    const Bench bench;
    const std::string merged =
        bench.merge({bench.fixture("tagged.pdf", paragraph("", "", "/MarkInfo << /Marked true >>")),
                     bench.fixture("plain.pdf", onePageWith())});
    EXPECT_THAT(catalogOf(merged), Not(HasSubstr("/Marked")));
}

TEST(Marking, tellsOfUserPropertiesAndSuspectsOfAnySource) {
    const Bench bench;
    EXPECT_THAT(joinedCatalog(bench, {"/MarkInfo << /Marked true /Suspects true >>",
                                      "/MarkInfo << /Marked true /UserProperties true >>"}),
                HasSubstr("/MarkInfo << /Marked true /Suspects true /UserProperties true >>"));
}

TEST(Marking, languageOfAllIsTheCatalogs) {
    const Bench bench;
    EXPECT_THAT(joinedCatalog(bench, {"/Lang (en)", "/Lang <656e>"}), HasSubstr("/Lang (en)"));
    EXPECT_THAT(joinedCatalog(bench, {"/Lang (en-US)", "/Lang <FEFF0045004E002D00750073>"}),
                HasSubstr("/Lang (en-US)"));
    EXPECT_THAT(joinedCatalog(bench, {"/Lang (en)", "/Lang (de)"}), Not(HasSubstr("/Lang")));
    EXPECT_THAT(joinedCatalog(bench, {"/Lang (en)", ""}), Not(HasSubstr("/Lang")));
}

// It is said again in the topmost elements.
TEST(Marking, languageOfUnusualLengthIsNone) {
    const Bench bench;
    EXPECT_THAT(joinedCatalog(bench, {"/Lang (" + std::string(300, 'x') + ")"}),
                Not(HasSubstr("/Lang")));
}

TEST(Marking, languageOfEachIsItsElements) {
    const Bench bench;
    const std::string merged = bench.merge(
        {bench.fixture("en.pdf", paragraph("/Alt (english)", "", "/Lang (en)")),
         bench.fixture("de.pdf",
                       taggedPage("/K [41 0 R 43 0 R]",
                                  element(41, "/S /Div /P 40 0 R /Alt (german) /K 42 0 R") +
                                      element(42, "/S /P /P 41 0 R /Alt (below) /Pg 3 0 R /K 0") +
                                      element(43, "/S /P /P 40 0 R /Alt (french) /Lang (fr)"),
                                  "/Lang (de)")),
         bench.fixture("none.pdf", paragraph("/Alt (unknown)"))});
    const auto textWith = [&](std::string_view part) {
        return test::objectText(merged, objectWith(merged, part));
    };
    EXPECT_THAT(textWith("(english)"), HasSubstr("/Lang (en)"));
    EXPECT_THAT(textWith("(german)"), HasSubstr("/Lang (de)"));
    EXPECT_THAT(textWith("(below)"), Not(HasSubstr("/Lang")));
    EXPECT_THAT(textWith("(french)"), HasSubstr("/Lang (fr)"));
    EXPECT_THAT(textWith("(unknown)"), Not(HasSubstr("/Lang")));
}

}  // namespace
}  // namespace quirebind::pdftest
