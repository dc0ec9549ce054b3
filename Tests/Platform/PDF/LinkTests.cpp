// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// References from one page to another: they lead to the copy of that page, and nowhere else.

#include <optional>
#include <regex>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/PDFDocument.h"
#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string link(int number, int target) {
    return "{{object " + std::to_string(number) +
           " 0}}\n<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /Dest [" + std::to_string(target) +
           " 0 R /Fit] >>\nendobj\n";
}

/// Three pages (objects 3, 7 and 9): the first has a link to the last, the last one to the first,
/// the one between to itself.
std::string linkedPages() {
    std::string objects(kOnePage);
    objects = replaced(objects, "/Kids [3 0 R] /Count 1", "/Kids [3 0 R 7 0 R 9 0 R] /Count 3");
    objects = replaced(objects, "/MediaBox", "/Annots [20 0 R] /MediaBox");
    return document(objects + pageObjects(7, 300, "two", "/Annots [21 0 R]") +
                    pageObjects(9, 400, "three", "/Annots [22 0 R]") + link(20, 9) + link(21, 7) +
                    link(22, 3));
}

/// For each page the index of the page that its link leads to; -1 where it has a link that leads to
/// no page.
std::vector<int> linkTargets(const std::string& path) {
    const std::vector<std::string> pages = test::pageNumbers(path);
    std::vector<int> targets;
    for (const std::string& page : pages) {
        std::smatch match;
        const std::string dictionary = test::objectText(path, page);
        if (!std::regex_search(dictionary, match, std::regex("/Annots \\[ ([0-9]+) 0 R \\]"))) {
            throw std::runtime_error("a page without its link: " + dictionary);
        }
        const std::string annotation = test::objectText(path, match.str(1));
        std::smatch destination;
        if (!std::regex_search(annotation, destination,
                               std::regex("/Dest \\[ (null|([0-9]+) 0 R) /Fit \\]"))) {
            throw std::runtime_error("a link without its destination: " + annotation);
        }
        int target = -1;
        for (std::size_t i = 0; i < pages.size(); ++i) {
            if (pages[i] == destination.str(2)) target = static_cast<int>(i);
        }
        const bool dead =
            destination.str(1) == "null" || test::objectText(path, destination.str(2)) == "null";
        if (target < 0 && !dead) throw std::runtime_error("a link to a stray copy of a page");
        targets.push_back(target);
    }
    return targets;
}

/// Inserts pages of an opened document in that order.
void append(PDFDocument& output, const PDFDocument& source,
            const std::vector<std::size_t>& indexes) {
    for (const std::size_t index : indexes) {
        const auto page = source.pageAtIndex(index);
        if (!page || !output.insertPage(*page, output.pageCount())) {
            throw std::runtime_error("a page could not be inserted");
        }
    }
}

std::string serialize(const Bench& bench, PDFDocument output) {
    const auto data = std::move(output).dataRepresentation();
    if (!data) throw std::runtime_error("the document could not be serialised");
    return bench.add("out.pdf", data->text());
}

PDFDocument openLinkedPages(const Bench& bench) {
    auto source = PDFDocument::open(URL::file(bench.fixture("linked.pdf", linkedPages())));
    if (!source) throw std::runtime_error("the source could not be opened");
    return std::move(*source);
}

TEST(Link, leadsToTheCopyOfItsPage) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(linkedPages());
    expectPages(merged, {200, 300, 400}, {"one", "two", "three"});
    EXPECT_THAT(linkTargets(merged), ElementsAre(2, 1, 0));
}

TEST(Link, leadsToTheCopyBehindOtherDocuments) {
    const Bench bench;
    const std::string linked = bench.fixture("a.pdf", linkedPages());
    const std::string other = bench.fixture("b.pdf", linkedPages());
    const std::string merged = bench.merge({linked, other});
    expectPages(merged, {200, 300, 400, 200, 300, 400},
                {"one", "two", "three", "one", "two", "three"});
    EXPECT_THAT(linkTargets(merged), ElementsAre(2, 1, 0, 5, 4, 3));
}

TEST(Link, staysWithinItsOwnCopyOfAFileThatIsMergedTwice) {
    const Bench bench;
    const std::string linked = bench.fixture("a.pdf", linkedPages());
    const std::string merged = bench.merge({linked, linked});
    expectSound(merged, 6);
    EXPECT_THAT(linkTargets(merged), ElementsAre(2, 1, 0, 5, 4, 3));
}

TEST(Link, leadsToTheCopyWhateverTheOrderOfInsertion) {
    const Bench bench;
    const PDFDocument source = openLinkedPages(bench);
    PDFDocument output;
    append(output, source, {2, 0, 1});
    const std::string merged = serialize(bench, std::move(output));
    expectPages(merged, {400, 200, 300}, {"three", "one", "two"});
    EXPECT_THAT(linkTargets(merged), ElementsAre(1, 0, 2));
}

TEST(Link, isDeadWhereItsPageIsNotInserted) {
    const Bench bench;
    const PDFDocument source = openLinkedPages(bench);
    PDFDocument output;
    append(output, source, {0, 1});
    const std::string merged = serialize(bench, std::move(output));
    expectPages(merged, {200, 300}, {"one", "two"});
    EXPECT_THAT(linkTargets(merged), ElementsAre(-1, 1));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("400")));
}

TEST(Link, ofAPageInsertedAgainBelongsToAnotherCopyOfTheDocument) {
    const Bench bench;
    const PDFDocument source = openLinkedPages(bench);
    PDFDocument output;
    append(output, source, {0, 2, 0, 2, 2, 0});
    const std::string merged = serialize(bench, std::move(output));
    expectSound(merged, 6);
    EXPECT_THAT(linkTargets(merged), ElementsAre(1, 0, 3, 2, 5, 4));
}

TEST(Link, ofAPageListedTwiceLeadsToTheFirst) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        replaced(linkedPages(), "/Kids [3 0 R 7 0 R 9 0 R]", "/Kids [3 0 R 7 0 R 9 0 R 3 0 R]"));
    expectPages(merged, {200, 300, 400, 200}, {"one", "two", "three", "one"});
    EXPECT_THAT(linkTargets(merged), ElementsAre(2, 1, 0, 2));
}

}  // namespace
}  // namespace quirebind::pdftest
