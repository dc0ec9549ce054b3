// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Whether everything has room where the user's text is twice as large, in every language, in a
// window as small as it gets.

#include <QStyleFactory>
#include <QTranslator>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "Quirebind/Look/Colours.h"
#include "Quirebind/Look/ControlStyle.h"
#include "Quirebind/Look/TextLabel.h"
#include "Tests/Quirebind/Views/ViewTestSupport.h"

namespace quirebind {
namespace {

using viewtest::ShownWindow;

constexpr QSize kLaptop(1366, 768);
constexpr int kFrameOfAWindow = 40;  // what a window manager puts above it, and a bit

QFont enlarged(const QFont& font, double factor) {
    QFont result = font;
    if (font.pointSizeF() > 0)
        result.setPointSizeF(font.pointSizeF() * factor);
    else
        result.setPixelSize(qRound(font.pixelSize() * factor));
    return result;
}

class LargeText : public testing::TestWithParam<const char*> {
 protected:
    LargeText() {
        QApplication::setStyle(std::make_unique<ControlStyle>().release());
        QApplication::setPalette(accented(lightPalette()));
        const std::string language = GetParam();
        if (language == "en") return;
        EXPECT_TRUE(texts_.load(QStringLiteral(":/translations/quirebind_%1.qm")
                                    .arg(QString::fromStdString(language))));
        QApplication::installTranslator(&texts_);
        if (language == "ar" || language == "he") QApplication::setLayoutDirection(Qt::RightToLeft);
    }
    void TearDown() override {
        QApplication::removeTranslator(&texts_);
        QApplication::setLayoutDirection(Qt::LeftToRight);
        QApplication::setFont(font_);
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        QApplication::setPalette(QApplication::style()->standardPalette());
    }

    void useFont(double factor) const { QApplication::setFont(enlarged(font_, factor)); }

    /// Expects that nothing in there is cut off, and that nothing lies on anything else.
    static void expectRoom(const QWidget& window) {
        std::vector<std::pair<QRect, std::string>> places;
        for (const QWidget* widget : window.findChildren<QWidget*>()) {
            if (!widget->isVisibleTo(&window) || widget->window() != &window) continue;
            const auto* label = qobject_cast<const QLabel*>(widget);
            const auto* button = qobject_cast<const QPushButton*>(widget);
            if (label == nullptr && button == nullptr) continue;
            const std::string name =
                (label != nullptr ? label->text() : button->text()).toStdString();
            const QSize size = widget->size();
            if (label != nullptr && label->wordWrap()) {
                EXPECT_GE(size.height(), label->heightForWidth(size.width())) << name;
                const QRect lines = label->fontMetrics().boundingRect(
                    QRect(0, 0, size.width(), 9999), Qt::TextWordWrap, label->text());
                EXPECT_GE(size.width(), lines.width()) << name;
            } else {
                const QSize needed = widget->sizeHint();
                EXPECT_GE(size.width(), needed.width()) << name;
                EXPECT_GE(size.height(), needed.height()) << name;
            }
            const QRect place(widget->mapTo(&window, QPoint()), size);
            EXPECT_TRUE(window.rect().contains(place)) << name;
            for (const auto& [other, otherName] : places)
                EXPECT_FALSE(other.intersects(place)) << name << " lies on " << otherName;
            places.emplace_back(place, name);
        }
        EXPECT_GE(places.size(), 6U);
    }

    /// Shows all that there is to show, bit by bit, in a window as small as it gets.
    static void expectRoomForEverything(ShownWindow& shown) {
        const auto shrink = [&] {
            shown.window->resize(1, 1);
            ShownWindow::settle();
            EXPECT_LE(shown.window->width(), kLaptop.width());
            EXPECT_LE(shown.window->height(), kLaptop.height() - kFrameOfAWindow);
            expectRoom(*shown.window);
        };
        shrink();
        shown.add({"a.pdf", "b.pdf", "c.pdf"});
        shrink();
        shown.desktop->placeToSave = URL::file(shown.folder / "joined.pdf");
        shown.window->state().merge();
        ShownWindow::settle();
        EXPECT_TRUE(ShownWindow::waitFor([&] { return !shown.window->state().merging(); }));
        ShownWindow::settle();
        shrink();
        // A row: both lines, one below the other.
        const QListView& list = shown.list();
        const int lines = QFontMetrics(font(TextStyle::body)).height() +
                          QFontMetrics(font(TextStyle::caption)).height();
        EXPECT_GE(list.visualRect(list.model()->index(0, 0)).height(), lines);
        EXPECT_GE(list.viewport()->height(), lines) << "one row shows";
    }

    QFont font_ = QApplication::font();

 private:
    QTranslator texts_;
};

TEST_P(LargeText, HasRoom) {
    useFont(2);
    ShownWindow shown;
    expectRoomForEverything(shown);
}

TEST_P(LargeText, OfTheUsualSizeHasRoom) {
    ShownWindow shown;
    expectRoomForEverything(shown);
}

TEST_P(LargeText, HasRoomWhenItBecomesLargerMeanwhile) {
    ShownWindow shown;
    useFont(2);
    ShownWindow::settle();
    expectRoomForEverything(shown);
}

TEST_P(LargeText, HasRoomInAnAlert) {
    useFont(2);
    ShownWindow shown;
    std::vector<URL> missing;
    for (int i = 0; i < 40; ++i)
        missing.push_back(URL::file(shown.folder / ("missing " + std::to_string(i) + ".pdf")));
    shown.window->state().importFiles(missing);
    ShownWindow::settle();
    ASSERT_NE(shown.alert(), nullptr);
    EXPECT_LE(shown.alert()->width(), kLaptop.width());
    EXPECT_LE(shown.alert()->height(), kLaptop.height() - kFrameOfAWindow);
    for (const QPushButton* button : shown.alert()->findChildren<QPushButton*>()) {
        EXPECT_GE(button->width(), button->sizeHint().width());
        EXPECT_GE(button->height(), button->sizeHint().height());
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, LargeText,
                         testing::Values("en", "ar", "de", "es", "fr", "he", "it", "ja", "nl", "pl",
                                         "pt", "zh_CN"),
                         [](const auto& language) { return std::string(language.param); });

}  // namespace
}  // namespace quirebind
