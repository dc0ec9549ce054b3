// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QWheelEvent>
#include <cerrno>
#include <filesystem>
#include <new>
#include <string>

#include <gmock/gmock.h>

#include "Quirebind/Look/Colours.h"
#include "Quirebind/Look/Texts.h"
#include "Quirebind/Preview/PDFPreview.h"
#include "Tests/Quirebind/Preview/PreviewTestSupport.h"
#include "Tests/Support/FaultyFileSystem.h"

namespace quirebind {
namespace {

using previewtest::Documents;
using previewtest::StandIn;
using previewtest::waitFor;

/// A preview of 400 x 300 pixels that is shown, with a renderer that stands in.
struct ShownPreview {
    ShownPreview() : preview(standIn.service) {
        preview.resize(400, 300);
        preview.show();
        QApplication::processEvents();
    }

    /// The colour in the middle of the view.
    [[nodiscard]] std::string colour() {
        const QImage picture = preview.viewport()->grab().toImage();
        return picture.pixelColor(picture.rect().center()).name().toStdString();
    }
    /// Waits until the middle of the view has that colour.
    [[nodiscard]] bool becomes(const std::string& expected) {
        if (waitFor([&] { return colour() == expected; })) return true;
        ADD_FAILURE() << "the colour is " << colour() << " at " << position();
        return false;
    }
    [[nodiscard]] int position() { return preview.verticalScrollBar()->value(); }
    /// How far it can be scrolled to the side.
    [[nodiscard]] int across() { return preview.horizontalScrollBar()->maximum(); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&preview, key, modifiers);
    }

    Documents documents;
    StandIn standIn;
    PDFPreview preview;
};

/// What is covered by anything in the colour of secondary text on paper.
QRect inked(const QImage& view) {
    const QRgb ink = accented(lightPalette()).color(kSecondaryText).rgb();
    QRect result;
    for (int y = 0; y < view.height(); ++y)
        for (int x = 0; x < view.width(); ++x)
            if (view.pixel(x, y) == ink) result |= QRect(x, y, 1, 1);
    return result;
}

TEST(PDFPreview, ShowsADocument) {
    ShownPreview shown;
    const URL url = shown.documents.make("a.pdf", "paint 123456", 3);
    shown.preview.setURL(url);
    EXPECT_EQ(shown.preview.documentURL(), url);
    EXPECT_EQ(shown.preview.pageCount(), 3U);
    EXPECT_EQ(shown.colour(), "#ffffff") << "white until it is drawn";
    EXPECT_TRUE(shown.becomes("#123456"));
    EXPECT_TRUE(shown.preview.isSharp());
}

TEST(PDFPreview, KeepsADocumentOfTheSameLocationWhereItIs) {
    ShownPreview shown;
    const URL url = shown.documents.make("a.pdf", "paint 123456", 5);
    shown.preview.setURL(url);
    shown.key(Qt::Key_End);
    const int position = shown.position();
    ASSERT_GT(position, 0);
    shown.preview.setURL(URL::file(std::string(url.path())));
    EXPECT_EQ(shown.position(), position);
    EXPECT_EQ(shown.preview.currentPage(), 4U);
}

TEST(PDFPreview, LoadsALocationThatIsWrittenDifferently) {
    ShownPreview shown;
    const URL url = shown.documents.make("a.pdf", "paint 123456", 5);
    std::filesystem::create_symlink(shown.documents.folder / "a.pdf",
                                    shown.documents.folder / "link.pdf");
    shown.preview.setURL(url);
    shown.key(Qt::Key_End);
    shown.preview.setURL(URL::file(shown.documents.folder / "link.pdf"));
    EXPECT_EQ(shown.position(), 0);
    EXPECT_TRUE(shown.becomes("#123456"));
}

TEST(PDFPreview, IsEmptyForAFileThatCannotBeOpenedAndTriesItAgain) {
    ShownPreview shown;
    const URL url = URL::file(shown.documents.folder / "a.pdf");
    shown.preview.setURL(url);
    EXPECT_EQ(shown.preview.documentURL(), std::nullopt);
    EXPECT_EQ(shown.preview.pageCount(), 0U);
    (void)shown.documents.make("a.pdf", "paint 123456");
    shown.preview.setURL(url);
    EXPECT_TRUE(shown.becomes("#123456"));
}

TEST(PDFPreview, ReplacesADocumentByNothingWhereTheNextCannotBeOpened) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("a.pdf", "paint 123456"));
    ASSERT_TRUE(shown.becomes("#123456"));
    shown.preview.setURL(URL::file(shown.documents.folder / "missing.pdf"));
    EXPECT_EQ(shown.preview.documentURL(), std::nullopt);
    EXPECT_NE(shown.colour(), "#123456");
    EXPECT_NE(shown.colour(), "#ffffff") << "there is no page";
}

TEST(PDFPreview, ShowsTheSelectedDocumentHoweverQuicklyTheSelectionChanges) {
    ShownPreview shown;
    const URL slow = shown.documents.make("slow.pdf", "slowly ff0000", 3);
    const URL quick = shown.documents.make("quick.pdf", "paint 0000ff", 3);
    for (int i = 0; i < 100; ++i) {
        shown.preview.setURL(slow);
        QTest::qWait(i % 10);  // the slow page is under way, or not yet
        shown.preview.setURL(quick);
        ASSERT_TRUE(waitFor([&] {
            EXPECT_NE(shown.colour(), "#ff0000");
            return shown.colour() == "#0000ff";
        })) << i;
        EXPECT_EQ(shown.preview.documentURL(), quick);
    }
}

TEST(PDFPreview, ShowsASignOnAPageThatCannotBeDrawn) {
    ShownPreview shown;
    const URL bad = shown.documents.make("bad.pdf", "fail", 3);
    shown.preview.setURL(bad);
    const auto drawn = [&] { return inked(shown.preview.viewport()->grab().toImage()); };
    EXPECT_TRUE(drawn().isEmpty()) << "nobody has tried yet";
    EXPECT_TRUE(waitFor([&] { return shown.preview.isSharp(); }));
    const QPoint middle = shown.preview.viewport()->rect().center();
    EXPECT_TRUE(drawn().contains(middle));
    EXPECT_LT((drawn().center() - middle).manhattanLength(), 20) << "also of a long page";
    EXPECT_GT(drawn().width(), 20);
    EXPECT_LT(drawn().width(), 80);
    EXPECT_TRUE(shown.preview.accessibleDescription().contains(text::alertTitle()));
    EXPECT_EQ(shown.preview.documentURL(), bad);
    shown.preview.setURL(shown.documents.make("good.pdf", "paint 00ff00"));
    EXPECT_TRUE(shown.becomes("#00ff00"));
    EXPECT_FALSE(shown.preview.accessibleDescription().contains(text::alertTitle()));
}

TEST(PDFPreview, KeepsThePictureOfAPageThatCannotBeDrawnAnew) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("a.pdf", "fail-wide 123456"));
    ASSERT_TRUE(shown.becomes("#123456"));
    shown.preview.resize(900, 300);
    EXPECT_TRUE(waitFor([&] { return shown.preview.isSharp(); }));
    EXPECT_EQ(shown.colour(), "#123456");
}

TEST(PDFPreview, DrawsWhatItHasMissedOnceThereIsARenderer) {
    const Documents documents;
    const std::string helper = documents.folder / "renderer";
    RenderService service(helper, RenderService::Patience{.restart = 20});
    PDFPreview preview(service);
    preview.resize(400, 300);
    preview.show();
    preview.setURL(documents.make("a.pdf", "paint 123456"));
    const QString missing = "Page 1 of 1\n" + text::alertTitle();
    ASSERT_TRUE(waitFor([&] { return preview.accessibleDescription() == missing; }));
    std::filesystem::create_symlink(QUIREBIND_STAND_IN_RENDERER, helper);
    EXPECT_TRUE(waitFor([&] { return preview.accessibleDescription() == "Page 1 of 1\npage 0"; }));
    EXPECT_EQ(preview.viewport()->grab().toImage().pixelColor(200, 150).name(), "#123456");
}

TEST(PDFPreview, DrawsTheFileThatItHasReadWhereAnotherTakesItsName) {
    FaultyFileSystem files;
    ShownPreview shown;
    const URL url = shown.documents.make("a.pdf", "paint 123456");
    const URL other = shown.documents.make("b.pdf", "paint ff0000", 9);
    PDFPreview preview(shown.standIn.service, files);
    preview.resize(400, 300);
    preview.show();
    // Once it is open, and before it is read.
    files.onEachCall([&](FileCall call) {
        if (call != FileCall::status || !std::filesystem::exists(std::string(other.path()))) return;
        std::filesystem::rename(std::string(other.path()), std::string(url.path()));
    });
    preview.setURL(url);
    EXPECT_EQ(preview.documentURL(), url);
    EXPECT_EQ(preview.pageCount(), 1U);
    const auto colour = [&] {
        return preview.viewport()->grab().toImage().pixelColor(200, 150).name();
    };
    ASSERT_TRUE(waitFor([&] { return colour() != "#ffffff"; }));
    EXPECT_EQ(colour(), "#123456");
}

TEST(PDFPreview, IsEmptyWhereThereIsNoMemoryForADocument) {
    FaultyFileSystem files;
    bool full = true;
    int refused = 0;
    ShownPreview shown;
    const URL url = shown.documents.make("a.pdf", "paint 123456", 3);
    files.onEachCall([&](FileCall call) {
        if (!full || call != FileCall::read) return;
        ++refused;
        throw std::bad_alloc();
    });
    PDFPreview preview(shown.standIn.service, files);
    preview.setURL(url);
    EXPECT_EQ(refused, 1);
    EXPECT_EQ(preview.pageCount(), 0U);
    EXPECT_EQ(preview.documentURL(), std::nullopt);
    full = false;
    preview.setURL(url);
    EXPECT_EQ(preview.pageCount(), 3U) << "it is tried again";
}

TEST(PDFPreview, ShowsWhitePagesWhereNoDescriptorIsLeftForTheRenderer) {
    FaultyFileSystem files;
    files.fail(FileCall::duplicate, EMFILE);
    ShownPreview shown;
    PDFPreview preview(shown.standIn.service, files);
    preview.resize(400, 300);
    preview.show();
    preview.setURL(shown.documents.make("a.pdf", "paint 123456", 3));
    EXPECT_EQ(preview.pageCount(), 3U);
    QTest::qWait(100);
    EXPECT_EQ(preview.viewport()->grab().toImage().pixelColor(200, 150).name(), "#ffffff");
}

TEST(PDFPreview, ScrollsByItsKeys) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("a.pdf", "paint", 10));
    shown.key(Qt::Key_PageDown);
    const int page = shown.position();
    EXPECT_GT(page, 200);
    EXPECT_LT(page, shown.preview.viewport()->height());
    shown.key(Qt::Key_PageUp);
    EXPECT_EQ(shown.position(), 0);
    shown.key(Qt::Key_Down);
    EXPECT_GT(shown.position(), 0);
    shown.key(Qt::Key_Up);
    EXPECT_EQ(shown.position(), 0);
    shown.key(Qt::Key_Space);
    EXPECT_EQ(shown.position(), page);
    shown.key(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(shown.position(), 0);
    shown.key(Qt::Key_End);
    EXPECT_EQ(shown.position(), shown.preview.verticalScrollBar()->maximum());
    EXPECT_EQ(shown.preview.currentPage(), 9U);
    shown.key(Qt::Key_Home);
    EXPECT_EQ(shown.preview.currentPage(), 0U);
}

TEST(PDFPreview, KeepsItsPlaceWhenItIsResized) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("a.pdf", "paint 123456", 100));
    shown.preview.verticalScrollBar()->setValue(shown.preview.verticalScrollBar()->maximum() / 2);
    const std::size_t page = shown.preview.currentPage();
    shown.preview.resize(800, 300);
    EXPECT_NEAR(double(shown.preview.currentPage()), double(page), 1);
    shown.preview.resize(400, 300);
    EXPECT_EQ(shown.preview.currentPage(), page);
    EXPECT_TRUE(waitFor([&] { return shown.preview.isSharp(); }));
}

TEST(PDFPreview, ShowsPagesLargerAndSmallerAndAsWideAsItselfAgain) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("a.pdf", "paint 123456", 10));
    const int height = shown.preview.verticalScrollBar()->maximum();
    EXPECT_EQ(shown.across(), 0) << "all of the width shows";
    shown.key(Qt::Key_Plus, Qt::ControlModifier);
    shown.key(Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_GT(shown.preview.verticalScrollBar()->maximum(), height * 14 / 10);
    EXPECT_GT(shown.across(), 100);
    EXPECT_TRUE(waitFor([&] { return shown.preview.isSharp(); }));
    shown.key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_TRUE(waitFor([&] { return shown.preview.verticalScrollBar()->maximum() == height; }));
    EXPECT_EQ(shown.across(), 0);
    shown.key(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_LT(shown.preview.verticalScrollBar()->maximum(), height);
    EXPECT_EQ(shown.across(), 0);
    EXPECT_TRUE(shown.becomes("#123456")) << "what is narrower is in the middle";
}

TEST(PDFPreview, KeepsWhatIsUnderThePointerWhileTheWheelZooms) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("a.pdf", "paint", 100));
    shown.preview.verticalScrollBar()->setValue(shown.preview.verticalScrollBar()->maximum() / 2);
    const std::size_t page = shown.preview.currentPage();
    const QPointF place(350, 150);
    const auto turn = [&](int notches) {
        QWheelEvent event(place, shown.preview.viewport()->mapToGlobal(place), {},
                          {0, 120 * notches}, Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(shown.preview.viewport(), &event);
    };
    turn(1);
    EXPECT_NEAR(double(shown.preview.currentPage()), double(page), 1);
    const int begin = shown.preview.horizontalScrollBar()->value();
    EXPECT_GT(begin, shown.across() / 2) << "the pointer is right of the middle";
    turn(100);
    const int largest = shown.across();
    turn(1);
    EXPECT_EQ(shown.across(), largest) << "there is an end";
    turn(-100);
    EXPECT_EQ(shown.across(), 0);
    EXPECT_NEAR(double(shown.preview.currentPage()), double(page), 2);
}

TEST(PDFPreview, ShowsEveryDocumentAsWideAsItselfFirst) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("a.pdf", "paint", 10));
    const int height = shown.preview.verticalScrollBar()->maximum();
    shown.key(Qt::Key_Plus, Qt::ControlModifier);
    shown.preview.setURL(shown.documents.make("b.pdf", "paint", 10));
    EXPECT_TRUE(waitFor([&] { return shown.preview.verticalScrollBar()->maximum() == height; }));
    EXPECT_EQ(shown.across(), 0);
}

TEST(PDFPreview, ScrollsAcrossWhatIsWiderThanItself) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("a.pdf", "paint"));
    for (int i = 0; i < 4; ++i) shown.key(Qt::Key_Plus, Qt::ControlModifier);
    const int begin = shown.preview.horizontalScrollBar()->value();
    shown.key(Qt::Key_Right);
    EXPECT_GT(shown.preview.horizontalScrollBar()->value(), begin);
    shown.key(Qt::Key_Left);
    EXPECT_EQ(shown.preview.horizontalScrollBar()->value(), begin);
}

TEST(PDFPreview, StretchesPicturesWhileItIsResizedAndDrawsThemAnewThen) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("a.pdf", "paint 123456"));
    ASSERT_TRUE(shown.becomes("#123456"));
    shown.preview.resize(600, 300);
    EXPECT_EQ(shown.colour(), "#123456");
    EXPECT_FALSE(shown.preview.isSharp());
    EXPECT_TRUE(waitFor([&] { return shown.preview.isSharp(); }));
}

TEST(PDFPreview, ReadsALongDocumentsSizesBitByBit) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("long.pdf", "paint 123456", 10'000));
    EXPECT_EQ(shown.preview.pageCount(), 10'000U);
    shown.key(Qt::Key_End);
    EXPECT_EQ(shown.preview.currentPage(), 9'999U);
    EXPECT_TRUE(shown.becomes("#123456"));
    EXPECT_EQ(shown.preview.currentPage(), 9'999U);
}

TEST(PDFPreview, CopiesTheTextThatIsDraggedOver) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("a.pdf", "paint", 2));
    QApplication::clipboard()->setText("before");
    shown.key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "before") << "nothing is selected";
    QWidget* view = shown.preview.viewport();
    QTest::mousePress(view, Qt::LeftButton, {}, {30, 40});
    QTest::mouseMove(view, {200, 60});
    QTest::mouseRelease(view, Qt::LeftButton, {}, {200, 60});
    shown.key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(waitFor([] { return QApplication::clipboard()->text() == "page 0"; }));
    shown.key(Qt::Key_A, Qt::ControlModifier);
    shown.key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(waitFor([] { return QApplication::clipboard()->text() == "page 0\npage 1"; }));
}

TEST(PDFPreview, TellsItsDocumentItsPageAndItsText) {
    ShownPreview shown;
    shown.preview.setURL(shown.documents.make("a b.pdf", "paint", 3));
    EXPECT_EQ(shown.preview.accessibleName(), "a b.pdf");
    EXPECT_TRUE(
        waitFor([&] { return shown.preview.accessibleDescription() == "Page 1 of 3\npage 0"; }));
    shown.key(Qt::Key_End);
    EXPECT_TRUE(
        waitFor([&] { return shown.preview.accessibleDescription() == "Page 3 of 3\npage 2"; }));
}

}  // namespace
}  // namespace quirebind
