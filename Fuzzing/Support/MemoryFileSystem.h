// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cerrno>
#include <cstring>
#include <string_view>

#include <sys/stat.h>

#include "Platform/Files/FileSystem.h"

namespace quirebind::fuzzing {

/// A file system in which every path is the same file, which is in memory and can only be read.
class MemoryFileSystem : public FileSystem {
 public:
    /// `bytes` must outlive this.
    explicit MemoryFileSystem(std::string_view bytes) : bytes_(bytes) {}

    int open(int, const char*, int, mode_t) override { return kFile; }
    int close(int) override { return 0; }

    ssize_t read(int, std::span<std::byte> into, std::uint64_t offset) override {
        if (offset >= bytes_.size()) return 0;
        const std::string_view part = bytes_.substr(offset, into.size());
        std::memcpy(into.data(), part.data(), part.size());
        return static_cast<ssize_t>(part.size());
    }

    int status(int, struct stat& result) override {
        result = {};
        result.st_mode = S_IFREG;
        result.st_size = static_cast<off_t>(bytes_.size());
        return 0;
    }

    std::int64_t nextData(int, std::uint64_t offset) override {
        return offset < bytes_.size() ? static_cast<std::int64_t>(offset) : -ENXIO;
    }
    int duplicate(int) override { return -EMFILE; }
    int map(int, std::uint64_t, std::span<char>) override { return -ENODEV; }
    ssize_t write(int, std::span<const std::byte>) override { return -EROFS; }
    int linkStatus(int, const char*, struct stat&) override { return -ENOENT; }
    ssize_t readLink(int, const char*, std::span<char>) override { return -EINVAL; }
    int setMode(int, mode_t) override { return -EROFS; }
    int sync(int) override { return -EROFS; }
    int linkUnnamed(int, int, const char*) override { return -EROFS; }
    int rename(int, const char*, const char*) override { return -EROFS; }
    int unlink(int, const char*) override { return -EROFS; }
    std::int64_t fileSizeLimit() override { return INT64_MAX; }
    mode_t creationMask() override { return 0; }

 private:
    static constexpr int kFile = 1000;

    std::string_view bytes_;
};

}  // namespace quirebind::fuzzing
