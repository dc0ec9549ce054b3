// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include <sys/types.h>

#include "Platform/Files/FileDescriptor.h"

namespace quirebind {

/// A child process with a private socket between it and us, and nothing else in common: no other
/// open file, no standard input and output. Killed in the end, whatever it is doing.
/// Main thread only.
class HelperProcess {
 public:
    /// Starts the program at `path`, which finds its end of the socket under `socketNumber`.
    /// Nothing where that cannot be.
    [[nodiscard]] static std::optional<HelperProcess> start(const std::string& path,
                                                            int socketNumber);

    /// The process changes hands; `other` has none then.
    HelperProcess(HelperProcess&& other) noexcept
        : process_(std::exchange(other.process_, -1)), socket_(std::move(other.socket_)) {}
    /// The same; the process that this one had is killed first.
    HelperProcess& operator=(HelperProcess&& other) noexcept;
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;
    /// Waits for its end.
    ~HelperProcess();

    /// Kills the process, without waiting for its end: to give back much memory takes a while.
    void kill() const;
    /// Whether the process has ended.
    [[nodiscard]] bool hasEnded();

    /// Our end of the socket, which never blocks.
    [[nodiscard]] int socket() const { return socket_.number(); }

    /// Sends all of the bytes, with a file to be passed along unless that is -1. False where they
    /// do not all fit at once, or nobody is there.
    [[nodiscard]] bool send(std::span<const std::byte> bytes, int file) const;

    /// What arrived, at most as much as fits. Zero where nothing has; nothing at all once the
    /// process is gone.
    [[nodiscard]] std::optional<std::size_t> receive(std::span<std::byte> into) const;

 private:
    HelperProcess(pid_t process, FileDescriptor socket)
        : process_(process), socket_(std::move(socket)) {}
    void end();

    pid_t process_ = -1;
    FileDescriptor socket_;
};

}  // namespace quirebind
