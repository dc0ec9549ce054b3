// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/ObjectTable.h"

#include <algorithm>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"

namespace quirebind {

ObjectTable::ObjectTable(std::uint64_t fileSize)
    : flatLimit_(std::max(limits::kFlatObjectNumbers, static_cast<std::size_t>(fileSize / 8))),
      room_(limits::kFlatObjectNumbers + fileSize),
      wildRoom_(limits::kWildObjectNumbers),
      entries_(flatLimit_) {}

void ObjectTable::add(std::uint64_t number, const ObjectLocation& location) {
    if (number > limits::kObjectNumber) return;  // no reference can name it
    std::uint64_t& room = number < flatLimit_ ? room_ : wildRoom_;
    if (room == 0) throw DamagedDocument("more objects listed than the file has room for");
    --room;
    ObjectLocation& entry = entries_.at(static_cast<std::uint32_t>(number));
    if (entry.kind == ObjectLocation::Kind::unlisted) entry = location;
}

}  // namespace quirebind
