// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Platform/PDF/Guards/Limits.h"

namespace quirebind {

/// Which of the open brackets are dictionaries, a bit each.
class BracketStack {  // NOLINT(cppcoreguidelines-pro-type-member-init): see outer_
 public:
    /// Whether every bracket that was opened is closed.
    [[nodiscard]] bool empty() const { return depth_ == 0; }
    /// How many brackets are open; at most limits::kNesting.
    [[nodiscard]] std::size_t depth() const { return depth_; }

    /// False where too many are open already.
    [[nodiscard]] bool push(bool dictionary) {
        if (depth_ == limits::kNesting) return false;
        if (depth_ % kWord == 0 && depth_ != 0) outer_[depth_ / kWord - 1] = inner_;
        inner_ = inner_ << 1U | (dictionary ? 1U : 0U);
        ++depth_;
        return true;
    }

    /// False where the innermost one is of the other kind, or none is open.
    [[nodiscard]] bool pop(bool dictionary) {
        if (depth_ == 0) return false;
        --depth_;
        const bool isDictionary = (inner_ & 1U) != 0;
        inner_ = depth_ % kWord == 0 && depth_ != 0 ? outer_[depth_ / kWord - 1] : inner_ >> 1U;
        return isDictionary == dictionary;
    }

 private:
    static constexpr std::size_t kWord = 64;

    std::size_t depth_ = 0;
    std::uint64_t inner_ = 0;  // the innermost brackets, the last one lowest
    // Full words of the brackets around those. Not cleared: it would take longer than most scans.
    std::array<std::uint64_t, limits::kNesting / kWord> outer_;
};

}  // namespace quirebind
