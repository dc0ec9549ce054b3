// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QAccessible>
#include <QSplitter>

#include <gmock/gmock.h>

#include "Quirebind/Views/DropHighlight.h"
#include "Tests/Quirebind/Views/ViewTestSupport.h"

// What a window shows of its state, and what its controls do to it.

namespace quirebind {
namespace {

using viewtest::ShownWindow;

TEST(MainWindow, InvitesWhileItIsEmpty) {
    const ShownWindow shown;
    EXPECT_TRUE(shown.says("YOUR DOCUMENTS"));
    EXPECT_TRUE(shown.says("0"));
    EXPECT_TRUE(shown.says("Drop your PDFs here"));
    EXPECT_TRUE(shown.says("Add two or more documents, arrange them, then merge."));
    EXPECT_TRUE(shown.says("A little preview"));
    EXPECT_TRUE(shown.says("Select a document to inspect its pages."));
    EXPECT_TRUE(shown.says("0 documents \u00B7 0 pages"));
    EXPECT_TRUE(shown.says("Processed privately on your Mac"));
    EXPECT_FALSE(shown.list().isVisible());
    EXPECT_EQ(shown.button("Up"), nullptr);
    EXPECT_EQ(shown.button("Show in Finder"), nullptr);
    EXPECT_FALSE(shown.button("Merge PDFs\u2026")->isEnabled());
}

TEST(MainWindow, OpensAtItsSizeAndHasASmallestOne) {
    const ShownWindow shown;
    // The screen is narrower than a window usually is.
    EXPECT_EQ(shown.window->height(), 640);
    EXPECT_LT(shown.window->width(), shown.window->screen()->availableGeometry().width());
    shown.window->resize(100, 100);
    EXPECT_EQ(shown.window->size(), QSize(760, 520));
}

TEST(MainWindow, CountsDocumentsAboveTheListAndPagesBelow) {
    ShownWindow shown;
    std::vector<URL> urls;
    for (const char* name : {"a.pdf", "b.pdf"}) {
        shown.folder.write(name, test::simplePDF(10));
        urls.push_back(URL::file(shown.folder / name));
    }
    shown.window->state().importFiles(urls);
    ShownWindow::settle();
    EXPECT_TRUE(shown.says("2"));
    EXPECT_TRUE(shown.says("2 documents \u00B7 20 pages"));
    EXPECT_FALSE(shown.says("Drop your PDFs here"));
    EXPECT_TRUE(shown.list().isVisible());
}

TEST(MainWindow, ShowsTheInvitationAgainOnceTheLastDocumentIsRemoved) {
    ShownWindow shown;
    shown.add({"a.pdf"});
    shown.button("Remove")->click();
    ShownWindow::settle();
    EXPECT_TRUE(shown.says("Drop your PDFs here"));
    EXPECT_FALSE(shown.list().isVisible());
    EXPECT_EQ(shown.button("Remove"), nullptr);
}

TEST(MainWindow, MergesTwoDocumentsButNotOne) {
    ShownWindow shown;
    shown.add({"a.pdf"});
    EXPECT_TRUE(shown.says("1 documents \u00B7 1 pages"));
    EXPECT_FALSE(shown.button("Merge PDFs\u2026")->isEnabled());
    shown.add({"b.pdf"});
    EXPECT_TRUE(shown.button("Merge PDFs\u2026")->isEnabled());
}

TEST(MainWindow, EnablesTheRowOfButtonsTogether) {
    ShownWindow shown;
    shown.add({"a.pdf", "b.pdf"});
    for (const char* name : {"Up", "Down", "Remove"}) EXPECT_TRUE(shown.button(name)->isEnabled());
    shown.window->state().setSelection(std::nullopt);
    ShownWindow::settle();
    for (const char* name : {"Up", "Down", "Remove"}) EXPECT_FALSE(shown.button(name)->isEnabled());
    EXPECT_TRUE(shown.list().selectionModel()->selectedIndexes().isEmpty());
}

TEST(MainWindow, ShowsNoRowAsSelectedForADocumentThatIsNotListed) {
    ShownWindow shown;
    shown.add({"a.pdf", "b.pdf"});
    shown.window->state().setSelection(UUID::generate());
    ShownWindow::settle();
    EXPECT_TRUE(shown.list().selectionModel()->selectedIndexes().isEmpty());
    EXPECT_TRUE(shown.button("Remove")->isEnabled());
}

TEST(MainWindow, MovesTheSelectedDocumentUpToTheEndAndNoFurther) {
    ShownWindow shown;
    shown.add({"a", "b", "c"});
    shown.button("Down")->click();
    ShownWindow::settle();
    EXPECT_EQ(shown.rows(), "b a c ");
    for (int press = 0; press < 3; ++press) {
        shown.button("Up")->click();
        ShownWindow::settle();
        EXPECT_EQ(shown.rows(), "a b c ");
        EXPECT_TRUE(shown.button("Up")->isEnabled());
    }
    EXPECT_EQ(shown.list().currentIndex().row(), 0);
}

TEST(MainWindow, SelectsWhatIsClickedAndNothingBesideTheRows) {
    ShownWindow shown;
    shown.add({"a", "b"});
    const QListView& list = shown.list();
    const QRect second = list.visualRect(list.model()->index(1, 0));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, second.center());
    EXPECT_EQ(shown.window->state().selection(), shown.window->state().files()[1].id);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, second.center() + QPoint(0, 100));
    EXPECT_EQ(shown.window->state().selection(), std::nullopt);
}

TEST(MainWindow, TakesTheListsOperationsFromTheKeysOfTheFocusedList) {
    ShownWindow shown;
    shown.add({"a", "b", "c"});
    QTest::keyClick(&shown.list(), Qt::Key_Down, Qt::AltModifier);
    ShownWindow::settle();
    EXPECT_EQ(shown.rows(), "b a c ");
    QTest::keyClick(&shown.list(), Qt::Key_Up, Qt::AltModifier);
    ShownWindow::settle();
    EXPECT_EQ(shown.rows(), "a b c ");
    QTest::keyClick(&shown.list(), Qt::Key_Down);
    QTest::keyClick(&shown.list(), Qt::Key_Delete);
    ShownWindow::settle();
    EXPECT_EQ(shown.rows(), "a c ");
    EXPECT_EQ(shown.list().currentIndex().row(), 0);
}

TEST(MainWindow, OffersToAddDocumentsWhenTheLastOneIsTakenOff) {
    ShownWindow shown;
    for (const bool byButton : {false, true}) {
        shown.add({"a", "b"});
        for (int left = 2; left > 0; --left) {
            QWidget* focused = &shown.list();
            if (byButton) focused = shown.button("Remove");
            focused->setFocus();
            QTest::keyClick(focused, byButton ? Qt::Key_Space : Qt::Key_Delete);
            ShownWindow::settle();
            EXPECT_EQ(QApplication::focusWidget(),
                      left > 1 ? focused : shown.button("Add PDFs\u2026"));
        }
        EXPECT_EQ(shown.rows(), "");
    }
}

TEST(MainWindow, KeepsTheKeysOfTheListFromDoingAnythingElsewhere) {
    ShownWindow shown;
    shown.add({"a", "b"});
    shown.button("Merge PDFs\u2026")->setFocus();
    QTest::keyClick(shown.button("Merge PDFs\u2026"), Qt::Key_Delete);
    QTest::keyClick(shown.button("Merge PDFs\u2026"), Qt::Key_Down, Qt::AltModifier);
    ShownWindow::settle();
    EXPECT_EQ(shown.rows(), "a b ");
}

TEST(MainWindow, AsksForDocumentsByItsButton) {
    const ShownWindow shown;
    shown.folder.write("a.pdf", test::simplePDF(3));
    shown.desktop->filesToOpen = {URL::file(shown.folder / "a.pdf")};
    shown.button("Add PDFs\u2026")->click();
    ShownWindow::settle();
    EXPECT_EQ(shown.rows(), "a.pdf ");
    ASSERT_EQ(shown.desktop->openPanels.size(), 1U);
    EXPECT_TRUE(shown.desktop->openPanels[0].allowsMultipleSelection);
}

TEST(MainWindow, OutlinesTheDropAreaWhileFilesHover) {
    const ShownWindow shown;
    const auto highlight = [&]() -> bool {
        for (const QWidget* widget : shown.window->findChildren<QWidget*>())
            if (dynamic_cast<const DropHighlight*>(widget) != nullptr) return widget->isVisible();
        return false;
    };
    EXPECT_FALSE(highlight());
    shown.window->state().setTargeted(true);
    ShownWindow::settle();
    EXPECT_TRUE(highlight());
    shown.window->state().setTargeted(false);
    ShownWindow::settle();
    EXPECT_FALSE(highlight());
}

TEST(MainWindow, GoesRoundItsRegionsWithF6) {
    ShownWindow shown;
    shown.add({"a", "b"});
    shown.button("Add PDFs\u2026")->setFocus();
    QTest::keyClick(shown.window.get(), Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget(), &shown.list());
    QTest::keyClick(shown.window.get(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), shown.button("Add PDFs\u2026"));
    QTest::keyClick(shown.window.get(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), shown.button("Merge PDFs\u2026"));
}

TEST(MainWindow, TellsAssistiveTechnologyOfTheListBeforeThePreview) {
    ShownWindow shown;
    shown.add({"a", "b"});
    QAccessibleInterface* columns =
        QAccessible::queryAccessibleInterface(shown.window->findChild<QSplitter*>());
    ASSERT_GE(columns->childCount(), 2);
    const auto* first = qobject_cast<QWidget*>(columns->child(0)->object());
    EXPECT_TRUE(first->isAncestorOf(&shown.list()));
}

TEST(MainWindow, PassesTheKeysForWindowsOn) {
    const ShownWindow shown;
    QTest::keyClick(shown.window.get(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(shown.windowsAskedFor, 1);
    QTest::keyClick(shown.window.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(shown.quitsAskedFor, 1);
    EXPECT_FALSE(shown.closed);
    QTest::keyClick(shown.window.get(), Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(shown.closed);
}

}  // namespace
}  // namespace quirebind
