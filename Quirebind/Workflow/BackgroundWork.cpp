// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Workflow/BackgroundWork.h"

#include <utility>

namespace quirebind {

BackgroundWork::~BackgroundWork() {
    for (Worker& worker : workers_) worker.thread.join();
}

void BackgroundWork::start(std::function<void()> work) {
    workers_.remove_if([](Worker& worker) {
        if (!worker.done) return false;
        worker.thread.join();
        return true;
    });
    Worker& worker = workers_.emplace_back();
    try {
        worker.thread = std::thread([&worker, work = std::move(work)] {
            work();
            worker.done = true;
        });
    } catch (...) {
        workers_.pop_back();
        throw;
    }
}

}  // namespace quirebind
