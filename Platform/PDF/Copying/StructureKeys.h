// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Reading/SparseArray.h"

namespace quirebind {

/// Gives out the keys of the output's parent tree (ISO 32000-2, 14.7.5.4), from 0 on.
class StructureKeyCounter {
 public:
    /// A key that was not given out before.
    [[nodiscard]] std::uint32_t next() { return next_++; }
    /// How many there are.
    [[nodiscard]] std::uint32_t count() const { return next_; }

 private:
    std::uint32_t next_ = 0;
};

/// For the keys that one source uses in its parent tree, those of the output, so that what is
/// copied never finds its way into another source's structure. A key that its own source does not
/// list gets one, too, which the output does not list either.
class StructureKeys {
 public:
    /// `flatLimit`: the keys for which flat storage is worth its memory.
    StructureKeys(StructureKeyCounter& counter, std::size_t flatLimit)
        : counter_(counter), keys_(flatLimit) {}

    /// The output's key for what is no copy yet; nothing where `source` can be no key.
    [[nodiscard]] std::optional<std::uint32_t> keyFor(std::optional<std::int64_t> source) {
        if (!source || *source < 0 || *source > kLargest) return std::nullopt;
        std::uint32_t& key = keys_.at(static_cast<std::uint32_t>(*source));
        if (key == 0) key = counter_.next() + 1;
        return key - 1;
    }

    /// The output's key where the source's is in use.
    [[nodiscard]] std::optional<std::uint32_t> find(std::int64_t source) const {
        if (source < 0 || source > kLargest) return std::nullopt;
        const std::uint32_t key = keys_.get(static_cast<std::uint32_t>(source));
        if (key == 0) return std::nullopt;
        return key - 1;
    }

 private:
    static constexpr std::int64_t kLargest = limits::kObjectNumber;

    StructureKeyCounter& counter_;
    SparseArray<std::uint32_t> keys_;  // one more than the output's; 0 for none yet
};

}  // namespace quirebind
