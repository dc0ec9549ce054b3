// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"

namespace quirebind {

/// The work that one document may cause, in bytes looked at. Every loop that a file's pointers can
/// make long spends from it, so that reading ends in time linear in the file's size whatever the
/// pointers say.
class WorkBudget {
 public:
    /// So many bytes may be looked at.
    explicit WorkBudget(std::uint64_t bytes) : left_(bytes) {}

    /// What `allowance` makes of a file of which so many bytes are stored.
    WorkBudget(const limits::Allowance& allowance, std::uint64_t storedBytes)
        : left_(allowance.fixed + allowance.perByte * storedBytes) {}

    /// Throws DamagedDocument when so much is not left, and from then on whatever is asked for.
    void spend(std::uint64_t bytes) {
        if (bytes > left_) {
            left_ = 0;
            throw DamagedDocument("the file asks for more work than its size allows");
        }
        left_ -= bytes;
    }

    /// The bytes that may still be looked at.
    [[nodiscard]] std::uint64_t left() const { return left_; }

 private:
    std::uint64_t left_;
};

}  // namespace quirebind
