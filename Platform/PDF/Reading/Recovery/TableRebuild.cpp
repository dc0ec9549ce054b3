// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/Recovery/TableRebuild.h"

#include <ranges>

#include "Platform/PDF/Guards/DamagedDocument.h"

namespace quirebind {
namespace {

using Kind = ObjectLocation::Kind;

void addFromFile(const ScannedObject& object, ObjectTable& table) {
    table.add(object.number, {object.offset, object.generation, Kind::inFile});
}

void addMembers(std::uint32_t stream, ObjectReader& reader, ObjectTable& table) {
    const std::vector<std::uint32_t> members = reader.membersOf(stream);
    for (std::uint32_t index = 0; index < members.size(); ++index)
        table.add(members[index], {stream, index, Kind::inStream});
}

}  // namespace

ObjectTable tableOfFile(const FileScan& scan, std::uint64_t fileSize) {
    ObjectTable table(fileSize);
    for (const ScannedObject& object : std::views::reverse(scan.objects))
        addFromFile(object, table);
    return table;
}

ObjectTable tableWithStreams(const FileScan& scan, ObjectReader& reader) {
    ObjectTable table(reader.image().size());
    for (const ScannedObject& object : std::views::reverse(scan.objects)) {
        addFromFile(object, table);
        if (object.kind == ScannedObject::Kind::objectStream && isListed(object, reader.table()))
            addMembers(object.number, reader, table);
        reader.trim();
    }
    return table;
}

bool isListed(const ScannedObject& object, const ObjectTable& table) {
    const ObjectLocation location = table.find(object.number);
    return location.kind == Kind::inFile && location.position == object.offset;
}

}  // namespace quirebind
