// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Articles/ThreadIndex.h"

#include <utility>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Syntax/PDFString.h"
#include "Platform/PDF/Syntax/TextString.h"

namespace quirebind {

std::optional<Reference> ThreadIndex::find(Value thread) {
    if (const auto number = thread.integer()) {
        readThreads();
        if (*number < 0 || std::cmp_greater_equal(*number, threads_.size())) return std::nullopt;
        return threads_[static_cast<std::size_t>(*number)];
    }
    if (!isString(thread)) return std::nullopt;
    readTitles();
    const auto found = titles_.find(textOf(stringBytes(thread)));
    if (found == titles_.end()) return std::nullopt;
    return found->second;
}

void ThreadIndex::readThreads() {
    if (std::exchange(hasThreads_, true)) return;
    ArrayReader elements(reader_.resolveIfSound(catalog_.find("Threads")));
    while (const auto element = elements.next()) threads_.push_back(element->reference());
}

void ThreadIndex::readTitles() {
    if (std::exchange(hasTitles_, true)) return;
    WorkBudget room(limits::kThreadTitles, reader_.image().storedBytes());
    ArrayReader elements(reader_.resolveIfSound(catalog_.find("Threads")));
    while (const auto element = elements.next()) {
        const auto thread = element->reference();
        if (!thread) continue;
        const Value information =
            reader_.resolveIfSound(reader_.resolveIfSound(*element).find("I"));
        const Value title = reader_.resolveIfSound(information.find("Title"));
        room.spend(title.text().size());
        if (isString(title)) titles_.emplace(textOf(stringBytes(title)), *thread);
    }
}

}  // namespace quirebind
