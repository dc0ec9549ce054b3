// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <functional>
#include <string>

#include <gmock/gmock.h>

#include "Quirebind/Preview/PDFPreview.h"
#include "Quirebind/Preview/RenderService.h"
#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/TemporaryFolder.h"

// The real helper, as a preview sees it.

namespace quirebind {
namespace {

/// Handles events until the condition holds; false after ten seconds.
bool waitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 10000);
}

struct Preview {
    Preview() {
        view.resize(400, 560);
        view.show();
    }

    [[nodiscard]] bool shows(const std::string& pdf) {
        folder.write("a.pdf", pdf);
        view.setURL(URL::file(folder / "a.pdf"));
        return waitFor([&] { return view.isSharp(); });
    }
    /// The same in place of what is shown.
    [[nodiscard]] bool showsNext(const std::string& pdf) {
        folder.write("b.pdf", pdf);
        view.setURL(URL::file(folder / "b.pdf"));
        return waitFor([&] { return view.isSharp(); });
    }
    /// The colour at a place of the first page, given in parts of its width and height.
    [[nodiscard]] std::string colourAt(double x, double y) {
        const QImage picture = view.viewport()->grab().toImage();
        const double width = picture.width() - 2 * PageColumn::kMargin;
        return picture
            .pixelColor(static_cast<int>(PageColumn::kMargin + x * width),
                        static_cast<int>(PageColumn::kMargin + y * width))
            .name()
            .toStdString();
    }

    TemporaryFolder folder;
    RenderService service{QUIREBIND_RENDERER};
    PDFPreview view{service};
};

/// An object with a stream.
std::string streamObject(int number, const std::string& entries, const std::string& data) {
    return "{{object " + std::to_string(number) + " 0}}\n<< " + entries +
           " /Length {{length}} >>\n{{stream}}\n" + data + "\n{{endstream}}\nendobj\n";
}

/// A page of 100 by 100 points, white but for what is drawn; its own objects are 5 and up.
std::string page(const std::string& content, const std::string& entries = {},
                 const std::string& objects = {}, const std::string& catalog = {}) {
    return test::fixturePDF(
        "{{header 1.7}}\n"
        "{{object 1 0}}\n<< /Type /Catalog /Pages 2 0 R " +
        catalog +
        " >>\nendobj\n"
        "{{object 2 0}}\n<< /Type /Pages /Kids [3 0 R] /Count 1 >>\nendobj\n"
        "{{object 3 0}}\n<< /Type /Page /Parent 2 0 R "
        "/MediaBox [0 0 100 100] /Contents 4 0 R " +
        entries + " >>\nendobj\n" + streamObject(4, "", content) + objects +
        "{{xref}}\ntrailer\n<< /Size {{size}} /Root 1 0 R >>\n"
        "{{startxref}}\n%%EOF\n");
}

TEST(Renderer, DrawsContent) {
    Preview preview;
    ASSERT_TRUE(preview.shows(page("1 0 0 rg 0 50 50 50 re f")));
    EXPECT_EQ(preview.colourAt(0.25, 0.25), "#ff0000");
    EXPECT_EQ(preview.colourAt(0.75, 0.75), "#ffffff");
}

TEST(Renderer, DrawsAnnotations) {
    Preview preview;
    ASSERT_TRUE(preview.shows(
        page("", "/Annots [5 0 R]",
             "{{object 5 0}}\n<< /Type /Annot /Subtype /Stamp /Rect [30 30 70 70] /F 4 "
             "/AP << /N 6 0 R >> >>\nendobj\n" +
                 streamObject(6, "/Type /XObject /Subtype /Form /BBox [0 0 40 40]",
                              "0 0 1 rg 0 0 40 40 re f"))));
    EXPECT_EQ(preview.colourAt(0.5, 0.5), "#0000ff");
    EXPECT_EQ(preview.colourAt(0.1, 0.1), "#ffffff");
}

/// The appearance of a field that is checked: blue; and when it is not: red.
std::string appearances() {
    const std::string form = "/Type /XObject /Subtype /Form /BBox [0 0 40 40]";
    return streamObject(6, form, "0 0 1 rg 0 0 40 40 re f") +
           streamObject(7, form, "1 0 0 rg 0 0 40 40 re f");
}

constexpr const char* kField =
    "<< /Type /Annot /Subtype /Widget /FT /Btn /T (a) /V /Yes /AS /Yes /Rect [30 30 70 70] /F 4 "
    "/AP << /N << /Yes 6 0 R /Off 7 0 R >> >> >>";

TEST(Renderer, DrawsFields) {
    Preview preview;
    std::string pdf = page("0 1 0 rg 0 80 20 20 re f", "/Annots [5 0 R]",
                           std::string("{{object 5 0}}\n") + kField + "\nendobj\n" + appearances());
    ASSERT_TRUE(preview.shows(pdf));
    EXPECT_EQ(preview.colourAt(0.5, 0.5), "#ffffff") << "no form, no field";
    pdf = page("0 1 0 rg 0 80 20 20 re f", "/Annots [5 0 R]",
               std::string("{{object 5 0}}\n") + kField + "\nendobj\n" + appearances(),
               "/AcroForm << /Fields [5 0 R] >>");
    ASSERT_TRUE(preview.showsNext(pdf));
    EXPECT_EQ(preview.colourAt(0.5, 0.5), "#0000ff");
    EXPECT_EQ(preview.colourAt(0.1, 0.1), "#00ff00") << "all else is there, too";
    EXPECT_EQ(preview.colourAt(0.9, 0.9), "#ffffff");
}

TEST(Renderer, DrawsFieldsOfPackedDocuments) {
    Preview preview;
    ASSERT_TRUE(preview.shows(test::fixturePDF(
        "{{header 1.7}}\n" + appearances() +
        "{{objectstream 9 0}}\n"
        "{{object 1}}\n<< /Type /Catalog /Pages 2 0 R /AcroForm << /Fields [5 0 R] >> >>\n"
        "{{object 2}}\n<< /Type /Pages /Kids [3 0 R] /Count 1 >>\n"
        "{{object 3}}\n<< /Type /Page /Parent 2 0 R /MediaBox [0 0 100 100] /Annots [5 0 R] >>\n"
        "{{object 5}}\n" +
        std::string(kField) +
        "\n{{endobjectstream}}\n{{xrefstream 10 0}}\n/Root 1 0 R\n{{endxrefstream}}\n"
        "{{startxref}}\n%%EOF\n")));
    EXPECT_EQ(preview.colourAt(0.5, 0.5), "#0000ff");
    EXPECT_EQ(preview.colourAt(0.1, 0.1), "#ffffff");
}

/// Our library finds the page where the toolkit finds nothing: there is neither a catalog nor a
/// page tree.
TEST(Renderer, DrawsWhatOnlyOurLibraryReads) {
    Preview preview;
    ASSERT_TRUE(preview.shows(
        "%PDF-1.4\n3 0 obj\n<< /Type /Page /MediaBox [0 0 100 100] /Contents 4 0 R >>\nendobj\n"
        "4 0 obj\n<< /Length 31 >>\nstream\n0 0 1 rg 0 0 100 100 re f\nendstream\nendobj\n"));
    EXPECT_EQ(preview.colourAt(0.5, 0.5), "#0000ff");
}

TEST(Renderer, TurnsAndCropsPagesAsTheyAreLaidOut) {
    Preview preview;
    ASSERT_TRUE(preview.shows(page("1 0 0 rg 0 0 50 20 re f", "/CropBox [0 0 50 100] /Rotate 90")));
    // Turned clockwise, twice as wide as high: what was below is at the left.
    EXPECT_EQ(preview.colourAt(0.1, 0.25), "#ff0000");
    EXPECT_EQ(preview.colourAt(0.3, 0.25), "#ffffff");
    EXPECT_NE(preview.colourAt(0.5, 0.6), "#ffffff") << "below the page";
}

TEST(Renderer, ReadsText) {
    Preview preview;
    ASSERT_TRUE(preview.shows(
        page("BT /F 12 Tf 10 50 Td (Hello) Tj ET", "/Resources << /Font << /F 5 0 R >> >>",
             "{{object 5 0}}\n<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>\nendobj\n")));
    EXPECT_TRUE(waitFor([&] { return preview.view.currentPageText() == "Hello"; }));
}

TEST(Renderer, SelectsWordsAndLines) {
    Preview preview;
    ASSERT_TRUE(preview.shows(
        page("BT /F 10 Tf 10 50 Td (One two-three) Tj ET", "/Resources << /Font << /F 5 0 R >> >>",
             "{{object 5 0}}\n<< /Type /Font /Subtype /Type1 /BaseFont /Courier >>\nendobj\n")));
    QWidget* view = preview.view.viewport();
    const double scale = (view->width() - 2 * PageColumn::kMargin) / 100;
    // Six points a character: this is in the middle of "two".
    const QPoint two(static_cast<int>(PageColumn::kMargin + (10 + 5.5 * 6) * scale),
                     static_cast<int>(PageColumn::kMargin + 47 * scale));
    const auto copied = [&](const char* expected) {
        QApplication::clipboard()->clear();
        QTest::keyClick(&preview.view, Qt::Key_C, Qt::ControlModifier);
        return waitFor([&] { return QApplication::clipboard()->text() == expected; });
    };
    QTest::mouseDClick(view, Qt::LeftButton, {}, two);
    EXPECT_TRUE(copied("two")) << QApplication::clipboard()->text().toStdString();
    QTest::mouseClick(view, Qt::LeftButton, {}, two);
    EXPECT_TRUE(copied("One two-three")) << QApplication::clipboard()->text().toStdString();
}

TEST(Renderer, ShowsTheNextDocumentInPlaceOfTheLast) {
    Preview preview;
    ASSERT_TRUE(preview.shows(page("1 0 0 rg 0 0 100 100 re f")));
    EXPECT_EQ(preview.colourAt(0.5, 0.5), "#ff0000");
    preview.folder.write("b.pdf", page("0 1 0 rg 0 0 100 100 re f"));
    preview.view.setURL(URL::file(preview.folder / "b.pdf"));
    EXPECT_TRUE(waitFor([&] { return preview.colourAt(0.5, 0.5) == "#00ff00"; }));
}

}  // namespace
}  // namespace quirebind
