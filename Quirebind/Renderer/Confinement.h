// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

namespace quirebind {

/// Gives up, for good, whatever this process does not need in order to draw the pages of one open
/// file: new privileges, the network, writing, starting programs, and opening any file but those
/// that are installed on the system (programs, libraries, fonts) and the user's own fonts; limits
/// its memory, and ends it with the process that started it. Best effort: what the system does not
/// offer is left out without a message.
void confine();

}  // namespace quirebind
