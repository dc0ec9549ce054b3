// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/Recovery/TableWithStreams.h"

#include <cstdint>
#include <ranges>
#include <vector>

#include "Platform/PDF/Reading/Recovery/TableOfFile.h"

namespace quirebind {
namespace {

void addMembers(std::uint32_t stream, ObjectReader& reader, ObjectTable& table) {
    const std::vector<std::uint32_t> members = reader.membersOf(stream);
    for (std::uint32_t index = 0; index < members.size(); ++index)
        table.add(members[index], {stream, index, ObjectLocation::Kind::inStream});
}

}  // namespace

ObjectTable tableWithStreams(const FileScan& scan, ObjectReader& reader) {
    ObjectTable table(reader.image().size());
    for (const ScannedObject& object : std::views::reverse(scan.objects)) {
        table.add(object.number, locationOf(object));
        if (object.kind == ScannedObject::Kind::objectStream && isListed(object, reader.table()))
            addMembers(object.number, reader, table);
        reader.trim();
    }
    return table;
}

}  // namespace quirebind
