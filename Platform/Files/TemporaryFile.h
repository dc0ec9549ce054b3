// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>

#include <sys/types.h>

#include "Platform/Files/FileDescriptor.h"
#include "Platform/Files/FileSystem.h"

namespace quirebind {

/// A file in the making, in the folder of the file that it is to replace. Nobody but its user may
/// open it before makeDurable(). It vanishes with this object unless appear() or replace()
/// succeeded.
///
///   createUnnamed() -> write() -> makeDurable() -> appear()
///   createUnnamed() -> write() -> makeDurable() -> giveName() -> close() -> replace()
///   createNamed()   -> write() -> makeDurable() ---------------> close() -> replace()
///
/// Where giveName() is not possible, copyToNamed() -> makeDurable() take its place.
///
/// Each step throws the std::system_error of the system call that failed; discard() may follow any
/// of them and leads back to the beginning. For one thread.
class TemporaryFile {
 public:
    /// Is told how many of the first bytes have been written. What it throws ends `write`.
    using Written = std::function<void(std::size_t)>;

    /// `files` and the open `folder` must outlive this object.
    TemporaryFile(FileSystem& files, int folder) : files_(files), folder_(folder) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    TemporaryFile(TemporaryFile&&) = delete;
    TemporaryFile& operator=(TemporaryFile&&) = delete;
    ~TemporaryFile() { discard(); }

    /// Opens a file without a name, which vanishes even where this program is killed. False where
    /// the file system has no such files.
    [[nodiscard]] bool createUnnamed();

    /// Opens a file with a hidden random name.
    void createNamed();

    /// Appends all of `bytes`; `written` is told how many of them are, each time that it is more.
    void write(std::span<const std::byte> bytes, const Written& written);

    /// Sets the final permission bits and waits until all of it is on the medium.
    void makeDurable(mode_t mode);

    /// Gives the file from createUnnamed() the name `name`, in the same folder. False, and nothing
    /// has changed, where something has that name, or where that is not possible.
    [[nodiscard]] bool appear(const std::string& name);

    /// Gives the file from createUnnamed() a hidden random name. False where that is not possible
    /// (no /proc, say); true where it has one.
    [[nodiscard]] bool giveName();

    /// Opens a file with a hidden random name in place of the unnamed one, of which it has the
    /// first `size` bytes.
    void copyToNamed(std::size_t size);

    /// Closes the file: a network file system reports here what it could not write.
    void close();

    /// Puts the file, which must have a name, in the place of `name` in the same folder.
    void replace(const std::string& name);

    /// Closes and removes the file. Errors are of no use to anybody here and not reported.
    void discard();

 private:
    FileSystem& files_;
    int folder_;
    FileDescriptor file_;
    std::string name_;  // the random name
    bool hasName_ = false;
};

}  // namespace quirebind
