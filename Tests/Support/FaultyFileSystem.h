// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <mutex>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>

#include "Platform/Files/FileSystem.h"

namespace quirebind {

/// What a call to a file system is for. Opening an unnamed file and syncing a folder are kinds of
/// their own: they fail for reasons of their own.
enum class FileCall : std::uint8_t {
    open,
    openUnnamed,
    duplicate,
    close,
    read,
    map,
    nextData,
    write,
    status,
    linkStatus,
    readLink,
    setMode,
    sync,
    syncFolder,
    linkUnnamed,
    rename,
    unlink,
    fileSizeLimit,
    creationMask,
};

inline constexpr std::size_t kFileCallKinds = 19;

inline std::string_view nameOf(FileCall call) {
    static constexpr std::array<std::string_view, kFileCallKinds> kNames{
        "open",     "openUnnamed", "duplicate",     "close",       "read",
        "map",      "nextData",    "write",         "status",      "linkStatus",
        "readLink", "setMode",     "sync",          "syncFolder",  "linkUnnamed",
        "rename",   "unlink",      "fileSizeLimit", "creationMask"};
    return kNames.at(static_cast<std::size_t>(call));
}

/// A file system that does what another one does, remembers every call, and fails as it is told:
///
///     FaultyFileSystem files;
///     files.failOnce(FileCall::write, ENOSPC, 3);   // the third write
///     files.fail(FileCall::openUnnamed, EOPNOTSUPP);  // every one: there are no unnamed files
///     files.failCall(17, EIO);                        // the 17th of all calls, whatever it is
///     files.failFrom(17, EIO);                        // that one and all after it
///
/// To make each call of an operation fail in turn, do it once without faults, take count(), and do
/// it again that many times with failCall(1), failCall(2) and so on. A close that fails has closed
/// the file, as close(2) has; creationMask() cannot fail. Any other call that fails does nothing.
///
/// A derived class may do something of its own around a call. Configure it before it is used; the
/// calls themselves may come from several threads.
class FaultyFileSystem : public FileSystem {
 public:
    /// `under` must outlive this object.
    explicit FaultyFileSystem(FileSystem& under = FileSystem::native()) : under_(under) {
        // Short tests may thus run out of memory without that being remembered running out too.
        history_.reserve(kCallsWithoutAllocation);
        openFiles_.reserve(kCallsWithoutAllocation);
    }

    // What goes wrong. Of several faults that meet in one call the first one told counts.

    /// Every call of this kind fails with `error`, an errno.
    void fail(FileCall kind, int error) {
        faults_.push_back({.kind = kind, .first = 1, .last = kNever, .error = error});
    }

    /// The call of this kind that is number `which` (from 1) fails.
    void failOnce(FileCall kind, int error, std::size_t which = 1) {
        faults_.push_back({.kind = kind, .first = which, .last = which, .error = error});
    }

    /// The call that is number `which` (from 1) of all calls fails.
    void failCall(std::size_t which, int error) {
        faults_.push_back({.kind = {}, .first = which, .last = which, .error = error});
    }

    /// The call that is number `which` (from 1) of all calls fails, and so do all after it.
    void failFrom(std::size_t which, int error) {
        faults_.push_back({.kind = {}, .first = which, .last = kNever, .error = error});
    }

    /// Every call is interrupted by a signal (EINTR), and succeeds when made again. (A close is not
    /// made again: the file is closed.) For one thread.
    void interruptEveryCall() { interrupts_ = true; }

    /// Reads and writes move at most this many bytes.
    void limitTransfers(std::size_t most) { mostTransferred_ = most; }

    /// Only pretends to wait for the medium, which tests of many writes need not do.
    void pretendToSync() { pretendsToSync_ = true; }

    /// Pretends this file size limit.
    void pretendFileSizeLimit(std::int64_t limit) { fileSizeLimit_ = limit; }

    /// Pretends this umask.
    void pretendCreationMask(mode_t mask) { creationMask_ = mask; }

    /// Is told each call before it happens or fails, in the calling thread. What it throws comes
    /// out of the call.
    void onEachCall(std::function<void(FileCall)> observer) { observer_ = std::move(observer); }

    // What happened.

    /// All calls so far, in their order.
    [[nodiscard]] std::vector<FileCall> history() const {
        const std::scoped_lock lock(mutex_);
        return history_;
    }

    /// How many calls there were.
    [[nodiscard]] std::size_t count() const {
        const std::scoped_lock lock(mutex_);
        return history_.size();
    }

    /// How many calls of this kind there were, those that failed too.
    [[nodiscard]] std::size_t count(FileCall kind) const {
        const std::scoped_lock lock(mutex_);
        return counts_.at(static_cast<std::size_t>(kind));
    }

    /// How many of the files that were opened have not been closed.
    [[nodiscard]] std::size_t openFiles() const {
        const std::scoped_lock lock(mutex_);
        return openFiles_.size();
    }

    // The calls themselves.

    int open(int folder, const char* path, int flags, mode_t mode) override {
        const int file = attempt(isUnnamed(flags) ? FileCall::openUnnamed : FileCall::open,
                                 [&] { return under_.open(folder, path, flags, mode); });
        const std::scoped_lock lock(mutex_);
        if (file >= 0) openFiles_.push_back(file);
        return file;
    }

    int duplicate(int file) override {
        const int other = attempt(FileCall::duplicate, [&] { return under_.duplicate(file); });
        const std::scoped_lock lock(mutex_);
        if (other >= 0) openFiles_.push_back(other);
        return other;
    }

    int close(int file) override {
        const int error = admit(FileCall::close);
        {
            const std::scoped_lock lock(mutex_);
            std::erase(openFiles_, file);
        }
        const int result = under_.close(file);
        return error != 0 ? -error : result;
    }

    ssize_t read(int file, std::span<std::byte> into, std::uint64_t offset) override {
        return attempt(FileCall::read, [&] { return under_.read(file, limited(into), offset); });
    }

    int map(int file, std::uint64_t offset, std::span<char> pages) override {
        return attempt(FileCall::map, [&] { return under_.map(file, offset, pages); });
    }

    std::int64_t nextData(int file, std::uint64_t offset) override {
        return attempt(FileCall::nextData, [&] { return under_.nextData(file, offset); });
    }

    ssize_t write(int file, std::span<const std::byte> bytes) override {
        return attempt(FileCall::write, [&] { return under_.write(file, limited(bytes)); });
    }

    int status(int file, struct stat& result) override {
        return attempt(FileCall::status, [&] { return under_.status(file, result); });
    }

    int linkStatus(int folder, const char* name, struct stat& result) override {
        return attempt(FileCall::linkStatus,
                       [&] { return under_.linkStatus(folder, name, result); });
    }

    ssize_t readLink(int folder, const char* path, std::span<char> into) override {
        return attempt(FileCall::readLink, [&] { return under_.readLink(folder, path, into); });
    }

    int setMode(int file, mode_t mode) override {
        return attempt(FileCall::setMode, [&] { return under_.setMode(file, mode); });
    }

    int sync(int file) override {
        return attempt(isFolder(file) ? FileCall::syncFolder : FileCall::sync,
                       [&] { return pretendsToSync_ ? 0 : under_.sync(file); });
    }

    int linkUnnamed(int file, int folder, const char* name) override {
        return attempt(FileCall::linkUnnamed,
                       [&] { return under_.linkUnnamed(file, folder, name); });
    }

    int rename(int folder, const char* from, const char* to) override {
        return attempt(FileCall::rename, [&] { return under_.rename(folder, from, to); });
    }

    int unlink(int folder, const char* name) override {
        return attempt(FileCall::unlink, [&] { return under_.unlink(folder, name); });
    }

    std::int64_t fileSizeLimit() override {
        return attempt(FileCall::fileSizeLimit,
                       [&] { return fileSizeLimit_ ? *fileSizeLimit_ : under_.fileSizeLimit(); });
    }

    mode_t creationMask() override {
        static_cast<void>(admit(FileCall::creationMask));
        return creationMask_ ? *creationMask_ : under_.creationMask();
    }

 private:
    static constexpr std::size_t kCallsWithoutAllocation = 256;
    static constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

    struct Fault {
        std::optional<FileCall> kind;  // none: counted over all kinds
        std::size_t first;
        std::size_t last;
        int error;
    };

    static bool isUnnamed([[maybe_unused]] int flags) {
#if defined(O_TMPFILE)
        return (flags & O_TMPFILE) == O_TMPFILE;
#else
        return false;
#endif
    }

    bool isFolder(int file) {
        struct stat found{};
        return under_.status(file, found) == 0 && S_ISDIR(found.st_mode);
    }

    template <typename Byte>
    std::span<Byte> limited(std::span<Byte> bytes) const {
        return bytes.first(std::min(bytes.size(), mostTransferred_));
    }

    /// Counts a call; returns the errno that it has to fail with, or 0.
    int admit(FileCall kind) {
        if (observer_) observer_(kind);
        const std::scoped_lock lock(mutex_);
        history_.push_back(kind);
        const std::size_t ofKind = ++counts_.at(static_cast<std::size_t>(kind));
        const auto fault = std::ranges::find_if(faults_, [&](const Fault& each) {
            const std::size_t number = each.kind ? ofKind : history_.size();
            return each.kind.value_or(kind) == kind && number >= each.first && number <= each.last;
        });
        if (fault != faults_.end()) return fault->error;
        if (!interrupts_ || kind == FileCall::creationMask || kind == FileCall::fileSizeLimit) {
            return 0;
        }
        if (kind == FileCall::close) return EINTR;
        wasInterrupted_ = !wasInterrupted_;
        return wasInterrupted_ ? EINTR : 0;
    }

    template <typename Forward>
    auto attempt(FileCall kind, const Forward& forward) -> decltype(forward()) {
        const int error = admit(kind);
        return error != 0 ? -error : forward();
    }

    FileSystem& under_;
    std::vector<Fault> faults_;
    std::function<void(FileCall)> observer_;
    std::size_t mostTransferred_ = kNever;
    std::optional<std::int64_t> fileSizeLimit_;
    std::optional<mode_t> creationMask_;
    bool interrupts_ = false;
    bool pretendsToSync_ = false;

    mutable std::mutex mutex_;  // guards what follows
    bool wasInterrupted_ = false;
    std::vector<FileCall> history_;
    std::array<std::size_t, kFileCallKinds> counts_{};
    std::vector<int> openFiles_;
};

}  // namespace quirebind
