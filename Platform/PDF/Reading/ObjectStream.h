// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// A decoded object stream (ISO 32000-2, 7.5.7). Its text is
///
///     N pairs "object-number offset", white space between them     First bytes
///     N values, each at First + its offset                        the rest
///
/// ObjectPacker writes what this reads.
class ObjectStream {
 public:
    /// What `decoded` is took `encodedSize` bytes. `first` is the value under /First. Takes the
    /// pairs that are there, however many /N promises. `whole` says that `decoded` is all that was
    /// encoded; otherwise the value at its end is taken for cut off.
    ObjectStream(std::string decoded, std::size_t encodedSize, std::size_t first, std::size_t count,
                 bool whole = true);

    /// How many objects are here.
    [[nodiscard]] std::size_t size() const { return members_.size(); }
    /// The number of the object at `index`.
    [[nodiscard]] std::uint32_t numberAt(std::size_t index) const { return members_[index].number; }

    /// The value of object `number`, which the cross-reference stream says to be at `index`; real
    /// files have wrong indexes, so the pairs decide. Nothing where it is not here or is damaged.
    /// What is read is spent from `budget`.
    [[nodiscard]] std::optional<Value> find(std::uint32_t number, std::uint32_t index,
                                            WorkBudget& budget, FoundParts* parts);

    /// The part of the encoded bytes that is for `value`, one of those here.
    [[nodiscard]] double packedSize(Value value) const {
        return packedRatio_ * static_cast<double>(value.text().size());
    }

    /// Bytes of memory that this takes.
    [[nodiscard]] std::size_t cost() const;

 private:
    struct Member {
        std::uint32_t number = 0;
        std::size_t offset = 0;
    };
    [[nodiscard]] const Member* member(std::uint32_t number, std::uint32_t index);

    std::string text_;
    bool whole_;
    double packedRatio_;  // what a byte of a value took, with its share of all that is no value
    std::vector<Member> members_;
    bool wasWrong_ = false;                // an index was
    std::vector<std::uint32_t> byNumber_;  // indexes into members_, once a second one was
};

}  // namespace quirebind
