// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cerrno>
#include <fstream>
#include <system_error>

#include <sys/resource.h>
#include <unistd.h>

namespace quirebind::test {

/// Whether a limit of address space means anything: sanitizers map more than any that would matter.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kMemoryLimitsWork = false;
#elif defined(__has_feature)
inline constexpr bool kMemoryLimitsWork =
    !__has_feature(address_sanitizer) && !__has_feature(thread_sanitizer);
#else
inline constexpr bool kMemoryLimitsWork = true;
#endif

/// In a child process: sets a limit of it (RLIMIT_AS in bytes, RLIMIT_CPU in seconds ...) for good.
inline void limit(decltype(RLIMIT_AS) resource, rlim_t most) {
    const rlimit both{most, most};
    if (::setrlimit(resource, &both) != 0) {
        throw std::system_error(errno, std::generic_category(), "setrlimit");
    }
}

/// In a child process: lets it map so many more bytes than it has mapped.
inline void limitMemory(rlim_t more) {
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    limit(RLIMIT_AS, pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + more);
}

}  // namespace quirebind::test
