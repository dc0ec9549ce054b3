// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Links in a shown document: a click goes where they lead inside the document, and nowhere else.

#include <QApplication>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <new>
#include <string>

#include <gmock/gmock.h>

#include "Quirebind/Preview/PDFPreview.h"
#include "Tests/Quirebind/Preview/PreviewTestSupport.h"
#include "Tests/Support/FaultyFileSystem.h"

namespace quirebind {
namespace {

using previewtest::StandIn;

/// Three pages of 400 by 300. The first has links in its upper half: to the third page, to the web,
/// to a page that is not there.
const std::string kLinkedPages = R"({{header 1.7}}
{{object 1 0}}
<< /Type /Catalog /Pages 2 0 R >>
endobj
{{object 2 0}}
<< /Type /Pages /Kids [3 0 R 4 0 R 5 0 R] /Count 3 /MediaBox [0 0 400 300] >>
endobj
{{object 3 0}}
<< /Type /Page /Parent 2 0 R /Annots [
   << /Type /Annot /Subtype /Link /Rect [0 250 400 300] /Dest [5 0 R /XYZ 0 200 0] >>
   << /Type /Annot /Subtype /Link /Rect [0 200 400 250]
      /A << /S /URI /URI (https://example.org) >> >>
   << /Type /Annot /Subtype /Link /Rect [0 150 400 200] /Dest [9 /Fit] >> ] >>
endobj
{{object 4 0}}
<< /Type /Page /Parent 2 0 R >>
endobj
{{object 5 0}}
<< /Type /Page /Parent 2 0 R >>
endobj
{{xref}}
trailer
<< /Size {{size}} /Root 1 0 R >>
{{startxref}}
%%EOF
%behaviour paint 123456
)";

struct ShownLinks {
    ShownLinks() : preview(standIn.service) {
        preview.resize(400, 300);
        preview.show();
        folder.write("linked.pdf", test::fixturePDF(kLinkedPages));
        preview.setURL(URL::file(folder / "linked.pdf"));
        QApplication::processEvents();
    }

    void click(const QPoint& point, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(preview.viewport(), Qt::LeftButton, modifiers, point);
    }
    [[nodiscard]] Qt::CursorShape pointerAt(const QPoint& point) {
        QTest::mouseMove(preview.viewport(), point);
        return preview.viewport()->cursor().shape();
    }
    [[nodiscard]] int position() { return preview.verticalScrollBar()->value(); }

    TemporaryFolder folder;
    StandIn standIn;
    PDFPreview preview;
};

constexpr QPoint kInside{200, 30};
constexpr QPoint kToTheWeb{200, 75};
constexpr QPoint kToNowhere{200, 115};

TEST(PreviewLinks, AreFollowedByAClickAndBack) {
    ShownLinks shown;
    shown.preview.verticalScrollBar()->setValue(5);
    shown.click(kInside);
    EXPECT_EQ(shown.preview.currentPage(), 2U);
    const int there = shown.position();
    EXPECT_GT(there, 0);
    QTest::keyClick(&shown.preview, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shown.preview.currentPage(), 0U);
    EXPECT_EQ(shown.position(), 5);
    QTest::keyClick(&shown.preview, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shown.position(), 5) << "there is nothing to go back to";
}

TEST(PreviewLinks, ShowAHand) {
    ShownLinks shown;
    EXPECT_EQ(shown.pointerAt(kInside), Qt::PointingHandCursor);
    EXPECT_NE(shown.pointerAt(kToTheWeb), Qt::PointingHandCursor);
    EXPECT_NE(shown.pointerAt({200, 200}), Qt::PointingHandCursor);
}

TEST(PreviewLinks, ThatLeadElsewhereDoNothing) {
    ShownLinks shown;
    shown.click(kToTheWeb);
    EXPECT_EQ(shown.position(), 0);
    shown.click(kToNowhere);
    EXPECT_EQ(shown.position(), 0);
}

TEST(PreviewLinks, AreNotFollowedWhenTextIsSelectedOverThem) {
    ShownLinks shown;
    QTest::mousePress(shown.preview.viewport(), Qt::LeftButton, {}, kInside);
    QTest::mouseMove(shown.preview.viewport(), kInside + QPoint(80, 0));
    QTest::mouseRelease(shown.preview.viewport(), Qt::LeftButton, {}, kInside + QPoint(80, 0));
    EXPECT_EQ(shown.position(), 0);
    shown.click(kInside, Qt::ShiftModifier);
    EXPECT_EQ(shown.position(), 0);
}

TEST(PreviewLinks, OfAnotherDocumentAreForgotten) {
    ShownLinks shown;
    EXPECT_EQ(shown.pointerAt(kInside), Qt::PointingHandCursor);
    shown.click(kInside);
    shown.folder.write("plain.pdf", test::simplePDF(3));
    shown.preview.setURL(URL::file(shown.folder / "plain.pdf"));
    EXPECT_NE(shown.pointerAt(kInside), Qt::PointingHandCursor);
    shown.preview.verticalScrollBar()->setValue(5);
    QTest::keyClick(&shown.preview, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shown.position(), 5);
}

// With the keyboard. The first page has a link of the left half of a line, and below it the same of
// the right half, and a dead one; the last page leads back to the first.
const std::string kPagesWithLinks = R"({{header 1.7}}
{{object 1 0}}
<< /Type /Catalog /Pages 2 0 R >>
endobj
{{object 2 0}}
<< /Type /Pages /Kids [3 0 R 4 0 R 5 0 R] /Count 3 /MediaBox [0 0 400 300] >>
endobj
{{object 3 0}}
<< /Type /Page /Parent 2 0 R /Annots [
   << /Type /Annot /Subtype /Link /Rect [200 200 400 220] /Dest [4 0 R /Fit] >>
   << /Type /Annot /Subtype /Link /Rect [20 250 200 270] /Dest [5 0 R /Fit] >>
   << /Type /Annot /Subtype /Link /Rect [20 100 200 120] /Dest [9 /Fit] >> ] >>
endobj
{{object 4 0}}
<< /Type /Page /Parent 2 0 R >>
endobj
{{object 5 0}}
<< /Type /Page /Parent 2 0 R /Annots [
   << /Type /Annot /Subtype /Link /Rect [20 250 200 270] /Dest [3 0 R /Fit] >> ] >>
endobj
{{xref}}
trailer
<< /Size {{size}} /Root 1 0 R >>
{{startxref}}
%%EOF
%behaviour paint ffffff
)";

/// A preview between two buttons.
struct PreviewByKeys {
    PreviewByKeys() : preview(standIn.service) {
        layout.setContentsMargins(0, 0, 0, 0);
        for (QWidget* widget : {static_cast<QWidget*>(&before), static_cast<QWidget*>(&preview),
                                static_cast<QWidget*>(&behind)})
            layout.addWidget(widget);
        QWidget::setTabOrder(&before, &preview);
        QWidget::setTabOrder(&preview, &behind);
        window.resize(400, 360);
        window.show();
        QApplication::setActiveWindow(&window);
        folder.write("linked.pdf", test::fixturePDF(kPagesWithLinks));
        preview.setURL(URL::file(folder / "linked.pdf"));
        before.setFocus();
        QApplication::processEvents();
    }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    [[nodiscard]] std::string told() {
        return preview.accessibleDescription().section('\n', 0, 0).toStdString();
    }

    TemporaryFolder folder;
    StandIn standIn;
    QWidget window;
    QVBoxLayout layout{&window};
    QPushButton before{&window};
    PDFPreview preview;
    QPushButton behind{&window};
};

TEST(PreviewLinks, AreReachedByTheTabKeyInTheOrderOfReading) {
    PreviewByKeys shown;
    shown.key(Qt::Key_Tab);
    EXPECT_TRUE(shown.preview.hasFocus());
    EXPECT_EQ(shown.told(), "Page 1 of 3");
    shown.key(Qt::Key_Tab);
    EXPECT_EQ(shown.told(), "Page 3 of 3") << "where the first link leads";
    shown.key(Qt::Key_Tab);
    EXPECT_EQ(shown.told(), "Page 2 of 3");
    EXPECT_TRUE(shown.preview.hasFocus());
    shown.key(Qt::Key_Tab);
    EXPECT_TRUE(shown.behind.hasFocus()) << "the dead one is passed over";
    EXPECT_EQ(shown.told(), "Page 1 of 3");
    for (const char* expected : {"Page 2 of 3", "Page 3 of 3", "Page 1 of 3"}) {
        shown.key(Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_TRUE(shown.preview.hasFocus());
        EXPECT_EQ(shown.told(), expected);
    }
    shown.key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(shown.before.hasFocus());
}

/// A page whose link stands far from all that is read to show it.
std::string linkedFarAway() {
    const std::string far = '%' + std::string(std::size_t{1} << 20U, ' ') + '\n';
    return test::fixturePDF("{{header 1.7}}\n" + far + R"({{object 4 0}}
<< /Type /Annot /Subtype /Link /Rect [0 250 400 300] /Dest [3 0 R /Fit] >>
endobj
)" + far + R"({{object 1 0}}
<< /Type /Catalog /Pages 2 0 R >>
endobj
{{object 2 0}}
<< /Type /Pages /Kids [3 0 R] /Count 1 /MediaBox [0 0 400 300] >>
endobj
{{object 3 0}}
<< /Type /Page /Parent 2 0 R /Annots [4 0 R] >>
endobj
{{xref}}
trailer
<< /Size {{size}} /Root 1 0 R >>
{{startxref}}
%%EOF
)");
}

TEST(PreviewLinks, AreLeftOutWhereThereIsNoMemoryForThem) {
    FaultyFileSystem files;
    bool full = false;
    int refused = 0;
    files.onEachCall([&](FileCall call) {
        if (!full || call != FileCall::read) return;
        ++refused;
        throw std::bad_alloc();
    });
    const TemporaryFolder folder;
    folder.write("far.pdf", linkedFarAway());
    StandIn standIn;
    PDFPreview preview(standIn.service, files);
    preview.resize(400, 300);
    preview.show();
    QTest::mouseMove(preview.viewport(), kToNowhere);  // it may be there from before
    preview.setURL(URL::file(folder / "far.pdf"));
    QApplication::processEvents();
    ASSERT_EQ(preview.pageCount(), 1U);
    full = true;
    QTest::mouseMove(preview.viewport(), kInside);
    EXPECT_EQ(preview.viewport()->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(refused, 1);
    QTest::mouseClick(preview.viewport(), Qt::LeftButton, {}, kInside);
    preview.setFocus();
    QTest::keyClick(&preview, Qt::Key_Tab);
    EXPECT_EQ(refused, 2);
    EXPECT_EQ(preview.pageCount(), 1U) << "the page stays";
}

TEST(PreviewLinks, AreFollowedByReturnAndBack) {
    PreviewByKeys shown;
    shown.key(Qt::Key_Tab);
    shown.key(Qt::Key_Return);
    EXPECT_EQ(shown.preview.verticalScrollBar()->value(), 0) << "it is at no link";
    shown.key(Qt::Key_Tab);
    shown.key(Qt::Key_Return);
    EXPECT_EQ(shown.preview.currentPage(), 2U);
    EXPECT_EQ(shown.told(), "Page 3 of 3");
    const int there = shown.preview.verticalScrollBar()->value();
    shown.key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(shown.preview.verticalScrollBar()->value(), there) << "that link is out of sight";
    shown.key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shown.preview.currentPage(), 0U);
    shown.key(Qt::Key_End);
    shown.key(Qt::Key_Tab);
    EXPECT_EQ(shown.told(), "Page 1 of 3") << "where the link of the last page leads";
    shown.key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(shown.preview.currentPage(), 0U);
}

TEST(PreviewLinks, ShowWhichOneIsFocused) {
    PreviewByKeys shown;
    const auto picture = [&] {
        QApplication::processEvents();
        return shown.preview.viewport()->grab().toImage();
    };
    shown.key(Qt::Key_Tab);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown.preview.isSharp(); }, 10000));
    const QImage without = picture();
    shown.key(Qt::Key_Tab);
    const QImage at = picture();
    // Where the two differ is around the link.
    QRect changed;
    for (int y = 0; y < at.height(); ++y)
        for (int x = 0; x < at.width(); ++x)
            if (at.pixel(x, y) != without.pixel(x, y)) changed |= QRect(x, y, 1, 1);
    const double scale = (shown.preview.viewport()->width() - 32) / 400.0;
    const QRect link(qRound(16 + 20 * scale), qRound(16 + 30 * scale), qRound(180 * scale),
                     qRound(20 * scale));
    EXPECT_TRUE(changed.contains(link)) << changed.width() << 'x' << changed.height();
    EXPECT_TRUE(link.adjusted(-6, -6, 6, 6).contains(changed));
    EXPECT_EQ(at.pixel(link.center()), without.pixel(link.center())) << "its words stay";
    shown.behind.setFocus();
    EXPECT_EQ(picture().pixel(changed.left() + 2, link.center().y()),
              without.pixel(changed.left() + 2, link.center().y()));
}

TEST(PreviewLinks, AreNotFocusedAnyMoreInAnotherDocument) {
    PreviewByKeys shown;
    shown.key(Qt::Key_Tab);
    shown.key(Qt::Key_Tab);
    shown.folder.write("plain.pdf", test::simplePDF(3));
    shown.preview.setURL(URL::file(shown.folder / "plain.pdf"));
    EXPECT_EQ(shown.told(), "Page 1 of 3");
    shown.key(Qt::Key_Return);
    EXPECT_EQ(shown.preview.currentPage(), 0U);
    shown.key(Qt::Key_Tab);
    EXPECT_TRUE(shown.behind.hasFocus());
}

}  // namespace
}  // namespace quirebind
