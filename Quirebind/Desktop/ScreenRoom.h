// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScreen>
#include <QSize>

namespace quirebind {

/// How large a window may be so that all of it, its frame included, is in sight on a screen. In
/// device-independent pixels.
[[nodiscard]] inline QSize roomOn(const QScreen& screen) {
    constexpr QSize kRoomForFrame{16, 48};  // which only the window manager knows
    return screen.availableGeometry().size() - kRoomForFrame;
}

}  // namespace quirebind
