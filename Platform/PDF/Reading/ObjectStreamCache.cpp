// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/ObjectStreamCache.h"

#include <utility>

namespace quirebind {

ObjectStream* ObjectStreamCache::find(std::uint32_t number) {
    const auto found = byNumber_.find(number);
    if (found == byNumber_.end()) return nullptr;
    recent_.splice(recent_.begin(), recent_, found->second);
    return &found->second->stream;
}

ObjectStream& ObjectStreamCache::add(std::uint32_t number, ObjectStream stream) {
    const std::size_t cost = stream.cost();
    recent_.push_front({number, cost, std::move(stream)});
    cost_ += cost;
    byNumber_.emplace(number, recent_.begin());
    return recent_.front().stream;
}

void ObjectStreamCache::trim(std::uint64_t room) {
    while (cost_ > room && recent_.size() > 1) {
        cost_ -= recent_.back().cost;
        byNumber_.erase(recent_.back().number);
        recent_.pop_back();
    }
}

void ObjectStreamCache::clear() {
    byNumber_.clear();
    recent_.clear();
    cost_ = 0;
}

}  // namespace quirebind
