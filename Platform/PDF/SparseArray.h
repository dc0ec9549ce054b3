// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace quirebind {

/// An array over object numbers that costs no more than what is stored in it: numbers below a limit
/// live in a flat vector, wild ones above in a tree (which, unlike a hash table, no file can slow
/// down by its choice of numbers). Elements that were never written read as T().
template <typename T>
class SparseArray {
 public:
    /// `flatLimit`: the numbers for which flat storage is worth its memory.
    explicit SparseArray(std::size_t flatLimit) : flatLimit_(flatLimit) {}

    [[nodiscard]] T get(std::uint32_t index) const {
        if (index < flat_.size()) return flat_[index];
        if (index < flatLimit_) return T();
        const auto found = wild_.find(index);
        return found == wild_.end() ? T() : found->second;
    }

    /// The element, to be written; valid until the next call.
    [[nodiscard]] T& at(std::uint32_t index) {
        if (index >= flatLimit_) return wild_[index];
        if (index >= flat_.size()) {
            if (index >= flat_.capacity()) flat_.reserve(grown(index));
            flat_.resize(std::size_t{index} + 1);
        }
        return flat_[index];
    }

    /// Calls `visit(index, element)` for every element that was written, and for those flat ones
    /// in between that were not.
    template <typename Visit>
    void forEach(Visit visit) const {
        for (std::size_t i = 0; i < flat_.size(); ++i)
            visit(static_cast<std::uint32_t>(i), flat_[i]);
        for (const auto& [index, element] : wild_) visit(index, element);
    }

    /// Forgets all elements but keeps the memory, for the next user with another limit.
    void reset(std::size_t flatLimit) {
        flatLimit_ = flatLimit;
        flat_.clear();
        wild_.clear();
    }

 private:
    [[nodiscard]] std::size_t grown(std::uint32_t index) const {
        const std::size_t doubled = 2 * flat_.capacity();
        return doubled > index ? doubled : std::size_t{index} + 1;
    }

    std::size_t flatLimit_;
    std::vector<T> flat_;
    std::map<std::uint32_t, T> wild_;
};

}  // namespace quirebind
