// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/RandomBytes.h"

#include <cerrno>

#include <sys/random.h>
#include <unistd.h>

#include "Platform/Files/SystemCall.h"

namespace quirebind {

void fillRandom(std::span<std::uint8_t> bytes) {
    if (::getentropy(bytes.data(), bytes.size()) != 0) throwSystemError(errno);
}

}  // namespace quirebind
