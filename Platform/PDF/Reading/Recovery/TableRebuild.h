// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Reading/ObjectTable.h"
#include "Platform/PDF/Reading/Recovery/FileScanner.h"

namespace quirebind {

/// Makes the table of a damaged file's objects out of what a scan found, as if the file had one
/// cross-reference section that lists them all. Of several definitions of an object the last in the
/// file counts, since revisions are appended; an object in an object stream stands where the stream
/// stands. A stream that a later definition replaces has no objects.

/// The objects that stand in the file itself: what it takes to read object streams.
[[nodiscard]] ObjectTable tableOfFile(const FileScan& scan, std::uint64_t fileSize);

/// Those and the objects in object streams. `reader` has the table of the file. A stream that
/// cannot be decoded has no objects; of one that is damaged, what can be decoded counts.
[[nodiscard]] ObjectTable tableWithStreams(const FileScan& scan, ObjectReader& reader);

/// Whether it is this definition that the table lists.
[[nodiscard]] bool isListed(const ScannedObject& object, const ObjectTable& table);

}  // namespace quirebind
