// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <memory>

#include "Quirebind/Workflow/MainThread.h"
#include "Quirebind/Workflow/State.h"

namespace quirebind {

/// Redraws a window once for all the writes of one turn of the event loop. Main thread only.
class RedrawScheduler : public StateObserver {
 public:
    /// `mainThread` must outlive this; `redraw` is not called once this is gone.
    RedrawScheduler(MainThread& mainThread, std::function<void()> redraw);

    void didWrite(Field field) override;

 private:
    struct Request {
        std::function<void()> redraw;
        bool pending = false;
    };

    MainThread& mainThread_;
    std::shared_ptr<Request> request_;
};

}  // namespace quirebind
