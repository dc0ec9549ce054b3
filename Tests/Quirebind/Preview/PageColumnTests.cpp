// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <vector>

#include <gtest/gtest.h>

#include "Quirebind/Preview/PageColumn.h"

namespace quirebind {
namespace {

PageColumn column(std::vector<PageSize> sizes, double width) {
    PageColumn column;
    column.setSizes(std::move(sizes));
    column.setWidth(width);
    return column;
}

TEST(PageColumn, FitsTheWidestPageIntoItsWidth) {
    const PageColumn pages = column({{300, 400}, {600, 400}}, 632);
    EXPECT_DOUBLE_EQ(pages.scale(), 1);
    EXPECT_DOUBLE_EQ(pages.pageLeft(1), 16);
    EXPECT_DOUBLE_EQ(pages.pageWidth(1), 600);
    EXPECT_DOUBLE_EQ(pages.pageLeft(0), 166) << "narrower ones are centred";
}

TEST(PageColumn, StacksPagesWithGapsAndMargins) {
    const PageColumn pages = column({{100, 200}, {100, 300}}, 232);
    EXPECT_DOUBLE_EQ(pages.scale(), 2);
    EXPECT_DOUBLE_EQ(pages.pageTop(0), 16);
    EXPECT_DOUBLE_EQ(pages.pageTop(1), 16 + 400 + 12);
    EXPECT_DOUBLE_EQ(pages.height(), 16 + 400 + 12 + 600 + 16);
}

TEST(PageColumn, FindsThePageAtAHeight) {
    const PageColumn pages = column({{100, 100}, {100, 100}, {100, 100}}, 132);
    EXPECT_EQ(pages.pageAt(0), 0U);
    EXPECT_EQ(pages.pageAt(16 + 99), 0U);
    EXPECT_EQ(pages.pageAt(16 + 105), 0U) << "the gap belongs to the page above it";
    EXPECT_EQ(pages.pageAt(16 + 112), 1U);
    EXPECT_EQ(pages.pageAt(1e9), 2U);
}

TEST(PageColumn, KeepsAPlaceWhenTheWidthChanges) {
    PageColumn pages = column(std::vector<PageSize>(1000, PageSize{600, 800}), 632);
    const double middleOfPage500 = pages.pageTop(500) + pages.pageHeight(500) / 2;
    const PageColumn::Anchor anchor = pages.anchorAt(middleOfPage500);
    EXPECT_EQ(anchor.page, 500U);
    pages.setWidth(332);
    EXPECT_NEAR(pages.positionOf(anchor), pages.pageTop(500) + pages.pageHeight(500) / 2, 4);
}

TEST(PageColumn, KeepsAPlaceWhenSizesAboveItAreCorrected) {
    PageColumn pages = column(std::vector<PageSize>(100, PageSize{600, 800}), 632);
    const PageColumn::Anchor anchor = pages.anchorAt(pages.pageTop(50));
    pages.setSizes(0, std::vector<PageSize>(50, PageSize{600, 400}));
    EXPECT_DOUBLE_EQ(pages.positionOf(anchor), pages.pageTop(50));
    EXPECT_DOUBLE_EQ(pages.pageHeight(49), 400);
    EXPECT_DOUBLE_EQ(pages.pageHeight(50), 800);
}

TEST(PageColumn, ShowsNoPageAsAThread) {
    const PageColumn pages = column({{1, 1e6}, {1e6, 1}}, 632);
    for (const std::size_t page : {0U, 1U}) {
        EXPECT_GE(pages.pageWidth(page) * 100.001, pages.pageHeight(page));
        EXPECT_GE(pages.pageHeight(page) * 100.001, pages.pageWidth(page));
    }
}

TEST(PageColumn, MayBeEmpty) {
    const PageColumn pages = column({}, 500);
    EXPECT_EQ(pages.height(), 0);
    EXPECT_EQ(pages.positionOf(pages.anchorAt(100)), 0);
}

TEST(PageColumn, StaysPositiveInAPaneWithoutWidth) {
    EXPECT_GT(column({{600, 800}}, 0).pageWidth(0), 0);
}

}  // namespace
}  // namespace quirebind
