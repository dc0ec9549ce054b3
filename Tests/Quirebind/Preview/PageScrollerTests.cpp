// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QAbstractScrollArea>
#include <QApplication>
#include <QScrollBar>
#include <vector>

#include <gmock/gmock.h>

#include "Quirebind/Preview/PageScroller.h"

namespace quirebind {
namespace {

/// A scroll area of 400 x 300 pixels, whose bars take nothing of that, with pages in it.
class ScrolledPages : public QAbstractScrollArea {
 public:
    explicit ScrolledPages(std::size_t count = 100, PageSize size = {.width = 200, .height = 300}) {
        setFrameShape(NoFrame);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        resize(400, 300);
        show();
        QApplication::processEvents();
        pages.setSizes(std::vector(count, size));
    }

    PageScroller pages{*this};
    bool rescaled = false;  // when it was resized last

 protected:
    void resizeEvent(QResizeEvent* event) override {
        QAbstractScrollArea::resizeEvent(event);
        rescaled = pages.resized();
    }
};

TEST(PageScroller, ShowsPagesAsWideAsTheViewFromTheBeginning) {
    const ScrolledPages view;
    EXPECT_EQ(view.pages.top(), 0);
    EXPECT_EQ(view.pages.left(), 0);
    EXPECT_EQ(view.pages.zoom(), PageScroller::kFitting);
    EXPECT_EQ(view.pages.pageRect(0), QRectF(16, 16, 368, 552));
    EXPECT_EQ(view.pages.visible().first, 0U);
    EXPECT_EQ(view.pages.visible().last, 0U);
}

TEST(PageScroller, ScrollsNoFurtherThanThereArePages) {
    ScrolledPages view(10);
    view.pages.scrollTo(1e9);
    EXPECT_EQ(view.pages.top(), view.pages.column().height() - 300);
    EXPECT_EQ(view.pages.middlePage(), 9U);
    view.pages.scrollTo(-1e9);
    EXPECT_EQ(view.pages.top(), 0);
    view.pages.scrollAcrossTo(50);
    EXPECT_EQ(view.pages.left(), 0) << "all of the width shows";
}

TEST(PageScroller, KnowsWhichPagesAreInSight) {
    ScrolledPages view;
    view.pages.scrollTo(view.pages.column().pageTop(5) - 100);
    EXPECT_EQ(view.pages.visible().first, 4U);
    EXPECT_EQ(view.pages.visible().last, 5U);
    EXPECT_EQ(view.pages.middlePage(), 5U);
    EXPECT_EQ(view.pages.pageAt({200, 50}), 4U);
    EXPECT_EQ(view.pages.pageAt({200, 120}), 5U);
    EXPECT_EQ(view.pages.pageRect(5).top(), 100);
}

TEST(PageScroller, FindsAPlaceOnAPageAndBack) {
    ScrolledPages view;
    view.pages.scrollTo(view.pages.column().pageTop(5));
    const QRectF part = view.pages.rectOn(5, {10, 20, 30, 40});
    EXPECT_EQ(part, QRectF(16 + 18.4, 36.8, 55.2, 73.6));
    const QPointF corner = view.pages.pointOn(5, part.topLeft());
    EXPECT_NEAR(corner.x(), 10, 1e-9);
    EXPECT_NEAR(corner.y(), 20, 1e-9);
}

TEST(PageScroller, KeepsWhatShowsWhereItIsWhenTheViewIsResized) {
    ScrolledPages view;
    view.pages.scrollTo(view.pages.column().pageTop(50));
    view.resize(800, 300);
    EXPECT_TRUE(view.rescaled);
    EXPECT_NEAR(view.pages.top(), view.pages.column().pageTop(50), 1);
    EXPECT_EQ(view.pages.pageRect(50).width(), 768);
    view.resize(800, 500);
    EXPECT_FALSE(view.rescaled);
    EXPECT_NEAR(view.pages.top(), view.pages.column().pageTop(50), 1);
}

TEST(PageScroller, KeepsWhatShowsWhereItIsWhenSizesAreCorrected) {
    ScrolledPages view;
    view.pages.scrollTo(view.pages.column().pageTop(50));
    const double before = view.pages.top();
    view.pages.correctSizes(10, std::vector(20, PageSize{.width = 200, .height = 600}));
    EXPECT_GT(view.pages.top(), before + 20 * 500);
    EXPECT_EQ(view.pages.pageRect(50).top(), 0);
}

TEST(PageScroller, ZoomsAboutAPoint) {
    ScrolledPages view;
    view.pages.scrollTo(view.pages.column().pageTop(50));
    const QPointF about(300, 200);
    const QPointF before = view.pages.pointOn(50, about);
    EXPECT_TRUE(view.pages.zoomTo(3, about));
    EXPECT_EQ(view.pages.zoom(), 3);
    // But for margins and gaps, which do not grow.
    EXPECT_NEAR(view.pages.pointOn(50, about).x(), before.x(), 5);
    EXPECT_NEAR(view.pages.pointOn(50, about).y(), before.y(), 5);
    EXPECT_FALSE(view.pages.zoomTo(3, about)) << "nothing changes";
}

TEST(PageScroller, ZoomsWithinItsLimits) {
    ScrolledPages view;
    EXPECT_TRUE(view.pages.zoomTo(1000, {}));
    EXPECT_EQ(view.pages.zoom(), PageScroller::kLargest);
    EXPECT_FALSE(view.pages.zoomTo(2000, {}));
    EXPECT_TRUE(view.pages.zoomTo(0, {}));
    EXPECT_EQ(view.pages.zoom(), PageScroller::kSmallest);
    EXPECT_TRUE(view.pages.zoomTo(1.001, {}));
    EXPECT_EQ(view.pages.zoom(), PageScroller::kFitting) << "as it was, but for rounding";
}

TEST(PageScroller, HasWhatIsNarrowerThanTheViewInItsMiddle) {
    ScrolledPages view;
    view.pages.zoomTo(0.5, {});
    EXPECT_EQ(view.pages.left(), -100);
    EXPECT_EQ(view.pages.pageRect(0).center().x(), 200);
}

TEST(PageScroller, FitsWhateverIsShownNext) {
    ScrolledPages view;
    view.pages.zoomTo(2, {});
    view.pages.scrollTo(5000);
    view.pages.setSizes(std::vector(3, PageSize{.width = 100, .height = 100}));
    EXPECT_EQ(view.pages.zoom(), PageScroller::kFitting);
    EXPECT_EQ(view.pages.top(), 0);
    EXPECT_EQ(view.pages.left(), 0);
    view.pages.setSizes({});
    EXPECT_EQ(view.verticalScrollBar()->maximum(), 0);
    EXPECT_FALSE(view.pages.zoomTo(2, {})) << "there is nothing to zoom";
}

TEST(PageScroller, ScrollsAcrossFromTheSideWhereTheLayoutBegins) {
    ScrolledPages view;
    view.setLayoutDirection(Qt::RightToLeft);
    view.pages.zoomTo(2, {});
    EXPECT_EQ(view.pages.left(), 0);
    EXPECT_EQ(view.horizontalScrollBar()->value(), view.horizontalScrollBar()->maximum());
    view.pages.scrollAcrossTo(300);
    EXPECT_EQ(view.pages.left(), 300);
    EXPECT_EQ(view.horizontalScrollBar()->value(), view.horizontalScrollBar()->maximum() - 300);
}

TEST(PageScroller, ComesBackToAPlaceWhateverTheZoomIs) {
    ScrolledPages view;
    view.pages.scrollTo(view.pages.column().pageTop(50));
    const PageColumn::Anchor place = view.pages.place();
    view.pages.scrollTo(0);
    view.pages.zoomTo(2, {});
    view.pages.scrollTo(place);
    EXPECT_NEAR(view.pages.pageRect(50).top(), 0, 1);
}

TEST(PageScroller, ReachesTheEndOfMorePixelsThanAScrollBarHasSteps) {
    // A hundred to one is the most that a page is shown as: 36800 pixels each.
    ScrolledPages view(100'000, {.width = 1, .height = 1000});
    ASSERT_GT(view.pages.column().height(), 3e9);
    view.pages.scrollTo(view.pages.column().height());
    EXPECT_EQ(view.pages.middlePage(), 99'999U);
    EXPECT_NEAR(view.pages.top() + 300, view.pages.column().height(), 8);
    view.pages.scrollTo(view.pages.column().pageTop(60'000));
    EXPECT_EQ(view.pages.middlePage(), 60'000U);
}

}  // namespace
}  // namespace quirebind
