// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <array>
#include <exception>
#include <utility>

#include "Quirebind/Workflow/ContentView.h"

// How a merge runs:
//
//  1. merge() asks where to save, takes a copy of the list's URLs, and says so in the state.
//  2. A task on the main thread starts the engine on a background thread.
//  3. The engine's outcome is posted back to the main thread, and goes into the state of the window
//     if that is still there.
//
// The background thread works on its own copies only. Between 1 and 3 nothing of the window is kept
// but a weak handle, so it may close; the merge then finishes all the same.

namespace quirebind {

struct ContentView::MergeRequest {
    MainThread& mainThread;
    BackgroundWork& background;
    std::function<void(std::span<const URL>, const URL&)> merge;
    std::vector<URL> sources;
    URL destination;
    std::weak_ptr<Handle> window;
};

void ContentView::merge() {
    environment_.mainThread.check();
    SavePanel panel;
    panel.allowedContentTypes = {ContentType::pdf};
    panel.nameFieldStringValue = "Quirebind.pdf";
    auto destination = environment_.desktop.runModal(panel);
    if (!destination) return;

    std::vector<URL> sources;
    for (const InputPDF& file : files_.get()) sources.push_back(file.url);
    merging_.set(true);
    output_.set(std::nullopt);
    const auto request = std::make_shared<const MergeRequest>(
        MergeRequest{environment_.mainThread, environment_.background, environment_.merge,
                     std::move(sources), std::move(*destination), handle_});
    environment_.mainThread.post([request] { perform(request); });
}

void ContentView::perform(const std::shared_ptr<const MergeRequest>& request) {
    const auto finish = [request](std::optional<std::string> failure) {
        request->mainThread.post([request, failure = std::move(failure)] {
            if (const auto window = request->window.lock())
                window->view.finishMerge(request->destination, failure);
        });
    };
    const auto work = [request, finish] {
        std::optional<std::string> failure;
        try {
            request->merge(request->sources, request->destination);
        } catch (const std::exception& error) {
            failure = error.what();
        }
        finish(std::move(failure));
    };
    try {
        request->background.start(work);
    } catch (const std::exception& error) {  // no thread to be had
        finish(error.what());
    }
}

void ContentView::finishMerge(const URL& destination, const std::optional<std::string>& failure) {
    environment_.mainThread.check();
    if (failure)
        error_.set(failure);
    else
        output_.set(destination);
    merging_.set(false);
}

void ContentView::showInFinder() {
    environment_.mainThread.check();
    const auto& output = output_.get();
    if (!output) return;
    const std::array urls{*output};
    environment_.desktop.activateFileViewerSelecting(urls);
}

}  // namespace quirebind
