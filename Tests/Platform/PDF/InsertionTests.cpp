// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Putting a document together page by page.

#include <filesystem>
#include <optional>
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

PDFDocument openOrFail(const std::string& path) {
    auto document = PDFDocument::open(URL::file(path));
    if (!document) throw std::runtime_error("cannot open " + path);
    return std::move(*document);
}

PDFPage pageOf(const PDFDocument& document, std::size_t index) {
    const auto page = document.pageAtIndex(index);
    if (!page) throw std::runtime_error("no such page");
    return *page;
}

/// A document of pages that show "<label>-1" and so on.
PDFDocument openPages(const Bench& bench, const std::string& label, int pages) {
    return openOrFail(bench.add(label + ".pdf", test::simplePDF(pages, {.label = label})));
}

/// The texts of the pages of the document, which is expected to be sound.
std::vector<std::string> textsOf(const Bench& bench, PDFDocument output) {
    const auto count = static_cast<int>(output.pageCount());
    const auto data = std::move(output).dataRepresentation();
    if (!data) throw std::runtime_error("the document could not be serialised");
    const std::string path = bench.add("out.pdf", data->text());
    expectSound(path, count);
    return test::pageTexts(path);
}

TEST(Insertion, atTheBeginningInTheMiddleAndAtTheEnd) {
    const Bench bench;
    const PDFDocument source = openPages(bench, "a", 4);
    PDFDocument output;
    EXPECT_TRUE(output.insertPage(pageOf(source, 0), 0));
    EXPECT_TRUE(output.insertPage(pageOf(source, 1), 0));
    EXPECT_TRUE(output.insertPage(pageOf(source, 2), 1));
    EXPECT_TRUE(output.insertPage(pageOf(source, 3), 3));
    EXPECT_EQ(output.pageCount(), 4U);
    EXPECT_THAT(textsOf(bench, std::move(output)), ElementsAre("a-2", "a-3", "a-1", "a-4"));
}

TEST(Insertion, beyondTheEndIsRefusedAndHarmless) {
    const Bench bench;
    const PDFDocument source = openPages(bench, "a", 2);
    PDFDocument output;
    EXPECT_FALSE(output.insertPage(pageOf(source, 0), 1));
    EXPECT_TRUE(output.insertPage(pageOf(source, 0), 0));
    EXPECT_FALSE(output.insertPage(pageOf(source, 1), 2));
    EXPECT_FALSE(output.insertPage(pageOf(source, 1), static_cast<std::size_t>(-1)));
    EXPECT_EQ(output.pageCount(), 1U);
    EXPECT_THAT(textsOf(bench, std::move(output)), ElementsAre("a-1"));
}

TEST(Insertion, inManyPlacesOfManyPages) {
    const Bench bench;
    constexpr int kPages = 400;
    const PDFDocument source = openPages(bench, "a", kPages);
    PDFDocument output;
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < kPages; ++i) {
        const std::size_t at = i * 7919 % (i + 1);
        ASSERT_TRUE(output.insertPage(pageOf(source, i), at));
        expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(at),
                        "a-" + std::to_string(i + 1));
    }
    EXPECT_EQ(textsOf(bench, std::move(output)), expected);
}

TEST(Insertion, mayTakeTurnsBetweenOpenDocuments) {
    const Bench bench;
    const PDFDocument a = openPages(bench, "a", 3);
    const PDFDocument b = openPages(bench, "b", 3);
    PDFDocument output;
    for (std::size_t i = 0; i < 3; ++i) {
        ASSERT_TRUE(output.insertPage(pageOf(a, i), output.pageCount()));
        ASSERT_TRUE(output.insertPage(pageOf(b, 2 - i), output.pageCount()));
    }
    EXPECT_THAT(textsOf(bench, std::move(output)),
                ElementsAre("a-1", "b-3", "a-2", "b-2", "a-3", "b-1"));
}

TEST(Insertion, intoSeveralDocumentsAtOnce) {
    const Bench bench;
    const PDFDocument source = openPages(bench, "a", 2);
    PDFDocument first;
    PDFDocument second;
    ASSERT_TRUE(first.insertPage(pageOf(source, 0), 0));
    ASSERT_TRUE(second.insertPage(pageOf(source, 0), 0));
    ASSERT_TRUE(second.insertPage(pageOf(source, 1), 1));
    EXPECT_THAT(textsOf(bench, std::move(first)), ElementsAre("a-1"));
    EXPECT_THAT(textsOf(bench, std::move(second)), ElementsAre("a-1", "a-2"));
}

TEST(Insertion, survivesTheClosingOfTheSource) {
    const Bench bench;
    PDFDocument output;
    {
        const PDFDocument source = openPages(bench, "a", 2);
        ASSERT_TRUE(output.insertPage(pageOf(source, 0), 0));
        ASSERT_TRUE(output.insertPage(pageOf(source, 1), 1));
    }
    const PDFDocument other = openPages(bench, "b", 1);
    ASSERT_TRUE(output.insertPage(pageOf(other, 0), 1));
    EXPECT_THAT(textsOf(bench, std::move(output)), ElementsAre("a-1", "b-1", "a-2"));
}

TEST(Insertion, survivesTheRemovalOfTheSource) {
    const Bench bench;
    PDFDocument output;
    const PDFDocument source = openPages(bench, "a", 2);
    std::filesystem::remove(bench.folder() / "a.pdf");
    ASSERT_TRUE(output.insertPage(pageOf(source, 0), 0));
    EXPECT_THAT(textsOf(bench, std::move(output)), ElementsAre("a-1"));
}

TEST(Insertion, ofAPageOfAClosedDocumentIsRefusedAndHarmless) {
    const Bench bench;
    PDFDocument output;
    std::optional<PDFDocument> source = openPages(bench, "a", 2);
    const PDFPage first = pageOf(*source, 0);
    const PDFPage second = pageOf(*source, 1);
    ASSERT_TRUE(output.insertPage(first, 0));
    source.reset();
    EXPECT_FALSE(output.insertPage(second, 1));
    // Another document at the same place is not the one that the page was of.
    source = openPages(bench, "a", 2);
    EXPECT_FALSE(output.insertPage(second, 1));
    EXPECT_THAT(textsOf(bench, std::move(output)), ElementsAre("a-1"));
}

TEST(Insertion, survivesTheMovingOfDocuments) {
    const Bench bench;
    std::vector<PDFDocument> sources;
    std::vector<PDFPage> pages;
    for (const char* const label : {"a", "b", "c", "d", "e"}) {
        sources.push_back(openPages(bench, label, 1));
        pages.push_back(pageOf(sources.back(), 0));
    }
    PDFDocument first;
    ASSERT_TRUE(first.insertPage(pages[0], 0));
    PDFDocument output(std::move(first));
    ASSERT_TRUE(output.insertPage(pages[1], 1));
    std::swap(sources[2], sources[4]);
    PDFDocument moved;
    moved = std::move(output);
    for (std::size_t i = 2; i < pages.size(); ++i) ASSERT_TRUE(moved.insertPage(pages[i], i));
    EXPECT_THAT(textsOf(bench, std::move(moved)), ElementsAre("a-1", "b-1", "c-1", "d-1", "e-1"));
}

TEST(Insertion, intoAnOpenedDocumentIsRefused) {
    const Bench bench;
    const PDFDocument a = openPages(bench, "a", 1);
    PDFDocument b = openPages(bench, "b", 1);
    EXPECT_FALSE(b.insertPage(pageOf(a, 0), 0));
    EXPECT_FALSE(b.insertPage(pageOf(b, 0), 0));
    EXPECT_EQ(b.pageCount(), 1U);
}

TEST(Insertion, ofADamagedPageSpoilsTheDocument) {
    const Bench bench;
    const std::string lost = replaced(onePageWith(), "{{object 4 0}}\n<< /Length {{length}} >>",
                                      "{{object 44 0}}\n<< /Length {{length}} >>");
    const PDFDocument damaged = openOrFail(bench.fixture(
        "damaged.pdf", replaced(lost, "\n{{xref}}", "\n{{entry 4 1 9 0}}\n{{xref}}")));
    const PDFDocument good = openPages(bench, "a", 1);
    PDFDocument output;
    ASSERT_TRUE(output.insertPage(pageOf(good, 0), 0));
    EXPECT_FALSE(output.insertPage(pageOf(damaged, 0), 1));
    EXPECT_FALSE(std::move(output).dataRepresentation());
}

TEST(OpenedDocument, tellsWhereItIsFromAndHasItsPages) {
    const Bench bench;
    const PDFDocument source = openPages(bench, "a", 3);
    EXPECT_EQ(source.documentURL(), URL::file(bench.folder() / "a.pdf"));
    EXPECT_FALSE(source.isLocked());
    EXPECT_EQ(source.pageCount(), 3U);
    EXPECT_TRUE(source.pageAtIndex(2));
    EXPECT_FALSE(source.pageAtIndex(3));
    EXPECT_FALSE(source.pageAtIndex(static_cast<std::size_t>(-1)));
    EXPECT_TRUE(source.isUnchangedOnDisk());
}

TEST(OpenedDocument, isNotSerialised) {
    const Bench bench;
    EXPECT_FALSE(openPages(bench, "a", 1).dataRepresentation());
}

TEST(OpenedDocument, noticesThatItsFileChanges) {
    const Bench bench;
    const PDFDocument source = openPages(bench, "a", 1);
    bench.folder().write("a.pdf", "shorter");
    EXPECT_FALSE(source.isUnchangedOnDisk());
}

TEST(CreatedDocument, isEmptyAndFromNowhere) {
    const PDFDocument output;
    EXPECT_EQ(output.documentURL(), std::nullopt);
    EXPECT_FALSE(output.isLocked());
    EXPECT_EQ(output.pageCount(), 0U);
    EXPECT_FALSE(output.pageAtIndex(0));
}

}  // namespace
}  // namespace quirebind::pdftest
