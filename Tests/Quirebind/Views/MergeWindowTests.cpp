// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QClipboard>
#include <QMessageBox>
#include <stdexcept>

#include <gmock/gmock.h>

#include "Quirebind/Views/ActivityIndicator.h"
#include "Tests/Quirebind/Views/Rendered.h"
#include "Tests/Quirebind/Views/ViewTestSupport.h"
#include "Tests/Support/Oracle.h"

// A merge as a window shows it: what it says and refuses meanwhile, how it ends, and failures.

namespace quirebind {
namespace {

using viewtest::HeldMerge;
using viewtest::ShownWindow;

/// A window with two documents whose merge has begun and waits.
struct MergingWindow {
    MergingWindow()
        : shown([this](std::span<const URL> sources, const URL& destination) {
              held(sources, destination);
          }) {
        shown.add({"a", "b"});
        shown.list().setFocus();
        shown.desktop->placeToSave = URL::file(shown.folder / "out.pdf");
        QTest::keyClick(shown.window.get(), Qt::Key_Return, Qt::ControlModifier);
        begun = ShownWindow::waitFor([this] { return shown.button("Merging\u2026") != nullptr; });
    }
    MergingWindow(const MergingWindow&) = delete;
    MergingWindow& operator=(const MergingWindow&) = delete;
    MergingWindow(MergingWindow&&) = delete;
    MergingWindow& operator=(MergingWindow&&) = delete;
    ~MergingWindow() { finish(); }

    void finish() {
        if (!finished) held.release();
        finished = true;
        ended = ShownWindow::waitFor([this] { return !shown.window->state().merging(); });
        ShownWindow::settle();
    }

    /// Whether the window says that it waits to close.
    [[nodiscard]] QMessageBox* notice() const {
        for (auto* box : shown.window->findChildren<QMessageBox*>())
            if (box->isVisible()) return box;
        return nullptr;
    }
    [[nodiscard]] bool spins() const {
        return shown.window->findChild<QProgressBar*>()->isVisible();
    }

    HeldMerge held;
    ShownWindow shown;
    bool begun = false;
    bool ended = false;
    bool finished = false;
};

TEST(MergingWindow, SaysSoAndRespondsToNothing) {
    const MergingWindow merging;
    ASSERT_TRUE(merging.begun);
    const ShownWindow& shown = merging.shown;
    EXPECT_TRUE(merging.spins());
    EXPECT_EQ(shown.button("Merge PDFs\u2026"), nullptr);
    for (const char* name : {"Add PDFs\u2026", "Up", "Down", "Remove", "Merging\u2026"})
        EXPECT_FALSE(shown.button(name)->isEnabled()) << name;
    EXPECT_FALSE(shown.list().isEnabled());
    const auto panels = shown.desktop->openPanels.size();
    QTest::keyClick(shown.window.get(), Qt::Key_O, Qt::ControlModifier);
    QTest::keyClick(&shown.list(), Qt::Key_Delete);
    EXPECT_EQ(shown.desktop->openPanels.size(), panels);
    EXPECT_EQ(shown.rows(), "a b ");
}

TEST(MergingWindow, OffersTheNewFileAndGivesTheFocusBack) {
    MergingWindow merging;
    ASSERT_TRUE(merging.begun);
    const ShownWindow& shown = merging.shown;
    EXPECT_EQ(shown.button("Show in Finder"), nullptr);
    merging.finish();
    ASSERT_TRUE(merging.ended);
    EXPECT_FALSE(merging.spins());
    EXPECT_TRUE(shown.button("Merge PDFs\u2026")->isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), &shown.list());
    EXPECT_TRUE(test::pageCounts(shown.folder / "out.pdf").allAre(2));
    ASSERT_NE(shown.button("Show in Finder"), nullptr);
    shown.button("Show in Finder")->click();
    ASSERT_EQ(shown.desktop->shown.size(), 1U);
    EXPECT_THAT(shown.desktop->shown[0], testing::ElementsAre(URL::file(shown.folder / "out.pdf")));
}

TEST(MergingWindow, LetsTheAlertBeAnswered) {
    MergingWindow merging;
    const std::vector<URL> missing{URL::file(merging.shown.folder / "missing.pdf")};
    merging.shown.window->state().importFiles(missing);
    ShownWindow::settle();
    ASSERT_NE(merging.shown.alert(), nullptr);
    merging.shown.button("OK")->click();
    ShownWindow::settle();
    EXPECT_EQ(merging.shown.alert(), nullptr);
    EXPECT_TRUE(merging.shown.window->state().merging());
}

TEST(MergingWindow, ClosesOnlyOnceTheFileIsWritten) {
    MergingWindow merging;
    merging.shown.window->close();
    ShownWindow::settle();
    EXPECT_FALSE(merging.shown.closed);
    EXPECT_NE(merging.notice(), nullptr);
    merging.finish();
    EXPECT_EQ(merging.notice(), nullptr);
    EXPECT_TRUE(merging.shown.closed);
    EXPECT_TRUE(test::pageCounts(merging.shown.folder / "out.pdf").allAre(2));
}

TEST(MergingWindow, StaysWhereTheUserChangesTheirMind) {
    MergingWindow merging;
    merging.shown.window->close();
    ShownWindow::settle();
    merging.shown.button("Keep Window Open")->click();
    merging.finish();
    EXPECT_FALSE(merging.shown.closed);
    EXPECT_NE(merging.shown.button("Show in Finder"), nullptr);
}

TEST(MergingWindow, StaysToTellOfAFailure) {
    std::latch go(1);
    ShownWindow shown([&go](std::span<const URL>, const URL&) {
        go.wait();
        throw std::runtime_error("The disk is full.");
    });
    shown.add({"a", "b"});
    shown.desktop->placeToSave = URL::file(shown.folder / "out.pdf");
    shown.button("Merge PDFs\u2026")->click();
    EXPECT_TRUE(ShownWindow::waitFor([&] { return shown.button("Merging\u2026") != nullptr; }));
    shown.window->close();
    go.count_down();
    EXPECT_TRUE(ShownWindow::waitFor([&] { return shown.alert() != nullptr; }));
    EXPECT_FALSE(shown.closed);
    EXPECT_TRUE(shown.says("The disk is full."));
    EXPECT_TRUE(shown.says("Quirebind couldn\u2019t finish"));
}

TEST(ErrorAlert, TellsThatAnOriginalWouldHaveBeenOverwritten) {
    ShownWindow shown;
    shown.add({"a", "b"});
    shown.desktop->placeToSave = URL::file(shown.folder / "a");
    shown.button("Merge PDFs\u2026")->click();
    ASSERT_TRUE(ShownWindow::waitFor([&] { return shown.alert() != nullptr; }));
    EXPECT_TRUE(shown.says("Choose a different output file to preserve your original PDFs."));
    EXPECT_EQ(shown.button("Show in Finder"), nullptr);
    QTest::keyClick(shown.alert(), Qt::Key_Escape);
    ShownWindow::settle();
    EXPECT_EQ(shown.alert(), nullptr);
    EXPECT_EQ(shown.window->state().error(), std::nullopt);
}

TEST(ErrorAlert, ShowsFileNamesAsTheyAre) {
    ShownWindow shown;
    shown.folder.write("<b>bold&amp;.pdf", "no PDF");
    const std::vector<URL> urls{URL::file(shown.folder / "<b>bold&amp;.pdf")};
    shown.window->state().importFiles(urls);
    ShownWindow::settle();
    EXPECT_TRUE(shown.says("Could not read every page of <b>bold&amp;.pdf."));
    for (const QLabel* label : shown.alert()->findChildren<QLabel*>())
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

TEST(ErrorAlert, ShowsALongNameToItsEndAndCopiesItAsItIs) {
    const auto pictureOf = [](const std::string& name) {
        ShownWindow shown;
        shown.window->state().importFiles(std::vector{URL::file(shown.folder / name)});
        ShownWindow::settle();
        EXPECT_NE(shown.alert(), nullptr);
        const QString message =
            QString::fromStdString("Could not read every page of " + name + ".");
        EXPECT_EQ(shown.alert()->accessibleDescription(), message);
        auto* shownText = shown.alert()->findChild<QTextEdit*>();
        EXPECT_EQ(shownText->accessibleName(), message);
        shownText->setFocus();
        shownText->selectAll();
        QTest::keyClick(shownText, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), message);
        shownText->setTextCursor({});
        return viewtest::Rendered(*shown.alert()).picture();
    };
    const std::string begin(200, 'x');
    EXPECT_NE(pictureOf(begin + "1.pdf"), pictureOf(begin + "2.pdf"));
}

TEST(ErrorAlert, KeepsItsButtonInReachHoweverMuchThereIsToSay) {
    ShownWindow shown;
    std::vector<URL> urls;
    urls.reserve(300);
    for (int i = 0; i < 300; ++i)
        urls.push_back(URL::file(shown.folder / ("missing" + std::to_string(i))));
    shown.window->state().importFiles(urls);
    ShownWindow::settle();
    ASSERT_NE(shown.alert(), nullptr);
    const QRect screen = shown.alert()->screen()->availableGeometry();
    EXPECT_LT(shown.alert()->height(), screen.height());
    EXPECT_TRUE(shown.alert()->rect().contains(shown.button("OK")->geometry()));
    EXPECT_EQ(QApplication::focusWidget(), shown.button("OK"));
}

}  // namespace
}  // namespace quirebind
