// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <source_location>
#include <thread>

namespace quirebind {

/// The thread that creates this, which owns all state of all windows, and the way back to it. The
/// application implements `post` with its event loop.
class MainThread {
 public:
    MainThread() = default;
    MainThread(const MainThread&) = delete;
    MainThread& operator=(const MainThread&) = delete;
    MainThread(MainThread&&) = delete;
    MainThread& operator=(MainThread&&) = delete;
    virtual ~MainThread() = default;

    /// Runs `task` on the main thread in a later turn of its event loop, in the order of posting.
    /// Tasks that are still waiting when the loop ends are dropped. From any thread.
    virtual void post(std::function<void()> task) = 0;

    /// Stops the program unless it is the main thread that calls. In every kind of build.
    void check(std::source_location where = std::source_location::current()) const;

 private:
    std::thread::id id_ = std::this_thread::get_id();
};

}  // namespace quirebind
