// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Workflow/ContentView.h"

#include <algorithm>
#include <ranges>

namespace quirebind {

ContentView::ContentView(const ContentViewEnvironment& environment, StateObserver& observer)
    : environment_(environment),
      files_(Field::files, {}, environment.mainThread, observer),
      selection_(Field::selection, std::nullopt, environment.mainThread, observer),
      error_(Field::error, std::nullopt, environment.mainThread, observer),
      output_(Field::output, std::nullopt, environment.mainThread, observer),
      merging_(Field::merging, false, environment.mainThread, observer),
      targeted_(Field::targeted, false, environment.mainThread, observer),
      handle_(std::make_shared<Handle>(Handle{*this})) {
    environment_.mainThread.check();
}

bool ContentView::isSelected(const InputPDF& file) const {
    return selection_.get() == file.id;
}

std::vector<InputPDF>::const_iterator ContentView::selectedEntry() const {
    return std::ranges::find_if(files_.get(),
                                [this](const InputPDF& file) { return isSelected(file); });
}

std::optional<URL> ContentView::selectedURL() const {
    environment_.mainThread.check();
    const auto entry = selectedEntry();
    if (entry == files_.get().end()) return std::nullopt;
    return entry->url;
}

std::int64_t ContentView::pageCount() const {
    environment_.mainThread.check();
    return totalPages(files_.get());
}

void ContentView::setSelection(std::optional<UUID> id) {
    environment_.mainThread.check();
    selection_.set(id);
}

void ContentView::dismissError() {
    environment_.mainThread.check();
    error_.set(std::nullopt);
}

void ContentView::setTargeted(bool targeted) {
    environment_.mainThread.check();
    targeted_.set(targeted);
}

}  // namespace quirebind
