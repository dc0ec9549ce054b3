// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Copying/ReferenceMap.h"

namespace quirebind {

std::optional<std::uint32_t> ReferenceMap::map(Reference reference, Role role) {
    if (!exists(reference)) return std::nullopt;
    const std::uint32_t output = outputs_.at(reference.number);
    if (output == kNull) return std::nullopt;
    if (isPage(output)) return pageNumber(output & ~kPage);
    return output != 0 ? output : assignFirst(reference.number, roleOf(reference.number, role));
}

std::uint32_t ReferenceMap::pageNumber(std::size_t index) {
    if (index >= pages_.size()) pages_.resize(index + 1);
    std::uint32_t& number = pages_[index];
    if (number == 0) number = writer_.reserve();
    return number;
}

Role ReferenceMap::roleOf(std::uint32_t source, Role role) const {
    if (known_.empty()) return role;
    const auto known = known_.find(source);
    return known == known_.end() ? role : known->second;
}

std::uint32_t ReferenceMap::assignFirst(std::uint32_t source, Role role) {
    if (standIns_ != nullptr && role == Role::plain) {
        const auto standIn = standIns_->standInFor(source);
        std::uint32_t& output = outputs_.at(source);
        if (output == 0 && standIn) output = *standIn;
        if (output != 0) return output;  // also where it refers to itself
    }
    const std::uint32_t output = writer_.reserve();
    outputs_.at(source) = output;
    if (role == Role::structureElement)
        waiting_.push_back(source);
    else
        queue_.push_back({source, output, role});
    return output;
}

std::optional<std::uint32_t> ReferenceMap::mapElement(Reference reference) {
    if (!exists(reference)) return std::nullopt;
    std::uint32_t& output = outputs_.at(reference.number);
    if (output == kNull || isPage(output)) return std::nullopt;
    if (output == 0) output = writer_.reserve();
    const std::uint32_t number = output;
    queueElement(reference.number);
    return number;
}

std::optional<ReferenceMap::Pending> ReferenceMap::next() {
    if (head_ == queue_.size()) {
        queue_.clear();
        head_ = 0;
        return std::nullopt;
    }
    return queue_[head_++];
}

}  // namespace quirebind
