// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Support/Process.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quirebind::test {

namespace {

using Clock = std::chrono::steady_clock;

class Descriptor {
 public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor() { close(); }

    [[nodiscard]] int get() const { return number_; }
    void close() {
        if (number_ >= 0) ::close(number_);
        number_ = -1;
    }

 private:
    int number_;
};

struct Pipe {
    Descriptor reading;
    Descriptor writing;
};

Pipe openPipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe2");
    }
    return {.reading = Descriptor(ends[0]), .writing = Descriptor(ends[1])};
}

class SpawnActions {
 public:
    SpawnActions() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawnattr_init(&attributes_);
    }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions(SpawnActions&&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    SpawnActions& operator=(SpawnActions&&) = delete;
    ~SpawnActions() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }

    /// Starts argv in a process group of its own.
    [[nodiscard]] pid_t spawn(const std::vector<std::string>& argv, int out, int err) {
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, out, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, err, STDERR_FILENO);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP);
        std::vector<std::string> words = argv;
        std::vector<char*> pointers;
        pointers.reserve(words.size() + 1);
        for (std::string& word : words) pointers.push_back(word.data());
        pointers.push_back(nullptr);
        pid_t child = 0;
        const int error = posix_spawnp(&child, pointers.front(), &actions_, &attributes_,
                                       pointers.data(), environ);
        if (error != 0) {
            throw std::runtime_error(
                "these tests need the program '" + argv.front() +
                "', which cannot be started: " + std::generic_category().message(error));
        }
        return child;
    }

 private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

/// The peak of a process's resident memory in KB; 0 if it is gone.
long peakMemoryOf(const std::string& process) {
    constexpr std::string_view kKey = "VmHWM:";
    std::ifstream status("/proc/" + process + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(kKey)) return std::stol(line.substr(kKey.size()));
    }
    return 0;
}

/// Kills and reaps a child that was left unwaited because of an error.
class Child {
 public:
    explicit Child(pid_t process) : process_(process) {}
    Child(const Child&) = delete;
    Child(Child&&) = delete;
    Child& operator=(const Child&) = delete;
    Child& operator=(Child&&) = delete;
    ~Child() {
        if (process_ == 0) return;
        kill();
        waitpid(process_, nullptr, 0);
    }

    void kill() const { ::kill(-process_, SIGKILL); }

    void wait(RunResult& result) {
        int status = 0;
        rusage usage{};
        while (wait4(process_, &status, 0, &usage) < 0) {
            if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "wait4");
        }
        process_ = 0;
        if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
        if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
        const auto seconds = [](const timeval& time) {
            return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
        };
        result.cpuSeconds = seconds(usage.ru_utime) + seconds(usage.ru_stime);
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-union-access): glibc's way to name a field.
        const long maximum = usage.ru_maxrss;
        if (maximum > peakMemoryOf("self")) result.peakMemoryKB = maximum;
    }

 private:
    pid_t process_;
};

/// Reads what is there. False at the end.
bool readSome(Descriptor& from, std::string& into) {
    constexpr std::size_t kChunk = 65536;
    std::array<char, kChunk> chunk{};
    const ssize_t count = read(from.get(), chunk.data(), chunk.size());
    if (count < 0) return errno == EINTR || errno == EAGAIN;
    into.append(chunk.data(), static_cast<std::size_t>(count));
    return count > 0;
}

/// A descriptor that becomes readable when the process ends. glibc 2.36 declares pidfd_open() for C
/// only.
Descriptor openProcess(pid_t process) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): there is no other way to call it.
    Descriptor descriptor(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
    if (descriptor.get() < 0) {
        throw std::system_error(errno, std::generic_category(), "pidfd_open");
    }
    return descriptor;
}

/// Collects a child's output until it has ended, or until the deadline.
class Collector {
 public:
    Collector(pid_t process, Descriptor out, Descriptor err)
        : name_(std::to_string(process)),
          ended_(openProcess(process)),
          out_(std::move(out)),
          err_(std::move(err)) {
        // What the child started may hold the pipes open for longer than the child lives.
        // NOLINTBEGIN(cppcoreguidelines-pro-type-vararg)
        fcntl(out_.get(), F_SETFL, O_NONBLOCK);
        fcntl(err_.get(), F_SETFL, O_NONBLOCK);
        // NOLINTEND(cppcoreguidelines-pro-type-vararg)
    }

    /// False if the deadline came first.
    [[nodiscard]] bool collect(RunResult& result, Clock::time_point deadline) {
        constexpr int kSampleMilliseconds = 5;
        while (true) {
            std::array<pollfd, 3> polled{{{.fd = out_.get(), .events = POLLIN, .revents = 0},
                                          {.fd = err_.get(), .events = POLLIN, .revents = 0},
                                          {.fd = ended_.get(), .events = POLLIN, .revents = 0}}};
            // A closed descriptor is negative, which poll ignores.
            poll(polled.data(), polled.size(), kSampleMilliseconds);
            result.peakMemoryKB = std::max(result.peakMemoryKB, peakMemoryOf(name_));
            if (polled[0].revents != 0 && !readSome(out_, result.out)) out_.close();
            if (polled[1].revents != 0 && !readSome(err_, result.err)) err_.close();
            if (polled[2].revents != 0) {
                drain(out_, result.out);
                drain(err_, result.err);
                return true;
            }
            if (Clock::now() >= deadline) return false;
        }
    }

 private:
    static void drain(Descriptor& from, std::string& into) {
        pollfd polled{.fd = from.get(), .events = POLLIN, .revents = 0};
        while (from.get() >= 0 && poll(&polled, 1, 0) > 0 && readSome(from, into)) {
        }
    }

    std::string name_;
    Descriptor ended_;
    Descriptor out_;
    Descriptor err_;
};

}  // namespace

RunResult run(const std::vector<std::string>& argv, std::chrono::milliseconds timeout) {
    if (argv.empty()) throw std::invalid_argument("no program to run");
    Pipe out = openPipe();
    Pipe err = openPipe();
    const auto deadline = Clock::now() + timeout;
    const pid_t process = SpawnActions().spawn(argv, out.writing.get(), err.writing.get());
    Child child(process);
    out.writing.close();
    err.writing.close();
    Collector collector(process, std::move(out.reading), std::move(err.reading));
    RunResult result;
    if (!collector.collect(result, deadline)) {
        result.timedOut = true;
        child.kill();
    }
    child.wait(result);
    return result;
}

}  // namespace quirebind::test
