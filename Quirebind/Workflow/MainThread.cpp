// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Workflow/MainThread.h"

#include "Quirebind/Workflow/Fatal.h"

namespace quirebind {

void MainThread::check(std::source_location where) const {
    if (std::this_thread::get_id() != id_)
        fatal("The state of a window was used off the main thread", where);
}

}  // namespace quirebind
