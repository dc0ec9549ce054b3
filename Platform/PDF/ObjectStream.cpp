// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/ObjectStream.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "Platform/PDF/Characters.h"
#include "Platform/PDF/Limits.h"

namespace quirebind {

ObjectStream::ObjectStream(std::string decoded, std::size_t first, std::size_t count)
    : text_(std::move(decoded)) {
    const std::string_view text(text_);
    const std::string_view pairs = text.substr(0, first);
    std::size_t at = 0;
    while (members_.size() < count) {
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

std::optional<Value> ObjectStream::find(std::uint32_t number, std::uint32_t index,
                                        std::vector<FoundReference>* references) const {
    auto member = members_.end();
    if (index < members_.size() && members_[index].number == number) {
        member = members_.begin() + index;
    } else {
        member = std::ranges::find(members_, number, &Member::number);
    }
    if (member == members_.end() || member->offset > text_.size()) return std::nullopt;
    const std::string_view text(text_);
    const std::size_t begin = skipWhite(text, member->offset);
    const std::size_t end = scanValue(text, begin, references);
    if (end == std::string_view::npos) return std::nullopt;
    if (references != nullptr) {
        for (FoundReference& found : *references) {
            found.begin -= begin;
            found.end -= begin;
        }
    }
    return Value(text.substr(begin, end - begin));
}

std::size_t ObjectStream::cost() const {
    return text_.capacity() + members_.capacity() * sizeof(Member);
}

}  // namespace quirebind
