// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Quirebind/Workflow/WorkflowTestSupport.h"

namespace quirebind::workflowtest {
namespace {

using ::testing::ElementsAre;

TEST(Moving, swapsTheSelectedEntryWithItsNeighbour) {
    Window window;
    window.add({"a", "b", "c"});
    window.select(1);
    window.view.move(-1);
    EXPECT_EQ(window.names(), "bac");
    EXPECT_EQ(window.selected(), 0U);
    EXPECT_THAT(window.recorder.taken(), ElementsAre(Field::files, Field::output));
    window.view.move(1);
    window.view.move(1);
    EXPECT_EQ(window.names(), "acb");
}

TEST(Moving, isNoShiftForLargerOffsets) {
    Window window;
    window.add({"a", "b", "c"});
    window.view.move(2);
    EXPECT_EQ(window.names(), "cba");
}

TEST(Moving, beyondEitherEndDoesNothingAtAll) {
    Window window;
    window.add({"a", "b"});
    window.view.move(-1);
    window.select(1);
    window.view.move(1);
    window.view.move(std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(window.names(), "ab");
    EXPECT_TRUE(window.recorder.writes.empty());
}

TEST(Moving, withoutASelectionDoesNothingAtAll) {
    Window window;
    window.add({"a", "b"});
    window.view.setSelection(std::nullopt);
    window.recorder.writes.clear();
    window.view.move(1);
    EXPECT_TRUE(window.recorder.writes.empty());
}

TEST(MovingDeathTest, ofATargetThatOverflowsStopsTheProgram) {
    Window window;
    window.add({"a", "b"});
    window.select(1);
    EXPECT_DEATH(window.view.move(std::numeric_limits<std::int64_t>::max()),
                 "Arranging.cpp:[0-9]+: Fatal error: Arithmetic overflow");
}

TEST(Reordering, putsTheTakenRowsBeforeTheDestinationAsOneBlock) {
    Window window;
    window.add({"a", "b", "c", "d"});
    window.view.move({0, 2}, 4);
    EXPECT_EQ(window.names(), "bdac");
    EXPECT_EQ(window.selected(), 2U);
    EXPECT_THAT(window.recorder.taken(), ElementsAre(Field::files, Field::output));
    window.view.move({3}, 0);
    EXPECT_EQ(window.names(), "cbda");
    window.view.move({0, 3}, 2);
    EXPECT_EQ(window.names(), "bcad");
}

TEST(Removing, selectsTheFirstOfTheRest) {
    Window window;
    window.add({"a", "b", "c"});
    window.select(2);
    window.view.removeSelected();
    EXPECT_EQ(window.names(), "ab");
    EXPECT_EQ(window.selected(), 0U);
    EXPECT_THAT(window.recorder.taken(),
                ElementsAre(Field::files, Field::selection, Field::output));
}

TEST(Removing, ofTheOnlyEntryLeavesNothingSelected) {
    Window window;
    window.add({"a"});
    window.view.removeSelected();
    EXPECT_TRUE(window.view.files().empty());
    EXPECT_FALSE(window.view.selection());
}

}  // namespace
}  // namespace quirebind::workflowtest
