// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Workflow/RedrawScheduler.h"

#include <utility>

namespace quirebind {

RedrawScheduler::RedrawScheduler(MainThread& mainThread, std::function<void()> redraw)
    : mainThread_(mainThread), request_(std::make_shared<Request>()) {
    request_->redraw = std::move(redraw);
}

void RedrawScheduler::didWrite(Field) {
    if (request_->pending) return;
    request_->pending = true;
    mainThread_.post([weak = std::weak_ptr(request_)] {
        const auto request = weak.lock();
        if (!request) return;
        request->pending = false;  // first, so that what is written while redrawing counts
        request->redraw();
    });
}

}  // namespace quirebind
