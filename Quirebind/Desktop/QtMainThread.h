// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <functional>

#include "Quirebind/Workflow/MainThread.h"

namespace quirebind {

/// The main thread of an application with Qt's event loop.
class QtMainThread : public MainThread {
 public:
    void post(std::function<void()> task) override;

 private:
    QObject context_;  // tasks that are still waiting when it goes are dropped with it
};

}  // namespace quirebind
