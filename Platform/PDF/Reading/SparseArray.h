// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace quirebind {

/// An array over object numbers that costs no more than what is stored in it: of the numbers below
/// a limit, those that stand together live in a page of their own, wild ones above in a tree
/// (which, unlike a hash table, no file can slow down by its choice of numbers). Elements that were
/// never written read as T().
///
///     places_   | 0 | - | - | 1 | ...       by number / kPage
///               +---------+---------+
///     elements_ | page 0  | page 1  | ...
template <typename T>
class SparseArray {
 public:
    /// `flatLimit`: the numbers for which a place is worth its memory.
    explicit SparseArray(std::size_t flatLimit) : flatLimit_(wholePages(flatLimit)) {}

    /// The element; T() where nothing was written there.
    [[nodiscard]] T get(std::uint32_t index) const {
        if (const std::size_t page = index / kPage; page < places_.size())
            return places_[page] == kNowhere ? T() : elements_[places_[page] + index % kPage];
        if (index < flatLimit_) return T();
        const auto found = wild_.find(index);
        return found == wild_.end() ? T() : found->second;
    }

    /// The element, to be written; valid until the next call.
    [[nodiscard]] T& at(std::uint32_t index) {
        if (index >= flatLimit_) return wild_[index];
        const std::size_t page = index / kPage;
        if (page >= places_.size()) places_.resize(page + 1, kNowhere);
        if (places_[page] == kNowhere) {
            places_[page] = static_cast<std::uint32_t>(elements_.size());
            elements_.resize(elements_.size() + kPage);
        }
        return elements_[places_[page] + index % kPage];
    }

    /// Forgets all elements but keeps the memory, for the next user with another limit.
    void reset(std::size_t flatLimit) {
        flatLimit_ = wholePages(flatLimit);
        places_.clear();
        elements_.clear();
        wild_.clear();
    }

 private:
    static constexpr std::size_t kPage = 64;
    static constexpr std::uint32_t kNowhere = 0xffffffff;

    /// No page is shared by the numbers below the limit and those above.
    static constexpr std::size_t wholePages(std::size_t limit) {
        return (limit + kPage - 1) / kPage * kPage;
    }

    std::size_t flatLimit_;
    std::vector<std::uint32_t> places_;  // where in `elements_` each page begins
    std::vector<T> elements_;
    std::map<std::uint32_t, T> wild_;
};

}  // namespace quirebind
