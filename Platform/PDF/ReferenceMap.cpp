// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/ReferenceMap.h"

namespace quirebind {

std::optional<std::uint32_t> ReferenceMap::map(Reference reference, Role role) {
    if (!reader_.exists(reference)) return std::nullopt;
    std::uint32_t& output = outputs_.at(reference.number);
    if (output == kNull) return std::nullopt;
    if (output == 0) {
        output = writer_.reserve();
        queue_.push_back({reference.number, output, role});
    }
    return output;
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
