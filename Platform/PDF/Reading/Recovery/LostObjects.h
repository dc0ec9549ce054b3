// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Platform/PDF/Reading/ObjectTable.h"
#include "Platform/PDF/Reading/Recovery/FileScanner.h"
#include "Platform/PDF/Reading/SourceImage.h"

namespace quirebind {

/// Tells an object that a damaged file has lost from one that it never had. A reference to an
/// object that does not exist is no error but means null (ISO 32000-2, 7.3.10), and such references
/// are common; but where a file was cut or overwritten, the object may just be what is gone, and a
/// page that needs it is not whole. What the file's own sections still say decides:
///
///  1. No trailer and no cross-reference stream stands behind the last object: the end of the file
///     is gone, and any object may be gone with it. Lost.
///  2. The newest section that can be read and speaks of the object says that it is in use, in the
///     generation that is referred to: lost.
///  3. That section says that it is free, or in use in another generation: it never was, or is no
///     more. Null.
///  4. No section speaks of it, and its number is not below any /Size: it never was. Null.
///  5. No section speaks of it, and every section can be read, also one for every trailer: it never
///     was. Null.
///  6. Otherwise there is no evidence. Lost.
///
/// Sections are read when the first object is asked for. Used by one thread.
class LostObjects {
 public:
    /// Keeps what it needs of `scan`, that of the whole file. Reads nothing yet.
    explicit LostObjects(const FileScan& scan);

    /// Whether the object, which is not in the file, may once have been there.
    [[nodiscard]] bool include(Reference reference, SourceImage& image);

 private:
    [[nodiscard]] ObjectTable readSections(SourceImage& image);

    std::vector<std::uint64_t> sections_;  // in the order of the file
    std::vector<std::uint64_t> trailers_;
    bool endIsThere_ = false;
    bool allReadable_ = false;
    std::uint64_t size_ = 0;             // the largest /Size
    std::optional<ObjectTable> claims_;  // what the sections say
};

}  // namespace quirebind
