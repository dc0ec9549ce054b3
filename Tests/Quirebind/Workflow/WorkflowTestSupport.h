// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "Quirebind/Workflow/ContentView.h"
#include "QuirebindCore/PDFMerger.h"
#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::workflowtest {

/// An event loop that runs only when it is told to.
class TestMainThread : public MainThread {
 public:
    void post(std::function<void()> task) override {
        {
            const std::lock_guard lock(mutex_);
            tasks_.push_back(std::move(task));
        }
        posted_.notify_one();
    }

    /// Runs what is waiting now; gives how many tasks that were.
    std::size_t runTurn() {
        std::deque<std::function<void()>> turn;
        {
            const std::lock_guard lock(mutex_);
            turn.swap(tasks_);
        }
        for (const auto& task : turn) task();
        return turn.size();
    }

    /// Runs turns until `condition` holds, waiting for other threads to post.
    void runUntil(const std::function<bool()>& condition) {
        while (!condition()) {
            {
                std::unique_lock lock(mutex_);
                posted_.wait(lock, [this] { return !tasks_.empty(); });
            }
            runTurn();
        }
    }

 private:
    std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<std::function<void()>> tasks_;
};

/// A desktop whose user answers panels as the test says, and which records what it was asked.
class TestDesktop : public Desktop {
 public:
    std::optional<std::vector<URL>> runModal(const OpenPanel& panel) override {
        openPanels.push_back(panel);
        return filesToOpen;
    }
    std::optional<URL> runModal(const SavePanel& panel) override {
        savePanels.push_back(panel);
        return placeToSave;
    }
    void activateFileViewerSelecting(std::span<const URL> urls) override {
        shown.emplace_back(urls.begin(), urls.end());
    }

    std::optional<std::vector<URL>> filesToOpen;
    std::optional<URL> placeToSave;
    std::vector<OpenPanel> openPanels;
    std::vector<SavePanel> savePanels;
    std::vector<std::vector<URL>> shown;
};

/// Records which cells are written, in order.
class Recorder : public StateObserver {
 public:
    void didWrite(Field field) override { writes.push_back(field); }
    /// The writes since the last call.
    std::vector<Field> taken() { return std::exchange(writes, {}); }

    std::vector<Field> writes;
};

/// A window's state with everything around it that it needs, and a folder of documents.
struct Window {
    /// An empty list, and PDFMerger::merge to merge it.
    Window() : view({mainThread, desktop, background, PDFMerger::merge}, recorder) {}

    /// Writes a document of that many pages.
    [[nodiscard]] URL document(const std::string& name, int pages) const {
        folder.write(name, test::simplePDF(pages));
        return URL::file(folder / name);
    }
    /// Adds documents of one page each, by these names.
    void add(const std::vector<std::string>& names) {
        std::vector<URL> urls;
        urls.reserve(names.size());
        for (const std::string& name : names) urls.push_back(document(name, 1));
        view.importFiles(urls);
        recorder.writes.clear();
    }
    /// The names of the listed documents, one behind the other.
    [[nodiscard]] std::string names() const {
        std::string result;
        for (const InputPDF& file : view.files()) result += file.url.lastPathComponent();
        return result;
    }
    /// Selects the entry at that place in the list.
    void select(std::size_t index) {
        view.setSelection(view.files().at(index).id);
        recorder.writes.clear();
    }
    /// Where the selected entry is in the list.
    [[nodiscard]] std::optional<std::size_t> selected() const {
        for (std::size_t i = 0; i < view.files().size(); ++i)
            if (view.files()[i].id == view.selection()) return i;
        return std::nullopt;
    }
    /// Merges the list into a file of that name; gives its URL.
    URL mergeInto(const std::string& name) {
        const URL destination = URL::file(folder / name);
        desktop.placeToSave = destination;
        view.merge();
        mainThread.runUntil([this] { return !view.merging(); });
        return destination;
    }

    TemporaryFolder folder;
    TestMainThread mainThread;
    TestDesktop desktop;
    BackgroundWork background;
    Recorder recorder;
    ContentView view;
};

}  // namespace quirebind::workflowtest
