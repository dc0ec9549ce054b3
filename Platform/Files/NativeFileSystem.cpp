// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Platform/Files/FileSystem.h"

namespace quirebind {

namespace {

/// What a system call returned, its errno negated where it failed.
template <typename Result>
Result orError(Result result) {
    return result < 0 ? static_cast<Result>(-errno) : result;
}

#if defined(__linux__)
/// The umask as the kernel reports it, "Umask:\t0022", since Linux 4.7. Its line is the second one
/// of the file; a line break in the program's name, the first one, is escaped there.
std::optional<mode_t> reportedCreationMask() {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): that is how open(2) is declared.
    const int file = ::open("/proc/self/status", O_RDONLY | O_CLOEXEC);
    if (file < 0) return std::nullopt;
    std::array<char, 1024> buffer{};
    const ssize_t size = ::read(file, buffer.data(), buffer.size());
    static_cast<void>(::close(file));
    if (size <= 0) return std::nullopt;

    constexpr std::string_view kLabel = "\nUmask:\t";
    std::string_view text(buffer.data(), static_cast<std::size_t>(size));
    const std::size_t label = text.find(kLabel);
    if (label == std::string_view::npos) return std::nullopt;
    text.remove_prefix(label + kLabel.size());
    mode_t mask = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), mask, 8);
    if (error != std::errc() || end == text.data() + text.size()) return std::nullopt;
    return mask;
}
#else
std::optional<mode_t> reportedCreationMask() {
    return std::nullopt;
}
#endif

class NativeFileSystem final : public FileSystem {
 public:
    int open(int folder, const char* path, int flags, mode_t mode) override {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): that is how openat(2) is declared.
        return orError(::openat(folder, path, flags, mode));
    }

    int duplicate(int file) override {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): that is how fcntl(2) is declared.
        return orError(::fcntl(file, F_DUPFD_CLOEXEC, 0));
    }

    int close(int file) override { return orError(::close(file)); }

    ssize_t read(int file, std::span<std::byte> into, std::uint64_t offset) override {
        if (!std::in_range<off_t>(offset)) return -EOVERFLOW;
        return orError(::pread(file, into.data(), into.size(), static_cast<off_t>(offset)));
    }

    int map(int file, std::uint64_t offset, std::span<char> pages) override {
        if (!std::in_range<off_t>(offset)) return -EOVERFLOW;
        constexpr int kFlags = MAP_PRIVATE | MAP_FIXED;
        const void* const mapped =
            ::mmap(pages.data(), pages.size(), PROT_READ, kFlags, file, static_cast<off_t>(offset));
        return mapped == MAP_FAILED ? -errno : 0;
    }

    std::int64_t nextData(int file, std::uint64_t offset) override {
        if (!std::in_range<off_t>(offset)) return -EOVERFLOW;
        return orError(::lseek(file, static_cast<off_t>(offset), SEEK_DATA));
    }

    ssize_t write(int file, std::span<const std::byte> bytes) override {
        return orError(::write(file, bytes.data(), bytes.size()));
    }

    int status(int file, struct stat& result) override { return orError(::fstat(file, &result)); }

    int linkStatus(int folder, const char* name, struct stat& result) override {
        return orError(::fstatat(folder, name, &result, AT_SYMLINK_NOFOLLOW));
    }

    ssize_t readLink(int folder, const char* path, std::span<char> into) override {
        return orError(::readlinkat(folder, path, into.data(), into.size()));
    }

    int setMode(int file, mode_t mode) override { return orError(::fchmod(file, mode)); }

    int sync(int file) override {
#if defined(F_FULLFSYNC)
        // There fsync() leaves the bytes in the drive's own cache. Not every file system has this.
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): that is how fcntl(2) is declared.
        if (::fcntl(file, F_FULLFSYNC) == 0) return 0;
#endif
        return orError(::fsync(file));
    }

    int linkUnnamed(int file, int folder, const char* name) override {
#if defined(__linux__)
        std::array<char, 32> path{};
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): formats without allocating memory.
        static_cast<void>(std::snprintf(path.data(), path.size(), "/proc/self/fd/%d", file));
        return orError(::linkat(AT_FDCWD, path.data(), folder, name, AT_SYMLINK_FOLLOW));
#else
        static_cast<void>(file);
        static_cast<void>(folder);
        static_cast<void>(name);
        return -EOPNOTSUPP;
#endif
    }

    int rename(int folder, const char* from, const char* to) override {
        return orError(::renameat(folder, from, folder, to));
    }

    int unlink(int folder, const char* name) override {
        return orError(::unlinkat(folder, name, 0));
    }

    std::int64_t fileSizeLimit() override {
        rlimit limit{};
        if (::getrlimit(RLIMIT_FSIZE, &limit) != 0) return -errno;
        constexpr auto kNone = std::numeric_limits<std::int64_t>::max();
        if (limit.rlim_cur == RLIM_INFINITY || !std::in_range<std::int64_t>(limit.rlim_cur)) {
            return kNone;
        }
        return static_cast<std::int64_t>(limit.rlim_cur);
    }

    mode_t creationMask() override {
        if (const std::optional<mode_t> mask = reportedCreationMask()) return *mask;
        // Whatever another thread creates in this instant is too private rather than too open.
        const mode_t mask = ::umask(S_IRWXG | S_IRWXO);
        static_cast<void>(::umask(mask));
        return mask;
    }
};

}  // namespace

FileSystem& FileSystem::native() {
    static NativeFileSystem files;
    return files;
}

}  // namespace quirebind
