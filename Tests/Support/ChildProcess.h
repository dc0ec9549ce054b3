// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cerrno>
#include <functional>
#include <system_error>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quirebind {

/// The user and the group that becomeOrdinaryUser() turns root into: "nobody" nearly everywhere.
inline constexpr unsigned kOrdinaryUser = 65534;

/// Does `work` in a forked child, where it may change what belongs to the whole process (its user,
/// umask, limits, root folder). Returns what `work` returned (0 to 254), 255 where it threw, and a
/// negated signal number where a signal ended it.
inline int inChildProcess(const std::function<int()>& work) {
    const pid_t child = ::fork();
    if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (child == 0) {
        int result = 255;
        try {
            result = work();
        } catch (...) {
            result = 255;
        }
        ::_exit(result);
    }
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "waitpid");
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// In a child process: gives up root's rights, which let it do what permissions forbid. True where
/// permissions hold afterwards.
inline bool becomeOrdinaryUser() {
    if (::geteuid() != 0) return true;
    return ::setgroups(0, nullptr) == 0 && ::setgid(kOrdinaryUser) == 0 &&
           ::setuid(kOrdinaryUser) == 0;
}

}  // namespace quirebind
