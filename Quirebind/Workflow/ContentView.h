// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "Platform/Files/URL.h"
#include "Quirebind/Workflow/BackgroundWork.h"
#include "Quirebind/Workflow/Desktop.h"
#include "Quirebind/Workflow/InputPDF.h"
#include "Quirebind/Workflow/MainThread.h"
#include "Quirebind/Workflow/State.h"

namespace quirebind {

/// What a ContentView needs of the program around it. Everything here outlives every view.
struct ContentViewEnvironment {
    MainThread& mainThread;
    Desktop& desktop;
    BackgroundWork& background;
    /// PDFMerger::merge, or what stands in for it in tests. Called on a background thread.
    std::function<void(std::span<const URL>, const URL&)> merge;
};

/// The state of one window and every operation on it, without a window: what is drawn is drawn from
/// here, and what the user does ends up here.
///
/// Main thread only, which every entry point checks at run time. Nothing is raised: failures become
/// the text in `error`. After each operation `selection` is none or the id of a listed entry; every
/// change of `files` sets `output` to none, so that it always belongs to the list as it stands.
class ContentView {
 public:
    /// An empty list, nothing selected. `observer` is told of every write of a cell; it and what
    /// `environment` refers to must outlive this.
    ContentView(const ContentViewEnvironment& environment, StateObserver& observer);
    ContentView(const ContentView&) = delete;
    ContentView& operator=(const ContentView&) = delete;
    ContentView(ContentView&&) = delete;
    ContentView& operator=(ContentView&&) = delete;
    /// A merge that is running goes on, and its outcome is dropped.
    ~ContentView() = default;

    // The state.

    /// The documents to merge, in merge order.
    [[nodiscard]] const std::vector<InputPDF>& files() const { return files_.get(); }
    /// The id of the selected entry.
    [[nodiscard]] const std::optional<UUID>& selection() const { return selection_.get(); }
    /// The failure to show.
    [[nodiscard]] const std::optional<std::string>& error() const { return error_.get(); }
    /// The file that the last merge wrote, while the list is still the one that was merged.
    [[nodiscard]] const std::optional<URL>& output() const { return output_.get(); }
    /// Whether a merge is under way.
    [[nodiscard]] bool merging() const { return merging_.get(); }
    /// Whether a drag hovers over the drop area.
    [[nodiscard]] bool targeted() const { return targeted_.get(); }

    // What follows from it.

    /// The URL of the selected document.
    [[nodiscard]] std::optional<URL> selectedURL() const;
    /// The pages of all listed documents together. Stops the program where 64 bits do not hold
    /// them.
    [[nodiscard]] std::int64_t pageCount() const;

    // Selecting, and dismissing the alert.

    /// What the list view writes when the user selects a row or none.
    void setSelection(std::optional<UUID> id);
    /// Takes note that the user has read what went wrong.
    void dismissError();

    // Adding.

    /// Opens every file and lists those that opened, behind the others; the failures of the rest
    /// become `error`, a line each.
    void importFiles(std::span<const URL> urls);
    /// The action of the add button: lets the user choose files and adds them.
    void chooseFiles();
    /// Files were dropped. False refuses them: while a merge runs.
    [[nodiscard]] bool drop(std::span<const URL> urls);
    /// A drag began or ceased to hover over the drop area.
    void setTargeted(bool targeted);

    // Reordering and removing.

    /// Swaps the selected entry with the one `offset` further; does nothing at either end.
    void move(std::int64_t offset);
    /// Takes the entries at the positions `sources` out and puts them back as one block before the
    /// entry at `destination`, all counted in the list as it is now. Positions beyond the list are
    /// ignored.
    void move(const std::set<std::size_t>& sources, std::size_t destination);
    /// Takes the selected entry off the list and selects the first one.
    void removeSelected();

    // Merging.

    /// Lets the user choose where to save, then starts the merge of the list as it stands. Returns
    /// when that has begun; the outcome comes later, in `output` or `error`.
    void merge();
    /// Shows `output` in the file manager, where there is one.
    void showInFinder();

 private:
    /// What a running merge knows of its window. Used on the main thread only.
    struct Handle {
        ContentView& view;
    };
    struct MergeRequest;

    /// The one test that decides which entry is selected.
    [[nodiscard]] bool isSelected(const InputPDF& file) const;
    /// The first selected entry; the list's end where none is.
    [[nodiscard]] std::vector<InputPDF>::const_iterator selectedEntry() const;
    static void perform(const std::shared_ptr<const MergeRequest>& request);
    void finishMerge(const URL& destination, const std::optional<std::string>& failure);

    ContentViewEnvironment environment_;
    State<std::vector<InputPDF>> files_;
    State<std::optional<UUID>> selection_;
    State<std::optional<std::string>> error_;
    State<std::optional<URL>> output_;
    State<bool> merging_;
    State<bool> targeted_;
    std::shared_ptr<Handle> handle_;
};

}  // namespace quirebind
