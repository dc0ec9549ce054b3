// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Preview/HelperProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Platform/Files/FileSystem.h"
#include "Quirebind/RenderProtocol/SocketFlags.h"

extern "C" char** environ;  // NOLINT(readability-redundant-declaration): macOS declares it nowhere

namespace quirebind {

namespace {

constexpr int kSocketBuffer = 1 << 20;

/// What the child does before it becomes the program.
class SpawnActions {
 public:
    SpawnActions() { posix_spawn_file_actions_init(&actions_); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    SpawnActions(SpawnActions&&) = delete;
    SpawnActions& operator=(SpawnActions&&) = delete;
    ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }

    void open(int number, const char* path, int flags) {
        posix_spawn_file_actions_addopen(&actions_, number, path, flags, 0);
    }
    void duplicate(int from, int to) { posix_spawn_file_actions_adddup2(&actions_, from, to); }
    /// Closes all files from that number on, whoever has opened them. Where there is no call for
    /// it, those that were opened carefully are closed anyway.
    void closeFrom([[maybe_unused]] int number) {
#if defined(__GLIBC_PREREQ)  // no other C library knows this macro, not even to compare it
#if __GLIBC_PREREQ(2, 34)
        posix_spawn_file_actions_addclosefrom_np(&actions_, number);
#endif
#endif
    }
    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
    posix_spawn_file_actions_t actions_{};
};

/// The same file under a number that is none of the child's own, and that closes when a program is
/// started.
FileDescriptor moved(const FileDescriptor& file) {
    constexpr int kLowest = 10;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): so is the call
    return {FileSystem::native(), ::fcntl(file.number(), F_DUPFD_CLOEXEC, kLowest)};
}

}  // namespace

std::optional<HelperProcess> HelperProcess::start(const std::string& path, int socketNumber) {
    std::array<int, 2> ends{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0) return std::nullopt;
    FileSystem& files = FileSystem::native();
    FileDescriptor ours = moved(FileDescriptor(files, ends[0]));
    const FileDescriptor theirs = moved(FileDescriptor(files, ends[1]));
    if (ours.number() < 0 || theirs.number() < 0) return std::nullopt;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): so is the call
    if (::fcntl(ours.number(), F_SETFL, O_NONBLOCK) != 0) return std::nullopt;
    ::setsockopt(ours.number(), SOL_SOCKET, SO_RCVBUF, &kSocketBuffer, sizeof kSocketBuffer);
    ::setsockopt(theirs.number(), SOL_SOCKET, SO_SNDBUF, &kSocketBuffer, sizeof kSocketBuffer);
    render::raiseNoSignal(ours.number());
    render::raiseNoSignal(theirs.number());

    SpawnActions actions;
    actions.open(STDIN_FILENO, "/dev/null", O_RDONLY);
    actions.open(STDOUT_FILENO, "/dev/null", O_WRONLY);
    actions.open(STDERR_FILENO, "/dev/null", O_WRONLY);
    actions.duplicate(theirs.number(), socketNumber);
    actions.closeFrom(socketNumber + 1);
    std::string program = path;
    const std::array<char*, 2> arguments{program.data(), nullptr};
    pid_t process = -1;
    if (::posix_spawn(&process, path.c_str(), actions.get(), nullptr, arguments.data(), environ) !=
        0)
        return std::nullopt;
    return HelperProcess(process, std::move(ours));
}

HelperProcess& HelperProcess::operator=(HelperProcess&& other) noexcept {
    if (this != &other) {
        end();
        process_ = std::exchange(other.process_, -1);
        socket_ = std::move(other.socket_);
    }
    return *this;
}

HelperProcess::~HelperProcess() {
    end();
}

void HelperProcess::kill() const {
    if (process_ >= 0) ::kill(process_, SIGKILL);
}

bool HelperProcess::hasEnded() {
    if (process_ >= 0 && ::waitpid(process_, nullptr, WNOHANG) != 0) process_ = -1;
    return process_ < 0;
}

void HelperProcess::end() {
    if (process_ < 0) return;
    kill();
    while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) continue;
    process_ = -1;
}

bool HelperProcess::send(std::span<const std::byte> bytes, int file) const {
    // sendmsg(2) takes what it only reads by pointers that are not const.
    iovec content{const_cast<std::byte*>(bytes.data()),  // NOLINT(*-const-cast)
                  bytes.size()};
    msghdr message{};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    if (file >= 0) {
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        cmsghdr* header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof(int));
        std::memcpy(CMSG_DATA(header), &file, sizeof file);
    }
    ssize_t sent = 0;
    do {
        sent = ::sendmsg(socket_.number(), &message, render::kNoSignal);
    } while (sent < 0 && errno == EINTR);
    return sent >= 0 && static_cast<std::size_t>(sent) == bytes.size();
}

std::optional<std::size_t> HelperProcess::receive(std::span<std::byte> into) const {
    ssize_t received = 0;
    do {
        received = ::recv(socket_.number(), into.data(), into.size(), 0);
    } while (received < 0 && errno == EINTR);
    if (received > 0) return static_cast<std::size_t>(received);
    if (received < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return 0;
    return std::nullopt;
}

}  // namespace quirebind
