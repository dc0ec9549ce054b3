// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/TemporaryFile.h"

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

#include <fcntl.h>

#include "Platform/Files/SystemCall.h"
#include "Platform/Files/UUID.h"

namespace quirebind {

namespace {

#if defined(O_TMPFILE)
constexpr int kUnnamedFile = O_TMPFILE;
#else
constexpr int kUnnamedFile = 0;  // this platform has no unnamed files
#endif

constexpr mode_t kOwnerOnly = 0600;

/// A name that is taken means another program chose the same 122 random bits: more than a few in a
/// row are a file system that says so of every name.
constexpr int kMostNamesTried = 16;

/// As much is written at a time: what has been written need not stay in memory. Far below what
/// systems can write at once (2 GiB).
constexpr std::size_t kLargestWrite = std::size_t{4} << 20U;

/// Does not contain the destination's name, which may be as long as names can be.
std::string randomName() {
    return ".quirebind-" + UUID::generate().string();
}

}  // namespace

bool TemporaryFile::createUnnamed() {
    if (kUnnamedFile == 0) return false;
    const int file = uninterrupted([this] {
        return files_.open(folder_, ".", kUnnamedFile | O_RDWR | O_CLOEXEC, kOwnerOnly);
    });
    switch (file) {
        case -EOPNOTSUPP:  // the file system has none
        case -EISDIR:      // nor has the kernel, which takes this for opening the folder itself
        case -ENOENT:
        case -EINVAL:
            return false;
        default:
            file_ = FileDescriptor(files_, orThrow(file));
            return true;
    }
}

void TemporaryFile::createNamed() {
    int file = -EEXIST;
    for (int i = 0; i < kMostNamesTried && file == -EEXIST; ++i) {
        name_ = randomName();
        file = uninterrupted([this] {
            constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
            return files_.open(folder_, name_.c_str(), kFlags, kOwnerOnly);
        });
    }
    file_ = FileDescriptor(files_, orThrow(file));
    hasName_ = true;
}

void TemporaryFile::write(std::span<const std::byte> bytes, const Written& written) {
    const std::size_t all = bytes.size();
    while (!bytes.empty()) {
        const auto part = bytes.first(std::min(bytes.size(), kLargestWrite));
        const ssize_t count =
            orThrow(uninterrupted([&] { return files_.write(file_.number(), part); }));
        // Not an error to write(2), but trying again for ever would be one.
        if (count == 0) throwSystemError(EIO);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
        if (written) written(all - bytes.size());
    }
}

void TemporaryFile::makeDurable(mode_t mode) {
    orThrow(uninterrupted([&] { return files_.setMode(file_.number(), mode); }));
    orThrow(uninterrupted([&] { return files_.sync(file_.number()); }));
}

bool TemporaryFile::appear(const std::string& name) {
    if (hasName_) return false;
    return uninterrupted(
               [&] { return files_.linkUnnamed(file_.number(), folder_, name.c_str()); }) == 0;
}

bool TemporaryFile::giveName() {
    if (hasName_) return true;
    int result = -EEXIST;
    for (int i = 0; i < kMostNamesTried && result == -EEXIST; ++i) {
        name_ = randomName();
        result = uninterrupted(
            [this] { return files_.linkUnnamed(file_.number(), folder_, name_.c_str()); });
    }
    hasName_ = result == 0;
    return hasName_;
}

void TemporaryFile::copyToNamed(std::size_t size) {
    const FileDescriptor unnamed = std::move(file_);
    createNamed();
    std::vector<std::byte> buffer(std::min(size, kLargestWrite));
    for (std::size_t copied = 0; copied < size;) {
        const auto part = std::span(buffer).first(std::min(buffer.size(), size - copied));
        const ssize_t count =
            orThrow(uninterrupted([&] { return files_.read(unnamed.number(), part, copied); }));
        if (count == 0) throwSystemError(EIO);  // somebody else has shortened it
        write(part.first(static_cast<std::size_t>(count)), {});
        copied += static_cast<std::size_t>(count);
    }
}

void TemporaryFile::close() {
    const int result = file_.close();
    if (result != -EINTR) orThrow(result);
}

void TemporaryFile::replace(const std::string& name) {
    orThrow(uninterrupted([&] { return files_.rename(folder_, name_.c_str(), name.c_str()); }));
    hasName_ = false;
}

void TemporaryFile::discard() {
    static_cast<void>(file_.close());
    if (!hasName_) return;
    hasName_ = false;
    static_cast<void>(uninterrupted([this] { return files_.unlink(folder_, name_.c_str()); }));
}

}  // namespace quirebind
