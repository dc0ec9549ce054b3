// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Reading/ObjectTable.h"
#include "Platform/PDF/Reading/Recovery/FileScanner.h"

namespace quirebind {

/// The same as tableOfFile, and with the objects in object streams. `reader` has the table of the
/// file. Of several definitions of an object the last one counts; one in an object stream stands
/// where the stream stands. A stream that a later definition replaces has no objects, nor has one
/// that cannot be decoded; of one that is damaged, what can be decoded counts.
[[nodiscard]] ObjectTable tableWithStreams(const FileScan& scan, ObjectReader& reader);

}  // namespace quirebind
