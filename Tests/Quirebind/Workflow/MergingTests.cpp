// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <atomic>
#include <memory>
#include <optional>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Quirebind/Workflow/RedrawScheduler.h"
#include "Tests/Quirebind/Workflow/WorkflowTestSupport.h"

namespace quirebind::workflowtest {
namespace {

using ::testing::ElementsAre;

TEST(Merging, writesTheListAndOffersTheResult) {
    Window window;
    window.add({"a", "b"});
    const URL destination = window.mergeInto("out.pdf");
    EXPECT_EQ(window.view.output(), destination);
    EXPECT_FALSE(window.view.error());
    EXPECT_THAT(window.recorder.taken(),
                ElementsAre(Field::merging, Field::output, Field::output, Field::merging));
    EXPECT_EQ(PDFMerger::open(destination).pageCount(), 2U);
    ASSERT_EQ(window.desktop.savePanels.size(), 1U);
    EXPECT_EQ(window.desktop.savePanels[0].nameFieldStringValue, "Quirebind.pdf");
    EXPECT_THAT(window.desktop.savePanels[0].allowedContentTypes, ElementsAre(ContentType::pdf));
    window.view.showInFinder();
    EXPECT_THAT(window.desktop.shown, ElementsAre(ElementsAre(destination)));
}

TEST(Merging, intoOneOfTheSourcesIsRefused) {
    Window window;
    window.add({"a", "b"});
    window.mergeInto("b");
    EXPECT_EQ(window.view.error(),
              "Choose a different output file to preserve your original PDFs.");
    EXPECT_FALSE(window.view.output());
    EXPECT_THAT(window.recorder.taken(),
                ElementsAre(Field::merging, Field::output, Field::error, Field::merging));
}

TEST(Merging, tellsTheFileSystemsOwnError) {
    Window window;
    window.add({"a", "b"});
    window.mergeInto("missing/out.pdf");
    EXPECT_EQ(window.view.error(), "No such file or directory");
    EXPECT_FALSE(window.view.output());
}

TEST(Merging, changesNothingWhenThePanelIsCancelled) {
    Window window;
    window.add({"a", "b"});
    window.mergeInto("out.pdf");
    window.recorder.writes.clear();
    window.desktop.placeToSave = std::nullopt;
    window.view.merge();
    EXPECT_TRUE(window.view.output());
    EXPECT_TRUE(window.recorder.writes.empty());
}

TEST(Merging, refusesDropsMeanwhile) {
    Window window;
    window.add({"a", "b"});
    window.desktop.placeToSave = URL::file(window.folder / "out.pdf");
    window.view.merge();
    EXPECT_TRUE(window.view.merging());
    EXPECT_FALSE(window.view.drop(std::vector{window.document("c", 1)}));
    EXPECT_EQ(window.names(), "ab");
    window.mainThread.runUntil([&] { return !window.view.merging(); });
}

// The engine is held up until the list has changed and the window is gone.
TEST(Merging, goesOnWithItsOwnCopyWhenTheWindowCloses) {
    TestMainThread mainThread;
    TestDesktop desktop;
    Recorder recorder;
    std::atomic<bool> go = false;
    std::vector<URL> merged;
    const TemporaryFolder folder;
    folder.write("a", test::simplePDF(1));
    desktop.placeToSave = URL::file(folder / "out.pdf");
    {
        BackgroundWork background;
        auto view = std::make_unique<ContentView>(
            ContentViewEnvironment{mainThread, desktop, background,
                                   [&](std::span<const URL> sources, const URL&) {
                                       while (!go) std::this_thread::yield();
                                       merged.assign(sources.begin(), sources.end());
                                   }},
            recorder);
        view->importFiles(std::vector{URL::file(folder / "a")});
        view->merge();
        mainThread.runTurn();
        view->removeSelected();
        recorder.writes.clear();
        view.reset();
        go = true;
    }
    mainThread.runTurn();
    EXPECT_THAT(merged, ElementsAre(URL::file(folder / "a")));
    EXPECT_TRUE(recorder.writes.empty());
}

TEST(Merging, isFinishedBeforeTheProgramEnds) {
    const TemporaryFolder folder;
    const URL destination = URL::file(folder / "out.pdf");
    {
        Window window;
        window.add({"a", "b"});
        window.desktop.placeToSave = destination;
        window.view.merge();
        window.mainThread.runTurn();
    }
    EXPECT_EQ(PDFMerger::open(destination).pageCount(), 2U);
}

TEST(Redraw, happensOnceForAllWritesOfATurn) {
    TestMainThread mainThread;
    int redraws = 0;
    RedrawScheduler scheduler(mainThread, [&] { ++redraws; });
    State<int> cell(Field::files, 0, mainThread, scheduler);
    cell.set(1);
    cell.set(1);
    cell.change([](int& value) { ++value; });
    EXPECT_EQ(redraws, 0);
    mainThread.runTurn();
    EXPECT_EQ(redraws, 1);
    cell.set(2);
    mainThread.runTurn();
    EXPECT_EQ(redraws, 2);
}

TEST(Redraw, doesNotReachAWindowThatIsGone) {
    TestMainThread mainThread;
    int redraws = 0;
    std::optional<RedrawScheduler> scheduler;
    scheduler.emplace(mainThread, [&] { ++redraws; });
    scheduler->didWrite(Field::files);
    scheduler.reset();
    mainThread.runTurn();
    EXPECT_EQ(redraws, 0);
}

TEST(MainThreadDeathTest, isWhereEveryOperationBelongs) {
    Window window;
    EXPECT_DEATH(std::thread([&] { window.view.merge(); }).join(),
                 "Merging.cpp:[0-9]+: Fatal error: .*off the main thread");
}

}  // namespace
}  // namespace quirebind::workflowtest
