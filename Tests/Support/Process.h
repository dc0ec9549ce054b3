// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace quirebind::test {

/// What became of a program that was run.
struct RunResult {
    int exitCode = -1;      ///< -1 if it did not exit by itself.
    int signal = 0;         ///< The signal that ended it; 0 if it exited.
    bool timedOut = false;  ///< It was killed because its time was over.
    std::string out;        ///< All of its standard output.
    std::string err;        ///< All of its standard error.
    double cpuSeconds = 0;  ///< User and system time, with the programs that it ran itself.
    /// The most physical memory it held. The kernel counts the spawning process into this, so it is
    /// exact only where it exceeds what this process has ever held; below that, it is the highest
    /// value that was seen every few milliseconds.
    long peakMemoryKB = 0;

    [[nodiscard]] bool succeeded() const { return exitCode == 0; }
};

/// Runs argv[0], looked up in PATH, without a shell and with an empty standard input, and waits for
/// it; when the time is over, it and what it started in its process group are killed. Throws
/// std::runtime_error that names the program if it cannot be started, so that a test which needs a
/// missing program fails. May be called from several threads.
[[nodiscard]] RunResult run(const std::vector<std::string>& argv,
                            std::chrono::milliseconds timeout = std::chrono::seconds(60));

}  // namespace quirebind::test
