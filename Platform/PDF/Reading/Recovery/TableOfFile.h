// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "Platform/PDF/Reading/ObjectTable.h"
#include "Platform/PDF/Reading/Recovery/FileScanner.h"

namespace quirebind {

/// The table of a damaged file's objects as a scan found them, as if the file had one
/// cross-reference section that lists them all: those that stand in the file itself, which is what
/// it takes to read object streams. Of several definitions of an object the last in the file
/// counts, since revisions are appended.
[[nodiscard]] ObjectTable tableOfFile(const FileScan& scan, std::uint64_t fileSize);

/// Where the object stands, as a table lists it.
[[nodiscard]] ObjectLocation locationOf(const ScannedObject& object);

/// Whether it is this definition that the table lists.
[[nodiscard]] bool isListed(const ScannedObject& object, const ObjectTable& table);

}  // namespace quirebind
