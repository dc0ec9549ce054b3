// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/Recovery/ScanWindow.h"

#include <algorithm>

namespace quirebind {

std::string_view ScanWindow::held(std::uint64_t offset) const {
    if (offset < begin_ || offset - begin_ >= bytes_.size()) return {};
    const auto at = static_cast<std::size_t>(offset - begin_);
    return {&bytes_[at], bytes_.size() - at};
}

std::string_view ScanWindow::view(std::uint64_t offset, std::size_t length) {
    constexpr std::size_t kWindow = std::size_t{256} << 10U;
    if (offset >= size()) return {};
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(length, size() - offset));
    const std::string_view now = held(offset);
    if (now.size() >= wanted && !now.empty()) return now;
    if (wanted <= ahead_.size()) {
        const auto ahead = std::span(ahead_).first(wanted);
        image_.copy(offset, ahead);
        return {ahead.data(), ahead.size()};
    }
    bytes_.resize(static_cast<std::size_t>(
        std::min<std::uint64_t>(std::max(wanted, kWindow), size() - offset)));
    begin_ = offset;
    image_.copy(offset, bytes_);
    return {bytes_.data(), bytes_.size()};
}

}  // namespace quirebind
