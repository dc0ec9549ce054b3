// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QHelpEvent>
#include <QImage>
#include <QListView>
#include <QPainter>
#include <QStandardItemModel>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QToolTip>
#include <string>

#include <gmock/gmock.h>

#include "Quirebind/Look/TextLabel.h"
#include "Quirebind/Views/DocumentListModel.h"
#include "Quirebind/Views/DocumentRowDelegate.h"

namespace quirebind {
namespace {

constexpr QSize kCanvas(400, 100);
constexpr int kBehindTheIcon = 50;

QImage canvas() {
    QImage result(kCanvas, QImage::Format_RGB32);
    result.fill(Qt::white);
    return result;
}

/// How many rows of pixels have something drawn in them.
int heightOfInk(const QImage& image) {
    int rows = 0;
    for (int y = 0; y < image.height(); ++y) {
        bool drawn = false;
        for (int x = kBehindTheIcon; x < image.width(); ++x)
            drawn = drawn || image.pixel(x, y) != qRgb(255, 255, 255);
        if (drawn) ++rows;
    }
    return rows;
}

/// The name and the number of pages as a row shows them.
QImage drawnRow(const QString& name, const QString& pages) {
    const DocumentRowDelegate delegate;
    QStandardItemModel model(1, 1);
    const QModelIndex index = model.index(0, 0);
    model.setData(index, name, DocumentListModel::nameRole);
    model.setData(index, pages, DocumentListModel::pagesRole);
    QStyleOptionViewItem option;
    option.palette = QPalette(Qt::white);
    option.state = QStyle::State_Enabled;
    const int height = delegate.sizeHint(option, index).height();
    option.rect = QRect(0, (kCanvas.height() - height) / 2, kCanvas.width(), height);
    QImage image = canvas();
    QPainter painter(&image);
    delegate.paint(&painter, option, index);
    return image;
}

class DocumentRow : public testing::TestWithParam<const char*> {};

TEST_P(DocumentRow, CutsNoLetterThatIsTallerThanTheFont) {
    const QString text = QString::fromUtf8(GetParam());
    for (const TextStyle style : {TextStyle::body, TextStyle::caption}) {
        QImage whole = canvas();
        QPainter painter(&whole);
        painter.setFont(font(style));
        painter.drawText(whole.rect().adjusted(kBehindTheIcon, 0, 0, 0), Qt::AlignVCenter, text);
        painter.end();
        const QImage row =
            style == TextStyle::body ? drawnRow(text, QString()) : drawnRow(QString(), text);
        EXPECT_NEAR(heightOfInk(row), heightOfInk(whole), 1) << text.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Letters, DocumentRow,
                         testing::Values("Plain",
                                         "\u0F56\u0F7C\u0F51\u0F0B\u0F66\u0F90\u0F51\u0F0B"
                                         "\u0F62\u0F92\u0FB1\u0F74\u0F51",
                                         "\u0645\u0633\u062A\u0646\u062F\u0627\u062A"));

/// The tool tip of a document at that path, as the toolkit is given it.
QString toolTip(const QString& path) {
    DocumentRowDelegate delegate;
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), path, Qt::ToolTipRole);
    QListView view;
    view.setModel(&model);
    QHelpEvent event(QEvent::ToolTip, {}, {});
    EXPECT_TRUE(delegate.helpEvent(&event, &view, {}, model.index(0, 0)));
    return QToolTip::text();
}

TEST(DocumentRowToolTip, KeepsEveryCharacterWhole) {
    const QString emoji = QString::fromUtf8("\U0001F600");
    EXPECT_TRUE(toolTip('x' + emoji.repeated(45)).isValidUtf16());
}

TEST(DocumentRowToolTip, KeepsTheFoldersInTheirOrder) {
    // In letters that run from right to left, which would draw the slash between them along.
    const QString folder = QString::fromUtf8("\u05D0\u05D1\u05D2");
    const QString name = QString::fromUtf8("\u05D3\u05D4\u05D5");
    QTextDocument drawn;
    drawn.setHtml(toolTip("~/" + folder + '/' + name));
    drawn.setTextWidth(500);
    ASSERT_GT(drawn.size().height(), 0) << "it is laid out";
    const QTextBlock block = drawn.firstBlock();
    EXPECT_EQ(block.textDirection(), Qt::LeftToRight);
    const QTextLine line = block.layout()->lineAt(0);
    const auto at = [&](const QString& part) {
        return line.cursorToX(static_cast<int>(block.text().indexOf(part)) + 1);
    };
    EXPECT_LT(at(folder), at(name));
}

}  // namespace
}  // namespace quirebind
