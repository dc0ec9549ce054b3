// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QIODevice>
#include <string>

namespace quirebind {

/// An open file to be read, and bytes that stand behind its own, as if they had been appended to
/// it.
class UpdatedFile : public QIODevice {
 public:
    /// The descriptor `file` is not owned and must stay open. Its position is neither used nor
    /// changed.
    UpdatedFile(int file, std::string update);

    [[nodiscard]] bool isSequential() const override { return false; }
    [[nodiscard]] qint64 size() const override;
    bool seek(qint64 position) override;

 protected:
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char* data, qint64 size) override;

 private:
    [[nodiscard]] qint64 readFile(char* data, std::size_t most) const;
    [[nodiscard]] qint64 readUpdate(char* data, std::size_t most) const;

    int file_;
    qint64 fileSize_ = 0;
    qint64 at_ = 0;
    std::string update_;
};

}  // namespace quirebind
