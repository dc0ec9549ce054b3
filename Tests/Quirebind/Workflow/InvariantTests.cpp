// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Tests/Quirebind/Workflow/WorkflowTestSupport.h"

namespace quirebind::workflowtest {
namespace {

/// What must hold of a window's state between any two operations.
void expectInvariants(const Window& window, std::size_t count) {
    const auto& files = window.view.files();
    ASSERT_EQ(files.size(), count);
    std::set<UUID> ids;
    for (const InputPDF& file : files) {
        ids.insert(file.id);
        EXPECT_GE(file.pages, 1);
    }
    EXPECT_EQ(ids.size(), files.size());
    const auto& selection = window.view.selection();
    EXPECT_TRUE(!selection || ids.contains(*selection));
    EXPECT_FALSE(window.view.output());
}

TEST(Invariants, holdAfterAnySequenceOfOperations) {
    for (std::uint32_t seed = 0; seed < 50; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&random](std::size_t limit) { return random() % limit; };
        Window window;
        const std::vector documents{window.document("a", 1), window.document("b", 2),
                                    URL::file(window.folder / "gone")};
        std::size_t count = 0;
        for (int step = 0; step < 200; ++step) {
            switch (below(5)) {
                case 0: {
                    const URL& url = documents[below(documents.size())];
                    window.view.importFiles(std::vector{url});
                    if (url != documents.back()) ++count;
                    break;
                }
                case 1:
                    window.view.move(static_cast<std::int64_t>(below(5)) - 2);
                    break;
                case 2:
                    window.view.move({below(count + 1), below(count + 1)}, below(count + 1));
                    break;
                case 3:
                    if (window.view.selection()) --count;
                    window.view.removeSelected();
                    break;
                default:
                    if (count != 0) window.select(below(count));
            }
            expectInvariants(window, count);
            if (HasFatalFailure()) return;
        }
    }
}

TEST(Adding, isOneWriteAFileHoweverManyThereAre) {
    constexpr std::size_t kFiles = 5000;
    Window window;
    const std::vector<URL> urls(kFiles, window.document("a", 1));
    window.view.importFiles(urls);
    EXPECT_EQ(window.view.files().size(), kFiles);
    EXPECT_EQ(std::ranges::count(window.recorder.writes, Field::files),
              static_cast<std::ptrdiff_t>(kFiles));
}

TEST(PageCountDeathTest, thatOverflowsStopsTheProgram) {
    const InputPDF file{UUID::generate(), URL::file("a"), std::numeric_limits<std::int64_t>::max()};
    const std::vector files{file, file};
    EXPECT_EQ(totalPages(std::span(files).first(1)), file.pages);
    EXPECT_DEATH(static_cast<void>(totalPages(files)),
                 "InputPDF.h:[0-9]+: Fatal error: Arithmetic overflow");
}

TEST(MainThreadDeathTest, isCheckedAtEveryEntry) {
    Window window;
    ContentView& view = window.view;
    const std::vector<std::function<void()>> entries{
        [&] { static_cast<void>(view.files()); },
        [&] { static_cast<void>(view.selection()); },
        [&] { static_cast<void>(view.error()); },
        [&] { static_cast<void>(view.output()); },
        [&] { static_cast<void>(view.merging()); },
        [&] { static_cast<void>(view.targeted()); },
        [&] { static_cast<void>(view.selectedURL()); },
        [&] { static_cast<void>(view.pageCount()); },
        [&] { view.setSelection(std::nullopt); },
        [&] { view.dismissError(); },
        [&] { view.importFiles({}); },
        [&] { view.chooseFiles(); },
        [&] { static_cast<void>(view.drop({})); },
        [&] { view.setTargeted(true); },
        [&] { view.move(1); },
        [&] { view.move({}, 0); },
        [&] { view.removeSelected(); },
        [&] { view.merge(); },
        [&] { view.showInFinder(); },
    };
    for (const auto& entry : entries)
        EXPECT_DEATH(std::thread(entry).join(),
                     "[A-Za-z]+\\.(cpp|h):[0-9]+: Fatal error: .*off the main thread");
}

}  // namespace
}  // namespace quirebind::workflowtest
