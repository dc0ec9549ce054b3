// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <sys/socket.h>

namespace quirebind::render {

/// For send(2): an error, not a signal, tells that the other end is gone. Where there is no such
/// flag, raiseNoSignal has seen to that.
#if defined(MSG_NOSIGNAL)
inline constexpr int kNoSignal = MSG_NOSIGNAL;
#else
inline constexpr int kNoSignal = 0;
#endif

/// Asks the same of a socket, which may belong to another process later, on systems where that is
/// a property of sockets.
inline void raiseNoSignal([[maybe_unused]] int socket) {
#if defined(SO_NOSIGPIPE)
    constexpr int kYes = 1;
    static_cast<void>(::setsockopt(socket, SOL_SOCKET, SO_NOSIGPIPE, &kYes, sizeof kYes));
#endif
}

}  // namespace quirebind::render
