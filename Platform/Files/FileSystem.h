// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include <sys/stat.h>
#include <sys/types.h>

namespace quirebind {

/// Every system call that this program makes on files, one virtual function each, so that tests can
/// make each of them fail. Nothing is decided here: no retries, no fallbacks, no policy.
///
/// Each function returns what its system call returns, or the negated errno where it fails.
/// Thread-safe as far as the system calls themselves are.
class FileSystem {
 public:
    FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
    FileSystem(FileSystem&&) = delete;
    FileSystem& operator=(FileSystem&&) = delete;
    virtual ~FileSystem() = default;

    /// The system's own files. Stateless; lives as long as the program.
    [[nodiscard]] static FileSystem& native();

    /// openat(2). `folder` may be AT_FDCWD.
    virtual int open(int folder, const char* path, int flags, mode_t mode) = 0;
    /// fcntl(2) with F_DUPFD_CLOEXEC: another descriptor of the same open file.
    virtual int duplicate(int file) = 0;
    /// close(2). The descriptor is gone even where this fails.
    virtual int close(int file) = 0;
    /// pread(2): fills at most `into` from `offset` (bytes from the start of the file).
    virtual ssize_t read(int file, std::span<std::byte> into, std::uint64_t offset) = 0;
    /// mmap(2), privately and for reading only: bytes of the file from `offset` take the place of
    /// `pages`. Both begin where a page does. Where this fails, there may be no memory in that
    /// place.
    virtual int map(int file, std::uint64_t offset, std::span<char> pages) = 0;
    /// lseek(2) with SEEK_DATA, for a file of which only `read` is used: where at or after `offset`
    /// there are bytes again that are no hole; -ENXIO where none follow. Where holes are not known,
    /// the end of the file counts as the only one.
    virtual std::int64_t nextData(int file, std::uint64_t offset) = 0;
    /// write(2): may write less than it is given.
    virtual ssize_t write(int file, std::span<const std::byte> bytes) = 0;
    /// fstat(2).
    virtual int status(int file, struct stat& result) = 0;
    /// fstatat(2) of a name in `folder`, without following a symbolic link.
    virtual int linkStatus(int folder, const char* name, struct stat& result) = 0;
    /// readlinkat(2): the bytes of the link's target, not terminated.
    virtual ssize_t readLink(int folder, const char* path, std::span<char> into) = 0;
    /// fchmod(2).
    virtual int setMode(int file, mode_t mode) = 0;
    /// fsync(2), of a file or a folder; where that stops at the drive's cache (macOS), the call
    /// that does not.
    virtual int sync(int file) = 0;
    /// linkat(2): gives the unnamed `file` (opened with O_TMPFILE) the name `name` in `folder`.
    virtual int linkUnnamed(int file, int folder, const char* name) = 0;
    /// renameat(2), within one folder; replaces `to` in one step.
    virtual int rename(int folder, const char* from, const char* to) = 0;
    /// unlinkat(2).
    virtual int unlink(int folder, const char* name) = 0;
    /// getrlimit(2): the soft RLIMIT_FSIZE in bytes, which writing past would raise a signal.
    /// INT64_MAX for none.
    virtual std::int64_t fileSizeLimit() = 0;
    /// The process's umask, read without changing it, not even for an instant, where the system
    /// offers that. Cannot fail.
    virtual mode_t creationMask() = 0;
};

}  // namespace quirebind
