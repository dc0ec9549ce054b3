// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Links in a shown document: a click goes where they lead inside the document, and nowhere else.

#include <QApplication>
#include <QScrollBar>
#include <string>

#include <gmock/gmock.h>

#include "Quirebind/Preview/PDFPreview.h"
#include "Tests/Quirebind/Preview/PreviewTestSupport.h"

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

}  // namespace
}  // namespace quirebind
