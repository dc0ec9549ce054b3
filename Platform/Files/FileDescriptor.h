// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <utility>

#include "Platform/Files/FileSystem.h"
#include "Platform/Files/SystemCall.h"

namespace quirebind {

/// Owns an open file of a FileSystem, which must outlive it, and closes it in the end.
class FileDescriptor {
 public:
    /// Owns nothing.
    FileDescriptor() = default;

    /// Takes `number` over; a negative one is nothing to own.
    FileDescriptor(FileSystem& files, int number) : files_(&files), number_(number) {}

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    /// The file changes hands; `other` has none then.
    FileDescriptor(FileDescriptor&& other) noexcept
        : files_(other.files_), number_(std::exchange(other.number_, -1)) {}

    /// Likewise; what was owned here before is closed, whatever close(2) says.
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            static_cast<void>(close());
            files_ = other.files_;
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }

    ~FileDescriptor() { static_cast<void>(close()); }

    /// The descriptor itself, -1 where nothing is owned. Remains owned by this object.
    [[nodiscard]] int number() const { return number_; }

    /// Another owner of the same open file, with a descriptor of its own. Owns nothing where there
    /// is no descriptor left for it, and where this owns nothing.
    [[nodiscard]] FileDescriptor duplicate() const {
        if (number_ < 0) return {};
        return {*files_, uninterrupted([this] { return files_->duplicate(number_); })};
    }

    /// Closes now and returns what close(2) says: 0 or a negated errno. Nothing is owned afterwards
    /// in either case.
    [[nodiscard]] int close() {
        if (number_ < 0) return 0;
        return files_->close(std::exchange(number_, -1));
    }

 private:
    FileSystem* files_ = nullptr;
    int number_ = -1;
};

}  // namespace quirebind
