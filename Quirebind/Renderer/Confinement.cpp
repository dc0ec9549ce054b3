// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Renderer/Confinement.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#ifdef __linux__
#include <linux/landlock.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#endif

namespace quirebind {

namespace {

constexpr rlim_t kMostMemory = rlim_t{2} << 30U;  // of addresses; libraries take 0.3 GB of it
constexpr rlim_t kMostFiles = 64;

/// `resource` has a type of its own in some C libraries.
template <typename Resource>
void limit(Resource resource, rlim_t most) {
    const rlimit limits{most, most};
    ::setrlimit(resource, &limits);
}

#ifdef __linux__

// The system's own interfaces take arguments of any number.
// NOLINTBEGIN(cppcoreguidelines-pro-type-vararg)

/// What stays readable: the programs, libraries and fonts that are installed, for what is loaded
/// late, and how they are found. Nothing of a user's lies there.
constexpr std::array kReadable{
    "/usr",      "/lib",        "/lib64", "/etc/ld.so.cache", "/etc/fonts", "/var/cache/fontconfig",
    "/dev/null", "/dev/urandom"};

class Ruleset {
 public:
    explicit Ruleset(const landlock_ruleset_attr& attributes)
        : number_(static_cast<int>(
              ::syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0))) {}
    Ruleset(const Ruleset&) = delete;
    Ruleset& operator=(const Ruleset&) = delete;
    Ruleset(Ruleset&&) = delete;
    Ruleset& operator=(Ruleset&&) = delete;
    ~Ruleset() {
        if (number_ >= 0) ::close(number_);
    }

    void allow(const char* path, std::uint64_t access) const {
        const int folder = ::open(path, O_PATH | O_CLOEXEC);
        if (folder < 0) return;
        landlock_path_beneath_attr rule{};
        rule.allowed_access = access;
        rule.parent_fd = folder;
        if (::syscall(SYS_landlock_add_rule, number_, LANDLOCK_RULE_PATH_BENEATH, &rule, 0) != 0) {
            // A file, not a folder: it cannot be listed.
            rule.allowed_access = LANDLOCK_ACCESS_FS_READ_FILE;
            ::syscall(SYS_landlock_add_rule, number_, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
        }
        ::close(folder);
    }
    void enforce() const {
        if (number_ >= 0) ::syscall(SYS_landlock_restrict_self, number_, 0);
    }

 private:
    int number_;
};

void confineFiles() {
    landlock_ruleset_attr all{};
    // All that the first version of the interface knows, so that it holds wherever there is one.
    all.handled_access_fs = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1U) - 1;
    const Ruleset rules(all);
    constexpr std::uint64_t kRead = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
    for (const char* path : kReadable) rules.allow(path, kRead);
    // There is one thread so far.
    if (const char* home = std::getenv("HOME"); home != nullptr)  // NOLINT(concurrency-mt-unsafe)
        for (const char* folder : {"/.fonts", "/.local/share/fonts"})
            rules.allow((std::string(home) + folder).c_str(), kRead);
    rules.enforce();
}

/// The system calls that drawing needs. Any other fails as if it were not permitted.
constexpr std::array kAllowed{SCMP_SYS(access),
                              SCMP_SYS(alarm),
                              SCMP_SYS(brk),
                              SCMP_SYS(clock_getres),
                              SCMP_SYS(clock_gettime),
                              SCMP_SYS(clock_nanosleep),
                              SCMP_SYS(close),
                              SCMP_SYS(dup),
                              SCMP_SYS(epoll_create1),
                              SCMP_SYS(epoll_ctl),
                              SCMP_SYS(epoll_wait),
                              SCMP_SYS(eventfd2),
                              SCMP_SYS(exit),
                              SCMP_SYS(exit_group),
                              SCMP_SYS(faccessat),
                              SCMP_SYS(faccessat2),
                              SCMP_SYS(fcntl),
                              SCMP_SYS(fstat),
                              SCMP_SYS(fstatfs),
                              SCMP_SYS(futex),
                              SCMP_SYS(getcwd),
                              SCMP_SYS(getdents64),
                              SCMP_SYS(getegid),
                              SCMP_SYS(geteuid),
                              SCMP_SYS(getgid),
                              SCMP_SYS(getpid),
                              SCMP_SYS(getppid),
                              SCMP_SYS(getrandom),
                              SCMP_SYS(getrusage),
                              SCMP_SYS(gettid),
                              SCMP_SYS(gettimeofday),
                              SCMP_SYS(getuid),
                              SCMP_SYS(lseek),
                              SCMP_SYS(lstat),
                              SCMP_SYS(madvise),
                              SCMP_SYS(mmap),
                              SCMP_SYS(mprotect),
                              SCMP_SYS(mremap),
                              SCMP_SYS(munmap),
                              SCMP_SYS(nanosleep),
                              SCMP_SYS(newfstatat),
                              SCMP_SYS(pipe2),
                              SCMP_SYS(poll),
                              SCMP_SYS(ppoll),
                              SCMP_SYS(pread64),
                              SCMP_SYS(preadv),
                              SCMP_SYS(read),
                              SCMP_SYS(readlink),
                              SCMP_SYS(readlinkat),
                              SCMP_SYS(readv),
                              SCMP_SYS(recvfrom),
                              SCMP_SYS(recvmsg),
                              SCMP_SYS(restart_syscall),
                              SCMP_SYS(rseq),
                              SCMP_SYS(rt_sigaction),
                              SCMP_SYS(rt_sigprocmask),
                              SCMP_SYS(rt_sigreturn),
                              SCMP_SYS(sched_getaffinity),
                              SCMP_SYS(sched_yield),
                              SCMP_SYS(sendmsg),
                              SCMP_SYS(sendto),
                              SCMP_SYS(set_robust_list),
                              SCMP_SYS(setitimer),
                              SCMP_SYS(sigaltstack),
                              SCMP_SYS(stat),
                              SCMP_SYS(statfs),
                              SCMP_SYS(statx),
                              SCMP_SYS(sysinfo),
                              SCMP_SYS(tgkill),
                              SCMP_SYS(time),
                              SCMP_SYS(uname),
                              SCMP_SYS(write),
                              SCMP_SYS(writev)};

void confineSystemCalls() {
    scmp_filter_ctx filter = ::seccomp_init(SCMP_ACT_ERRNO(EPERM));
    if (filter == nullptr) return;
    for (const int call : kAllowed) ::seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0);
    const auto allow = [filter](int call, const scmp_arg_cmp& argument) {
        ::seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, call, 1, &argument);
    };
    const auto masked = [](unsigned argument, scmp_datum_t mask, scmp_datum_t value) {
        return scmp_arg_cmp{argument, SCMP_CMP_MASKED_EQ, mask, value};
    };
    // Files may be opened to be read.
    constexpr scmp_datum_t kWriting = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC | O_APPEND;
    allow(SCMP_SYS(open), masked(1, kWriting, 0));
    allow(SCMP_SYS(openat), masked(2, kWriting, 0));
    // Threads, but no processes. The flags of the newer call cannot be looked at; where it is not
    // there, the C library takes the older one.
    ::seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0);
    allow(SCMP_SYS(clone), masked(0, CLONE_THREAD, CLONE_THREAD));
    ::seccomp_load(filter);
    ::seccomp_release(filter);
}

void confineFurther() {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    confineFiles();
    confineSystemCalls();
}

// NOLINTEND(cppcoreguidelines-pro-type-vararg)

#else

void confineFurther() {}

#endif

}  // namespace

void confine() {
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_NOFILE, kMostFiles);
    limit(RLIMIT_AS, kMostMemory);
    confineFurther();
}

}  // namespace quirebind
