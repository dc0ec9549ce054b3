// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <string>

#include <gtest/gtest.h>

#include "Quirebind/Preview/TextSelection.h"

namespace quirebind {
namespace {

/// A renderer of pages with three lines each, as wide as the page: "page p line l".
PageText answer(const RenderTask& task) {
    PageText text;
    for (int line = 0; line < 3; ++line) {
        const QRectF area(10, 10 + 20 * line, 100, 12);
        const bool selected = task.kind == RenderTask::Kind::text ||
                              (area.bottom() > task.from.y() && area.top() < task.to.y());
        if (!selected) continue;
        text.areas << area;
        text.text += QStringLiteral("page %1 line %2;").arg(task.page).arg(line);
    }
    return text;
}

/// Answers all that the selection wants; gives how much that was.
int answerAll(TextSelection& selection) {
    int tasks = 0;
    while (const auto task = selection.nextTask()) {
        EXPECT_TRUE(selection.wants(*task));
        selection.didRead(*task, answer(*task));
        if (++tasks > 1000) break;
    }
    return tasks;
}

std::string textOf(const TextSelection& selection) {
    return selection.text().value_or(QStringLiteral("(missing)")).toStdString();
}

TEST(TextSelection, IsEmptyUntilThePointerHasMoved) {
    TextSelection selection;
    selection.reset(1);
    EXPECT_TRUE(selection.isEmpty());
    selection.begin({0, {20, 15}});
    EXPECT_TRUE(selection.isEmpty());
    EXPECT_FALSE(selection.nextTask());
    selection.extend({0, {60, 15}});
    EXPECT_FALSE(selection.isEmpty());
}

TEST(TextSelection, AsksForThePlacesOfTextAndThenForThePart) {
    TextSelection selection;
    selection.reset(1);
    selection.begin({0, {20, 15}});
    selection.extend({0, {60, 36}});
    const auto first = selection.nextTask();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->kind, RenderTask::Kind::text);
    EXPECT_EQ(textOf(selection), "(missing)");
    selection.didRead(*first, answer(*first));
    const auto second = selection.nextTask();
    ASSERT_TRUE(second);
    EXPECT_EQ(second->kind, RenderTask::Kind::selection);
    EXPECT_EQ(second->from, QPointF(20, 16)) << "on the line's middle";
    EXPECT_EQ(second->to, QPointF(60, 36));
    selection.didRead(*second, answer(*second));
    EXPECT_EQ(textOf(selection), "page 0 line 0;page 0 line 1;");
    EXPECT_EQ(selection.areasOn(0).size(), 2);
    EXPECT_FALSE(selection.nextTask());
}

TEST(TextSelection, MovesPointsBesideTheTextOntoIt) {
    TextSelection selection;
    selection.reset(1);
    selection.begin({0, {-50, 36}});
    selection.extend({0, {500, 300}});
    const auto text = selection.nextTask();
    selection.didRead(*text, answer(*text));
    const auto part = selection.nextTask();
    ASSERT_TRUE(part);
    EXPECT_EQ(part->from, QPointF(10.5, 36));
    EXPECT_EQ(part->to, QPointF(109.5, 56)) << "the last line is the nearest";
}

TEST(TextSelection, TakesTheWordThatIsClickedTwice) {
    TextSelection selection;
    selection.reset(1);
    selection.begin({0, {20, 15}}, TextSelection::Unit::word);
    EXPECT_FALSE(selection.isEmpty());
    const auto text = selection.nextTask();
    selection.didRead(*text, answer(*text));
    const auto word = selection.nextTask();
    ASSERT_TRUE(word);
    EXPECT_EQ(word->kind, RenderTask::Kind::word);
    EXPECT_EQ(word->from, QPointF(20, 16));
    selection.didRead(*word, {QStringLiteral("word"), {}});
    EXPECT_EQ(textOf(selection), "word");
}

TEST(TextSelection, TakesTheLineThatIsClickedThrice) {
    TextSelection selection;
    selection.reset(1);
    selection.begin({0, {60, 36}}, TextSelection::Unit::line);
    answerAll(selection);
    EXPECT_EQ(textOf(selection), "page 0 line 1;");
    selection.begin({0, {60, 36}});
    EXPECT_TRUE(selection.isEmpty());
}

TEST(TextSelection, TakesPagesBetweenWhole) {
    TextSelection selection;
    selection.reset(5);
    selection.begin({3, {50, 16}});  // backwards
    selection.extend({1, {50, 56}});
    answerAll(selection);
    EXPECT_EQ(textOf(selection),
              "page 1 line 2;\npage 2 line 0;page 2 line 1;page 2 line 2;\npage 3 line 0;");
    EXPECT_EQ(selection.areasOn(2).size(), 3);
    EXPECT_TRUE(selection.areasOn(0).isEmpty());
    EXPECT_TRUE(selection.areasOn(4).isEmpty());
}

TEST(TextSelection, AsksOnlyForPagesInSightUntilItIsCopied) {
    TextSelection selection;
    selection.reset(1000);
    selection.selectAll();
    const auto visible = selection.nextTask(500, 501);
    ASSERT_TRUE(visible);
    EXPECT_EQ(visible->page, 500U);
    EXPECT_EQ(answerAll(selection), 1000);
    EXPECT_EQ(selection.text()->count(QLatin1Char(';')), 3000);
}

TEST(TextSelection, ShowsTheLastAnswerWhileTheNextIsOnItsWay) {
    TextSelection selection;
    selection.reset(1);
    selection.begin({0, {20, 16}});
    selection.extend({0, {60, 16}});
    answerAll(selection);
    selection.extend({0, {60, 56}});
    EXPECT_EQ(selection.areasOn(0).size(), 1);
    EXPECT_EQ(textOf(selection), "(missing)") << "but nothing old is copied";
    answerAll(selection);
    EXPECT_EQ(selection.areasOn(0).size(), 3);
}

TEST(TextSelection, NoLongerWantsWhatIsOld) {
    TextSelection selection;
    selection.reset(1);
    selection.begin({0, {20, 16}});
    selection.extend({0, {60, 16}});
    auto text = selection.nextTask();
    selection.didRead(*text, answer(*text));
    const auto old = selection.nextTask();
    selection.extend({0, {80, 16}});
    EXPECT_FALSE(selection.wants(*old));
    selection.clear();
    EXPECT_FALSE(selection.wants(*text));
    EXPECT_TRUE(selection.areasOn(0).isEmpty());
}

TEST(TextSelection, IsEmptyTextOnPagesWithoutAny) {
    TextSelection selection;
    selection.reset(2);
    selection.selectAll();
    while (const auto task = selection.nextTask()) selection.didRead(*task, {});
    EXPECT_EQ(textOf(selection), "\n");
}

}  // namespace
}  // namespace quirebind
