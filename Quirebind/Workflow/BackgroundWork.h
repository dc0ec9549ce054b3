// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <atomic>
#include <functional>
#include <list>
#include <thread>

namespace quirebind {

/// Runs work beside the main thread, each piece on a thread of its own. Nothing can be cancelled:
/// the destructor waits until all is done, so that no thread outlives it. Main thread only.
class BackgroundWork {
 public:
    BackgroundWork() = default;
    BackgroundWork(const BackgroundWork&) = delete;
    BackgroundWork& operator=(const BackgroundWork&) = delete;
    BackgroundWork(BackgroundWork&&) = delete;
    BackgroundWork& operator=(BackgroundWork&&) = delete;
    ~BackgroundWork();

    /// Starts `work`, which must not throw. Throws std::system_error where no thread can be had.
    void start(std::function<void()> work);

 private:
    struct Worker {
        std::atomic<bool> done = false;
        std::thread thread;
    };

    std::list<Worker> workers_;
};

}  // namespace quirebind
