// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Links as an opened document tells of them, for showing them.

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/PDFDocument.h"
#include "Tests/Platform/PDF/DocumentTestSupport.h"

namespace quirebind {

// NOLINTNEXTLINE(readability-identifier-naming): the name that GoogleTest looks for
void PrintTo(const PagePosition& position, std::ostream* out) {
    *out << "page " << position.page << ", " << position.y;
}

namespace pdftest {
namespace {

const std::string kLink = "/Type /Annot /Subtype /Link /Rect [10 20 60 40] ";

/// Three pages (objects 3, 7 and 9); the first, of 200 by 300, has that entry, the last that one.
std::string pagesWith(const std::string& first, const std::string& last = "",
                      const std::string& objects = "", const std::string& catalog = "") {
    std::string text(kOnePage);
    text = replaced(text, "/Kids [3 0 R] /Count 1", "/Kids [3 0 R 7 0 R 9 0 R] /Count 3");
    text = replaced(text, "/MediaBox", first + " /MediaBox");
    text = replaced(text, "/Type /Catalog", "/Type /Catalog " + catalog);
    return document(text + pageObjects(7, 300, "two") + pageObjects(9, 400, "three", last) +
                    objects);
}

struct Opened {
    explicit Opened(const std::string& text)
        : document(PDFDocument::open(URL::file(bench.fixture("a.pdf", text)))) {}

    [[nodiscard]] std::vector<PageLink> links(std::size_t page = 0) const {
        return document ? document->pageLinks(page) : std::vector<PageLink>();
    }
    /// Where the only link of the first page leads to.
    [[nodiscard]] std::optional<PagePosition> target() const {
        const std::vector<PageLink> all = links();
        EXPECT_EQ(all.size(), 1U);
        return all.size() == 1 ? document->positionOf(all[0]) : std::nullopt;
    }

    Bench bench;
    std::optional<PDFDocument> document;
};

std::string linkTo(const std::string& destination) {
    return "/Annots [<< " + kLink + "/Dest " + destination + " >>]";
}

std::optional<PagePosition> targetOf(const std::string& destination,
                                     const std::string& lastPage = "") {
    return Opened(pagesWith(linkTo(destination), lastPage)).target();
}

TEST(PageLinks, areWhereTheyAreShown) {
    struct Case {
        std::string page;
        double x, y, width, height;
    };
    const std::vector<Case> cases{
        {"", 10, 260, 50, 20},
        {"/CropBox [5 10 150 200]", 5, 160, 50, 20},
        {"/Rotate 90", 20, 10, 20, 50},
        {"/Rotate 180", 140, 20, 50, 20},
        {"/Rotate -90", 260, 140, 20, 50},
        {"/Rotate 450 /CropBox [5 10 150 200]", 10, 5, 20, 50},
    };
    for (const Case& each : cases) {
        const std::vector<PageLink> links =
            Opened(pagesWith(linkTo("[9 0 R /Fit] ") + each.page)).links();
        ASSERT_EQ(links.size(), 1U) << each.page;
        EXPECT_EQ(links[0].x, each.x) << each.page;
        EXPECT_EQ(links[0].y, each.y) << each.page;
        EXPECT_EQ(links[0].width, each.width) << each.page;
        EXPECT_EQ(links[0].height, each.height) << each.page;
    }
}

TEST(PageLinks, leadToTheirPlaces) {
    EXPECT_EQ(targetOf("[9 0 R /Fit]"), (PagePosition{2, 0}));
    EXPECT_EQ(targetOf("[9 0 R /XYZ 10 250 0]"), (PagePosition{2, 50}));
    EXPECT_EQ(targetOf("[9 0 R /XYZ null null null]"), (PagePosition{2, 0}));
    EXPECT_EQ(targetOf("[9 0 R /XYZ 0 9999 0]"), (PagePosition{2, 0}));
    EXPECT_EQ(targetOf("[9 0 R /XYZ 0 -9999 0]"), (PagePosition{2, 300}));
    EXPECT_EQ(targetOf("[9 0 R /FitH 200]"), (PagePosition{2, 100}));
    EXPECT_EQ(targetOf("[9 0 R /FitR 10 20 30 120]"), (PagePosition{2, 180}));
    EXPECT_EQ(targetOf("[9 0 R /FitV 10]"), (PagePosition{2, 0}));
    EXPECT_EQ(targetOf("[9 0 R]"), (PagePosition{2, 0}));
    EXPECT_EQ(targetOf("[1 /Fit]"), (PagePosition{1, 0}));
    EXPECT_EQ(targetOf("[9 0 R /XYZ 30 250 0]", "/Rotate 90"), (PagePosition{2, 30}));
    EXPECT_EQ(targetOf("[9 0 R /XYZ 30 250 0]", "/CropBox [0 0 400 280]"), (PagePosition{2, 30}));
}

TEST(PageLinks, leadNowhereWhereThereIsNoSuchPlace) {
    for (const std::string destination :
         {"[]", "[3 /Fit]", "[-1 /Fit]", "[99 0 R /Fit]", "(unknown)", "/Unknown", "5", "[null]"})
        EXPECT_EQ(targetOf(destination), std::nullopt) << destination;
}

TEST(PageLinks, areFollowedByName) {
    const Opened opened(pagesWith("/Annots [<< " + kLink + "/A << /S /GoTo /D (there) >> >>]", "",
                                  "", "/Names << /Dests << /Names [(there) [9 0 R /Fit]] >> >>"));
    EXPECT_EQ(opened.target(), (PagePosition{2, 0}));
}

TEST(PageLinks, areOnlyThoseThatStayInTheDocument) {
    const Opened opened(pagesWith(
        "/Annots [<< " + kLink + "/A << /S /URI /URI (https://example.org) >> >> << " + kLink +
        "/A << /S /GoToR /F (other.pdf) /D [0 /Fit] >> >> << " + kLink +
        ">> << /Type /Annot "
        "/Subtype /Text /Rect [0 0 9 9] /Dest [9 0 R /Fit] >> << /Type /Annot /Subtype /Link /Dest "
        "[9 0 R /Fit] >> 5 null 99 0 R 3 0 R]"));
    EXPECT_TRUE(opened.links().empty());
    EXPECT_TRUE(opened.links(1).empty());
    EXPECT_TRUE(opened.links(7).empty());
}

}  // namespace
}  // namespace pdftest
}  // namespace quirebind
