// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Renderer/UpdatedFile.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace quirebind {

UpdatedFile::UpdatedFile(int file, std::string update) : file_(file), update_(std::move(update)) {
    struct stat status{};
    if (::fstat(file_, &status) == 0) fileSize_ = status.st_size;
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 UpdatedFile::size() const {
    return fileSize_ + static_cast<qint64>(update_.size());
}

bool UpdatedFile::seek(qint64 position) {
    if (position < 0 || position > size() || !QIODevice::seek(position)) return false;
    at_ = position;
    return true;
}

/// All that is asked for and is there: whoever gets less takes it for the end.
qint64 UpdatedFile::readData(char* data, qint64 most) {
    qint64 done = 0;
    while (done < most) {
        const auto left = static_cast<std::size_t>(most - done);
        const qint64 count =
            at_ < fileSize_ ? readFile(data + done, left) : readUpdate(data + done, left);
        if (count < 0) return done > 0 ? done : -1;
        if (count == 0) break;
        at_ += count;
        done += count;
    }
    return done;
}

qint64 UpdatedFile::readFile(char* data, std::size_t most) const {
    const std::size_t size = std::min(most, static_cast<std::size_t>(fileSize_ - at_));
    ssize_t count = 0;
    do {
        count = ::pread(file_, data, size, at_);
    } while (count < 0 && errno == EINTR);
    return count;
}

qint64 UpdatedFile::readUpdate(char* data, std::size_t most) const {
    const auto begin = static_cast<std::size_t>(at_ - fileSize_);
    const std::size_t size = std::min(most, update_.size() - begin);
    std::copy_n(update_.data() + begin, size, data);
    return static_cast<qint64>(size);
}

qint64 UpdatedFile::writeData(const char* /*data*/, qint64 /*size*/) {
    return -1;
}

}  // namespace quirebind
