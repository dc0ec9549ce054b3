// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// What moves, and that nothing does where the user wants that.

#include <QProgressBar>
#include <QStyleFactory>
#include <memory>

#include <gtest/gtest.h>

#include "Quirebind/Look/ControlStyle.h"
#include "Tests/Quirebind/Views/Rendered.h"
#include "Tests/Quirebind/Views/ViewTestSupport.h"

namespace quirebind {
namespace {

using viewtest::HeldMerge;
using viewtest::Rendered;
using viewtest::ShownWindow;

class Motion : public testing::Test {
 protected:
    Motion() {
        auto style = std::make_unique<ControlStyle>();
        style_ = style.get();
        QApplication::setStyle(style.release());
    }
    void TearDown() override {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    }

    void allow(bool motion) { style_->setAnimated(motion); }

    /// Whether a window that merges looks different at some moment of that many milliseconds.
    [[nodiscard]] static bool moves(QWidget& window, int milliseconds) {
        const QImage before = Rendered(window).picture();
        return QTest::qWaitFor([&] { return Rendered(window).picture() != before; }, milliseconds);
    }

 private:
    ControlStyle* style_ = nullptr;  // the application's
};

/// A window in which a merge runs until the test ends.
struct MergingWindow {
    MergingWindow() {
        shown.add({"a.pdf", "b.pdf"});
        EXPECT_TRUE(ShownWindow::waitFor([this] { return shown.previewHasSettled(); }));
        shown.desktop->placeToSave = URL::file(shown.folder / "joined.pdf");
        shown.window->state().merge();
        ShownWindow::settle();
    }
    ~MergingWindow() {
        merge->release();
        (void)ShownWindow::waitFor([this] { return !shown.window->state().merging(); });
    }
    MergingWindow(const MergingWindow&) = delete;
    MergingWindow& operator=(const MergingWindow&) = delete;
    MergingWindow(MergingWindow&&) = delete;
    MergingWindow& operator=(MergingWindow&&) = delete;

    std::shared_ptr<HeldMerge> merge = std::make_shared<HeldMerge>();
    ShownWindow shown{
        [held = merge](auto sources, const URL& destination) { (*held)(sources, destination); }};
};

TEST_F(Motion, ShowsThatAMergeRuns) {
    const MergingWindow merging;
    EXPECT_TRUE(moves(*merging.shown.window, 10000));
}

TEST_F(Motion, IsLeftOutWhereTheUserWantsNone) {
    allow(false);
    const MergingWindow merging;
    EXPECT_FALSE(moves(*merging.shown.window, 600));
    auto* const activity = merging.shown.window->findChild<QProgressBar*>();
    EXPECT_TRUE(activity->isVisible());
    EXPECT_GE(Rendered(*activity).contrastIn(activity->rect()), 3) << "it is still to be seen";
}

TEST_F(Motion, EndsWhenTheUserWantsNoneAnyMore) {
    const MergingWindow merging;
    ASSERT_TRUE(moves(*merging.shown.window, 10000));
    allow(false);
    // It stands still from its next step on.
    (void)moves(*merging.shown.window, 2000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !moves(*merging.shown.window, 600); }, 10000));
}

TEST_F(Motion, OfTheToolkitsOwnControlsIsLeftOutToo) {
    EXPECT_GT(QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration), 0);
    allow(false);
    EXPECT_EQ(QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration), 0);
}

}  // namespace
}  // namespace quirebind
