// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Whether all that the window shows can be told from what it stands on (WCAG 2.1, AA), measured in
// its pixels: in our own colours, and in those that users choose.

#include <QMenu>
#include <QProgressBar>
#include <QScrollBar>
#include <QSplitter>
#include <QStyleFactory>
#include <QTimer>
#include <memory>
#include <ostream>
#include <string>

#include <gmock/gmock.h>

#include "Quirebind/Look/Colours.h"
#include "Quirebind/Look/Contrast.h"
#include "Quirebind/Look/ControlStyle.h"
#include "Quirebind/Preview/PDFPreview.h"
#include "Tests/Quirebind/Views/Rendered.h"
#include "Tests/Quirebind/Views/ViewTestSupport.h"

namespace quirebind {
namespace {

using viewtest::contrastOf;
using viewtest::HeldMerge;
using viewtest::Rendered;
using viewtest::ShownWindow;

struct Scheme {
    const char* name;
    QPalette palette;

    friend std::ostream& operator<<(std::ostream& out, const Scheme& scheme) {
        return out << scheme.name;
    }
};

/// What a desktop's theme would provide.
QPalette themed(const QColor& window, const QColor& base, const QColor& text) {
    QPalette palette(window);
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            palette.setColor(group, role, text);
        palette.setColor(group, QPalette::Base, base);
    }
    return palette;
}

std::vector<Scheme> schemes() {
    return {{"Light", lightPalette()},
            {"Dark", darkPalette()},
            {"HighContrast", themed(Qt::white, Qt::white, Qt::black)},
            {"HighContrastInverse", themed(Qt::black, Qt::black, Qt::white)},
            {"Sepia", themed({0xe4, 0xd8, 0xbc}, {0xf4, 0xec, 0xd8}, {0x43, 0x34, 0x26})},
            {"Slate", themed({0x45, 0x4d, 0x59}, {0x3b, 0x42, 0x4d}, {0xf2, 0xf4, 0xf8})}};
}

class ContrastInTheWindow : public testing::TestWithParam<Scheme> {
 protected:
    ContrastInTheWindow() {
        QApplication::setStyle(std::make_unique<ControlStyle>().release());
        QApplication::setPalette(accented(GetParam().palette));
    }
    void TearDown() override {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        QApplication::setPalette(QApplication::style()->standardPalette());
    }

    /// Where a widget is in another one that it is in.
    [[nodiscard]] static QRect place(const QWidget& widget, const QWidget& in) {
        return {widget.mapTo(&in, QPoint()), widget.size()};
    }

    /// What shows the document. It has no type of its own that the toolkit could find it by.
    [[nodiscard]] static QWidget* preview(const ShownWindow& shown) {
        for (auto* area : shown.window->findChildren<QAbstractScrollArea*>())
            if (dynamic_cast<PDFPreview*>(area) != nullptr) return area;
        return nullptr;
    }

    /// Expects each text and each symbol to be seen well enough.
    static void expectLegible(QWidget& window) {
        const Rendered picture(window);
        int seen = 0;
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (!widget->isVisibleTo(&window) || !widget->isEnabled()) continue;
            const QRect area = place(*widget, window);
            if (const auto* label = qobject_cast<QLabel*>(widget);
                label != nullptr && !label->text().isEmpty()) {
                EXPECT_GE(picture.contrastIn(area), kTextContrast) << label->text().toStdString();
                ++seen;
            } else if (const auto* button = qobject_cast<QPushButton*>(widget)) {
                EXPECT_GE(picture.contrastIn(area.adjusted(8, 5, -8, -5)), kTextContrast)
                    << button->text().toStdString();
                ++seen;
            } else if (const auto* message = qobject_cast<QTextEdit*>(widget)) {
                EXPECT_GE(picture.contrastIn(area), kTextContrast)
                    << message->toPlainText().toStdString();
                ++seen;
            } else if (dynamic_cast<SymbolView*>(widget) != nullptr) {
                EXPECT_GE(picture.contrastIn(area), kGraphicsContrast) << "a symbol";
                ++seen;
            }
        }
        EXPECT_GE(seen, 4);
    }

    /// Expects the two lines of a row, and the symbol before them.
    static void expectLegibleRow(ShownWindow& shown, int row) {
        QListView& list = shown.list();
        const QRect rect = list.visualRect(list.model()->index(row, 0))
                               .translated(list.viewport()->mapTo(shown.window.get(), QPoint()));
        const Rendered picture(*shown.window);
        const QRect text = rect.adjusted(54, 4, -16, -4);
        const QRect upper(text.topLeft(), QSize(text.width(), text.height() / 2));
        EXPECT_GE(picture.contrastIn(upper), kTextContrast) << "the name in row " << row;
        EXPECT_GE(picture.contrastIn(upper.translated(0, upper.height())), kTextContrast)
            << "the pages in row " << row;
        EXPECT_GE(picture.contrastIn({rect.left() + 18, rect.top() + 6, 24, rect.height() - 12}),
                  kGraphicsContrast)
            << "the symbol in row " << row;
    }

    /// Expects that the keyboard focus makes a clear difference around a widget.
    static void expectFocusSeen(ShownWindow& shown, QWidget& widget, QWidget& elsewhere) {
        shown.window->setAttribute(Qt::WA_KeyboardFocusChange);
        elsewhere.setFocus(Qt::TabFocusReason);
        ShownWindow::settle();
        const Rendered before(*shown.window);
        widget.setFocus(Qt::TabFocusReason);
        ShownWindow::settle();
        ASSERT_TRUE(widget.hasFocus());
        const Rendered after(*shown.window);
        const QRect area = place(widget, *shown.window);
        const double edges = std::min(area.width(), area.height());  // of a divider, one
        EXPECT_GE(after.changedBy(kGraphicsContrast, before, area), edges)
            << widget.metaObject()->className() << ' ' << widget.accessibleName().toStdString();
    }
};

TEST_P(ContrastInTheWindow, OfAnEmptyWindowIsEnough) {
    const ShownWindow shown;
    expectLegible(*shown.window);
}

TEST_P(ContrastInTheWindow, OfAListIsEnough) {
    ShownWindow shown;
    shown.add({"a.pdf", "b.pdf", "c.pdf"});
    expectLegible(*shown.window);
    for (int row = 0; row < 3; ++row) expectLegibleRow(shown, row);
    // The pointer over a row that is not selected.
    QTest::mouseMove(shown.list().viewport(),
                     shown.list().visualRect(shown.list().model()->index(1, 0)).center());
    ShownWindow::settle();
    expectLegibleRow(shown, 1);
    QApplication::setActiveWindow(nullptr);
    ShownWindow::settle();
    expectLegibleRow(shown, 0);
}

TEST_P(ContrastInTheWindow, OfAnAlertIsEnough) {
    ShownWindow shown;
    shown.window->state().importFiles(std::vector{URL::file(shown.folder / "missing.pdf")});
    ShownWindow::settle();
    ASSERT_NE(shown.alert(), nullptr);
    ASSERT_NE(shown.alert()->findChild<QTextEdit*>(), nullptr);
    expectLegible(*shown.alert());
}

TEST_P(ContrastInTheWindow, OfAContextMenuIsEnough) {
    ShownWindow shown;
    shown.add({"a.pdf", "b.pdf"});
    int looked = 0;
    QTimer::singleShot(0, shown.window.get(), [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* chosen : menu->actions()) {
            menu->setActiveAction(chosen);
            const Rendered picture(*menu);
            for (QAction* action : menu->actions()) {
                if (action->isSeparator() || !action->isEnabled()) continue;
                EXPECT_GE(picture.contrastIn(menu->actionGeometry(action)), kTextContrast)
                    << action->text().toStdString();
                ++looked;
            }
        }
        menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(shown.list().viewport(), &event);
    EXPECT_GE(looked, 9);
}

TEST_P(ContrastInTheWindow, OfWhatSaysThatAMergeRunsIsEnough) {
    auto merge = std::make_shared<HeldMerge>();
    ShownWindow shown(
        [merge](auto sources, const URL& destination) { (*merge)(sources, destination); });
    shown.add({"a.pdf", "b.pdf"});
    shown.desktop->placeToSave = URL::file(shown.folder / "joined.pdf");
    shown.window->state().merge();
    ShownWindow::settle();
    auto* activity = shown.window->findChild<QProgressBar*>();
    const Rendered picture(*shown.window);
    EXPECT_GE(picture.contrastIn(place(*activity, *shown.window)), kGraphicsContrast);
    merge->release();
    EXPECT_TRUE(ShownWindow::waitFor([&] { return shown.button("Show in Finder") != nullptr; }));
    expectLegible(*shown.window);
}

TEST_P(ContrastInTheWindow, OfTheFocusIsEnough) {
    ShownWindow shown;
    shown.add({"a.pdf", "b.pdf"});
    QPushButton* const add = shown.button("Add PDFs…");
    QPushButton* const merge = shown.button("Merge PDFs…");
    expectFocusSeen(shown, *add, *merge);
    for (const char* name : {"Up", "Down", "Remove", "Merge PDFs…"})
        expectFocusSeen(shown, *shown.button(name), *add);
    expectFocusSeen(shown, shown.list(), *add);
    expectFocusSeen(shown, *shown.window->findChild<QSplitter*>()->handle(1), *add);
    expectFocusSeen(shown, *preview(shown), *add);
}

TEST_P(ContrastInTheWindow, OfWhereFilesAreDroppedIsEnough) {
    ShownWindow shown;
    shown.add({"a.pdf"});
    const Rendered before(*shown.window);
    shown.window->state().setTargeted(true);
    ShownWindow::settle();
    const Rendered after(*shown.window);
    const auto* splitter = shown.window->findChild<QSplitter*>();
    const QRect area = place(*splitter, *shown.window);
    // A line around all of it: each side is drawn, so that it is a shape and no mere colour.
    constexpr int kSide = 4;
    for (const QRect& side : {QRect(area.left(), area.top(), area.width(), kSide),
                              QRect(area.left(), area.bottom() - kSide + 1, area.width(), kSide),
                              QRect(area.left(), area.top(), kSide, area.height()),
                              QRect(area.right() - kSide + 1, area.top(), kSide, area.height())})
        EXPECT_GE(after.changedBy(kGraphicsContrast, before, side),
                  std::max(side.width(), side.height()));
}

TEST_P(ContrastInTheWindow, OfTheSelectionDoesNotRestOnItsGround) {
    ShownWindow shown;
    shown.add({"a.pdf", "b.pdf"});
    shown.button("Add PDFs…")->setFocus();
    for (const bool active : {true, false}) {
        QApplication::setActiveWindow(active ? shown.window.get() : nullptr);
        shown.window->state().setSelection(shown.window->state().files()[1].id);
        ShownWindow::settle();
        const Rendered before(*shown.window);
        shown.window->state().setSelection(shown.window->state().files()[0].id);
        ShownWindow::settle();
        const Rendered after(*shown.window);
        const QListView& list = shown.list();
        const QRect row = list.visualRect(list.model()->index(0, 0))
                              .translated(list.viewport()->mapTo(shown.window.get(), QPoint()));
        EXPECT_GE(after.changedBy(kGraphicsContrast, before, row), row.height());
    }
}

TEST_P(ContrastInTheWindow, OfScrollBarsIsEnough) {
    ShownWindow shown;
    std::vector<std::string> names;
    for (int i = 0; i < 20; ++i) names.push_back(std::to_string(i) + ".pdf");
    shown.add(names);
    shown.folder.write("long.pdf", test::simplePDF(9));
    shown.window->state().importFiles(std::vector{URL::file(shown.folder / "long.pdf")});
    shown.window->state().setSelection(shown.window->state().files().back().id);
    ShownWindow::settle();
    const Rendered picture(*shown.window);
    int seen = 0;
    for (const QScrollBar* bar : shown.window->findChildren<QScrollBar*>()) {
        if (!bar->isVisible() || bar->maximum() == bar->minimum()) continue;
        EXPECT_GE(picture.contrastIn(place(*bar, *shown.window)), kGraphicsContrast);
        ++seen;
    }
    EXPECT_EQ(seen, 2);
}

INSTANTIATE_TEST_SUITE_P(Schemes, ContrastInTheWindow, testing::ValuesIn(schemes()),
                         [](const auto& scheme) { return std::string(scheme.param.name); });

TEST(Contrast, IsCountedAsElsewhere) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.001);
    for (const QColor& colour : {QColor(0x00, 0x86, 0x98), QColor(0x12, 0x34, 0x56)})
        EXPECT_NEAR(contrast(colour, Qt::white), contrastOf(colour, Qt::white), 0.001);
}

}  // namespace
}  // namespace quirebind
