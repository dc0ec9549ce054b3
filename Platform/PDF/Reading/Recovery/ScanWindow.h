// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "Platform/PDF/Reading/ByteSource.h"
#include "Platform/PDF/Reading/SourceImage.h"

namespace quirebind {

/// A window that moves over a source file from its beginning to its end, in memory of its own: the
/// image keeps nothing of what is seen through it, and no view of the image ends. A view of the
/// window is valid until the next one. Throws DamagedDocument as the image does.
class ScanWindow final : public ByteSource {
 public:
    /// `image` must outlive this.
    explicit ScanWindow(SourceImage& image) : image_(image) {}

    [[nodiscard]] std::uint64_t size() const override { return image_.size(); }
    /// As SourceImage::nextStored.
    [[nodiscard]] std::uint64_t nextStored(std::uint64_t offset) const {
        return image_.nextStored(offset);
    }
    /// A short view ahead of the window leaves the window where it is.
    [[nodiscard]] std::string_view view(std::uint64_t offset, std::size_t length) override;

 private:
    [[nodiscard]] std::string_view held(std::uint64_t offset) const;

    SourceImage& image_;
    std::uint64_t begin_ = 0;
    std::vector<char> bytes_;
    std::array<char, 64> ahead_{};
};

}  // namespace quirebind
