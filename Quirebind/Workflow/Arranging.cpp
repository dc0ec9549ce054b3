// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <ranges>
#include <utility>

#include "Quirebind/Workflow/CheckedAddition.h"
#include "Quirebind/Workflow/ContentView.h"

// How the list is reordered and documents leave it. The files on disk are not touched.

namespace quirebind {

void ContentView::move(std::int64_t offset) {
    environment_.mainThread.check();
    const auto& files = files_.get();
    const auto entry = selectedEntry();
    if (entry == files.end()) return;
    const std::int64_t from = entry - files.begin();
    const std::int64_t to = checkedSum(from, offset);
    if (to < 0 || to >= std::ssize(files)) return;
    files_.change([&](auto& changed) {
        std::swap(changed[static_cast<std::size_t>(from)], changed[static_cast<std::size_t>(to)]);
    });
    output_.set(std::nullopt);
}

void ContentView::move(const std::set<std::size_t>& sources, std::size_t destination) {
    environment_.mainThread.check();
    files_.change([&](auto& files) {
        std::vector<InputPDF> before;
        std::vector<InputPDF> moved;
        std::vector<InputPDF> behind;
        for (std::size_t i = 0; i < files.size(); ++i) {
            auto& kept = i < destination ? before : behind;
            (sources.contains(i) ? moved : kept).push_back(std::move(files[i]));
        }
        files = std::move(before);
        std::ranges::move(moved, std::back_inserter(files));
        std::ranges::move(behind, std::back_inserter(files));
    });
    output_.set(std::nullopt);
}

void ContentView::removeSelected() {
    environment_.mainThread.check();
    files_.change([this](auto& files) {
        std::erase_if(files, [this](const InputPDF& file) { return isSelected(file); });
    });
    const auto& files = files_.get();
    selection_.set(files.empty() ? std::nullopt : std::optional(files.front().id));
    output_.set(std::nullopt);
}

}  // namespace quirebind
