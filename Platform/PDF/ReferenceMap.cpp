// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/ReferenceMap.h"

namespace quirebind {

std::optional<std::uint32_t> ReferenceMap::map(Reference reference, Role role) {
    if (!exists(reference)) return std::nullopt;
    std::uint32_t& output = outputs_.at(reference.number);
    if (output == kNull) return std::nullopt;
    if (output == 0) {
        output = writer_.reserve();
        if (!known_.empty())
            if (const auto known = known_.find(reference.number); known != known_.end())
                role = known->second;
        if (role == Role::structureElement)
            waiting_.push_back(reference.number);
        else
            queue_.push_back({reference.number, output, role});
    }
    return output;
}

std::optional<std::uint32_t> ReferenceMap::mapElement(Reference reference) {
    if (!exists(reference)) return std::nullopt;
    std::uint32_t& output = outputs_.at(reference.number);
    if (output == kNull) return std::nullopt;
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
