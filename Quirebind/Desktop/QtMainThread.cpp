// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Desktop/QtMainThread.h"

#include <QMetaObject>
#include <utility>

namespace quirebind {

void QtMainThread::post(std::function<void()> task) {
    QMetaObject::invokeMethod(&context_, std::move(task), Qt::QueuedConnection);
}

}  // namespace quirebind
