// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/ObjectStream.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/UnsignedNumber.h"

namespace quirebind {

ObjectStream::ObjectStream(std::string decoded, std::size_t encodedSize, std::size_t first,
                           std::size_t count, bool whole)
    : text_(std::move(decoded)),
      whole_(whole),
      packedRatio_(static_cast<double>(encodedSize) /
                   static_cast<double>(std::max<std::size_t>(text_.size() - first, 1))) {
    const std::string_view text(text_);
    const std::string_view pairs = text.substr(0, first);
    std::size_t at = 0;
    while (members_.size() < std::min(count, limits::kObjectStreamMembers)) {
        std::uint64_t number = 0;
        std::uint64_t offset = 0;
        at = skipWhite(pairs, at);
        if (!readUnsigned(pairs, at, number)) break;
        at = skipWhite(pairs, at);
        if (!readUnsigned(pairs, at, offset)) break;
        if (number > limits::kObjectNumber || offset > text.size()) continue;
        members_.push_back(
            {static_cast<std::uint32_t>(number), first + static_cast<std::size_t>(offset)});
    }
}

const ObjectStream::Member* ObjectStream::member(std::uint32_t number, std::uint32_t index) {
    if (index < members_.size() && members_[index].number == number) return &members_[index];
    if (!std::exchange(wasWrong_, true)) {
        const auto found = std::ranges::find(members_, number, &Member::number);
        return found == members_.end() ? nullptr : &*found;
    }
    const auto numberOf = [this](std::uint32_t i) { return members_[i].number; };
    if (byNumber_.empty()) {
        byNumber_.resize(members_.size());
        std::iota(byNumber_.begin(), byNumber_.end(), 0U);
        // Of members with the same number the first counts.
        std::ranges::sort(byNumber_, [&](std::uint32_t a, std::uint32_t b) {
            return std::pair(numberOf(a), a) < std::pair(numberOf(b), b);
        });
    }
    const auto found = std::ranges::lower_bound(byNumber_, number, {}, numberOf);
    if (found == byNumber_.end() || numberOf(*found) != number) return nullptr;
    return &members_[*found];
}

std::optional<Value> ObjectStream::find(std::uint32_t number, std::uint32_t index,
                                        WorkBudget& budget, FoundParts* parts) {
    const Member* const found = member(number, index);
    if (found == nullptr || found->offset > text_.size()) return std::nullopt;
    const std::string_view text(text_);
    const Extent extent = scanValue(text, found->offset, parts);
    budget.spend(extent.looked - found->offset + 1);
    if (!extent.isValue() || (!whole_ && extent.looked >= text.size())) return std::nullopt;
    return Value(extent.in(text));
}

std::size_t ObjectStream::cost() const {
    return text_.capacity() + members_.capacity() * sizeof(Member) +
           byNumber_.capacity() * sizeof(std::uint32_t);
}

}  // namespace quirebind
