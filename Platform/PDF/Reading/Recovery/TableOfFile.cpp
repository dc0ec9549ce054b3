// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/Recovery/TableOfFile.h"

#include <ranges>

namespace quirebind {

ObjectLocation locationOf(const ScannedObject& object) {
    return {object.offset, object.generation, ObjectLocation::Kind::inFile};
}

ObjectTable tableOfFile(const FileScan& scan, std::uint64_t fileSize) {
    ObjectTable table(fileSize);
    for (const ScannedObject& object : std::views::reverse(scan.objects))
        table.add(object.number, locationOf(object));
    return table;
}

bool isListed(const ScannedObject& object, const ObjectTable& table) {
    const ObjectLocation location = table.find(object.number);
    return location.kind == ObjectLocation::Kind::inFile && location.position == object.offset;
}

}  // namespace quirebind
