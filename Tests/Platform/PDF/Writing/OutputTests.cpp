// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The file that a merge gives: its size, its trees, its identifiers.

#include <algorithm>
#include <filesystem>
#include <regex>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

std::vector<std::string> labelled(const std::string& label, int pages) {
    std::vector<std::string> texts;
    for (int i = 1; i <= pages; ++i) texts.push_back(label + '-' + std::to_string(i));
    return texts;
}

/// A document whose pages have all that they need themselves: nothing is added to them.
std::string withoutInheritance(const std::string& label, int pages) {
    std::string kids;
    std::string objects;
    for (int i = 0; i < pages; ++i) {
        kids += std::to_string(100 + 2 * i) + " 0 R ";
        objects += pageObjects(100 + 2 * i, 200 + i, label + '-' + std::to_string(i + 1));
    }
    return test::fixturePDF(replaced(onePageWith(objects), "/Kids [3 0 R] /Count 1",
                                     "/Kids [" + kids + "] /Count " + std::to_string(pages)));
}

/// The same as qpdf writes it with object streams.
std::string packedByQPDF(const Bench& bench, const std::string& name, int pages, int level = 6) {
    const std::string plain = bench.add("plain-" + name, withoutInheritance("q", pages));
    std::string packed = bench.folder() / name;
    static_cast<void>(runOrFail({"qpdf", "--object-streams=generate", "--recompress-flate",
                                 "--compression-level=" + std::to_string(level), plain, packed}));
    return packed;
}

std::string identifier(const std::string& path) {
    const std::string trailer = test::objectText(path, "trailer");
    std::smatch match;
    if (!std::regex_search(trailer, match,
                           std::regex("/ID \\[ (<[0-9a-f]{32}>) (<[0-9a-f]+>) \\]")))
        throw std::runtime_error("no /ID: " + trailer);
    EXPECT_EQ(match.str(1), match.str(2));
    return match.str(1);
}

TEST(Output, keepsPackedObjectsPacked) {
    const Bench bench;
    const std::string source = packedByQPDF(bench, "packed.pdf", 300);
    const std::string merged = bench.merge({source});
    expectSound(merged, 300);
    EXPECT_EQ(test::pageTexts(merged), labelled("q", 300));
    EXPECT_THAT(Bench::read(merged), HasSubstr("/Type/XRef"));
    EXPECT_LE(Bench::read(merged).size(), Bench::read(source).size());
}

TEST(Output, isNotLargerHoweverWellItsSourcesWerePacked) {
    const Bench bench;
    for (const int level : {1, 6, 9}) {
        const std::string name = std::to_string(level) + ".pdf";
        const std::string one = packedByQPDF(bench, "one-" + name, 2000, level);
        const std::string other = packedByQPDF(bench, "other-" + name, 1500, level);
        const std::string merged = bench.merge({one, other});
        expectSound(merged, 3500);
        EXPECT_LE(Bench::read(merged).size(), Bench::read(one).size() + Bench::read(other).size())
            << level;
    }
}

TEST(Output, isClassicWhereTheSourcesAre) {
    const Bench bench;
    const std::string source = bench.add("a.pdf", withoutInheritance("a", 30));
    const std::string merged = bench.merge({source});
    expectSound(merged, 30);
    EXPECT_THAT(Bench::read(merged), Not(HasSubstr("/XRef")));
    EXPECT_THAT(Bench::read(merged), HasSubstr("\nxref\n"));
    EXPECT_LE(Bench::read(merged).size(), Bench::read(source).size());
}

TEST(Output, ofManyCopiesIsNotLargerThanTheyAreTogether) {
    const Bench bench;
    // Nearly all of it is references, which take more digits in the output.
    constexpr int kList = 100;
    constexpr int kFirst = 10;
    std::string list = "[";
    std::string objects;
    for (int number = kFirst; number < kList; ++number) {
        list += std::to_string(number) + " 0 R " + std::to_string(number) + " 0 R ";
        objects += object(number, "[100 0 R 100 0 R]");
    }
    const std::string page = onePageWith(objects + object(kList, list + "]"));
    const std::string source =
        bench.add("a.pdf", test::fixturePDF(replaced(page, "/MediaBox", "/X 100 0 R /MediaBox")));
    const std::string merged = bench.merge(std::vector<std::string>(300, source));
    expectSound(merged, 300);
    EXPECT_LE(Bench::read(merged).size(), 300 * Bench::read(source).size());
}

TEST(Output, ofPackedAndClassicSourcesHasAllTheirPages) {
    const Bench bench;
    const std::string classic = bench.add("c.pdf", test::simplePDF(70, {.label = "c"}));
    const std::string packed = packedByQPDF(bench, "p.pdf", 80);
    std::vector<std::string> expected;
    for (const auto& texts : {labelled("c", 70), labelled("q", 80), labelled("c", 70)}) {
        expected.insert(expected.end(), texts.begin(), texts.end());
    }
    const std::string merged = bench.merge({classic, packed, classic});
    expectSound(merged, 220);
    EXPECT_EQ(test::pageTexts(merged), expected);
}

TEST(Output, ofThousandsOfPagesHasABalancedTree) {
    const Bench bench;
    const std::string merged = bench.merge(
        {bench.add("a.pdf", test::simplePDF(5000, {.label = "p", .objectStreams = true}))});
    expectSound(merged, 5000);
    EXPECT_EQ(test::pageTexts(merged), labelled("p", 5000));
    // The kids of every node are few, and so are the nodes above a page.
    std::size_t mostKids = 0;
    std::size_t nodes = 0;
    const std::string json = test::fileJSON(merged);
    const std::regex kids(R"("/Kids": \[([^\]]*)\])");
    for (std::sregex_iterator i(json.begin(), json.end(), kids), end; i != end; ++i) {
        const std::string list = i->str(1);
        mostKids = std::max(mostKids, static_cast<std::size_t>(std::ranges::count(list, 'R')));
        ++nodes;
    }
    EXPECT_LE(mostKids, 100U);
    EXPECT_GT(nodes, 5000U / 100);
    EXPECT_LT(nodes, 5000U / 10);
}

TEST(Output, ofHundredsOfSourcesHasThemInOrder) {
    const Bench bench;
    std::vector<std::string> sources;
    std::vector<std::string> expected;
    for (int i = 0; i < 200; ++i) {
        const std::string label = "s" + std::to_string(i);
        sources.push_back(bench.add(
            label + ".pdf", test::simplePDF(2, {.label = label, .objectStreams = i % 2 == 0})));
        expected.push_back(label + "-1");
        expected.push_back(label + "-2");
    }
    const std::string merged = bench.merge(sources);
    expectSound(merged, 400);
    EXPECT_EQ(test::pageTexts(merged), expected);
}

TEST(Output, isTheSameForTheSameSources) {
    const Bench bench;
    const std::string a = bench.add("a.pdf", test::simplePDF(3, {.label = "a"}));
    const std::string b = packedByQPDF(bench, "b.pdf", 3);
    const std::string bytes = Bench::read(bench.merge({a, b}, "first.pdf"));
    EXPECT_EQ(bytes, Bench::read(bench.merge({a, b}, "second.pdf")));
    // Neither the names of the sources nor the times of anything are in it.
    std::filesystem::rename(a, bench.folder() / "renamed.pdf");
    EXPECT_EQ(bytes, Bench::read(bench.merge({bench.folder() / "renamed.pdf", b}, "third.pdf")));
    EXPECT_THAT(bytes, Not(ContainsRegex("/CreationDate|/ModDate|/Producer|D:[0-9]{4}")));
}

TEST(Output, hasAnIdentifierOfItsContent) {
    const Bench bench;
    const std::string a = bench.add("a.pdf", test::simplePDF(1, {.label = "a"}));
    const std::string b = bench.add("b.pdf", test::simplePDF(1, {.label = "b"}));
    const std::string packed = packedByQPDF(bench, "p.pdf", 1);
    const std::vector<std::vector<std::string>> lists{{a}, {b}, {a, b}, {b, a}, {a, a}, {packed}};
    std::vector<std::string> identifiers;
    identifiers.reserve(lists.size());
    for (const auto& sources : lists) identifiers.push_back(identifier(bench.merge(sources)));
    std::ranges::sort(identifiers);
    EXPECT_EQ(std::ranges::adjacent_find(identifiers), identifiers.end());
}

TEST(Output, staysAsItIsWhenItIsMergedAgain) {
    const Bench bench;
    const std::vector<std::string> sources{bench.add("a.pdf", test::simplePDF(100, {.label = "a"})),
                                           packedByQPDF(bench, "b.pdf", 100),
                                           bench.fixture("c.pdf", onePageWith())};
    std::string merged = bench.merge(sources, "0.pdf");
    const std::size_t size = Bench::read(merged).size();
    const std::vector<std::string> texts = test::pageTexts(merged);
    ASSERT_EQ(texts.size(), 201U);
    for (int i = 1; i <= 4; ++i) merged = bench.merge({merged}, std::to_string(i) + ".pdf");
    expectSound(merged, 201);
    EXPECT_EQ(test::pageTexts(merged), texts);
    EXPECT_NEAR(static_cast<double>(Bench::read(merged).size()), static_cast<double>(size),
                static_cast<double>(size) / 100);
}

TEST(Output, showsItsPagesAsTheSourcesDo) {
    const Bench bench;
    const std::string a =
        bench.add("a.pdf", test::simplePDF(3, {.label = "a", .distinctSizes = true}));
    const std::string merged = bench.merge({a, a});
    std::vector<std::string> byMuPDF = test::renderingsByMuPDF(a);
    std::vector<std::string> byPoppler = test::renderingsByPoppler(a);
    for (int i = 0; i < 3; ++i) {
        byMuPDF.push_back(byMuPDF[static_cast<std::size_t>(i)]);
        byPoppler.push_back(byPoppler[static_cast<std::size_t>(i)]);
    }
    EXPECT_EQ(test::renderingsByMuPDF(merged), byMuPDF);
    EXPECT_EQ(test::renderingsByPoppler(merged), byPoppler);
}

}  // namespace
}  // namespace quirebind::pdftest
