// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <exception>
#include <utility>

#include "Quirebind/Workflow/ContentView.h"
#include "QuirebindCore/PDFMerger.h"

// How documents enter the list: through the open panel or a drop, and both through importFiles.

namespace quirebind {

void ContentView::importFiles(std::span<const URL> urls) {
    environment_.mainThread.check();
    std::string failures;
    for (const URL& url : urls) {
        try {
            const PDFDocument document = PDFMerger::open(url);
            InputPDF file{UUID::generate(), url, static_cast<std::int64_t>(document.pageCount())};
            files_.change([&](auto& files) { files.push_back(std::move(file)); });
        } catch (const std::exception& error) {
            if (!failures.empty()) failures += '\n';
            failures += error.what();
        }
    }
    if (!selection_.get()) {
        const auto& files = files_.get();
        selection_.set(files.empty() ? std::nullopt : std::optional(files.front().id));
    }
    output_.set(std::nullopt);
    if (!failures.empty()) error_.set(std::move(failures));
}

void ContentView::chooseFiles() {
    environment_.mainThread.check();
    OpenPanel panel;
    panel.allowedContentTypes = {ContentType::pdf};
    panel.allowsMultipleSelection = true;
    panel.canChooseDirectories = false;
    if (const auto urls = environment_.desktop.runModal(panel)) importFiles(*urls);
}

bool ContentView::drop(std::span<const URL> urls) {
    environment_.mainThread.check();
    if (merging_.get()) return false;
    importFiles(urls);
    return true;
}

}  // namespace quirebind
