// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "Platform/PDF/Reading/SparseArray.h"

namespace quirebind {

/// Where a cross-reference section says that an object is (ISO 32000-2, 7.5.4 and 7.5.8).
struct ObjectLocation {
    /// What sort of place it is.
    enum class Kind : std::uint8_t {
        unlisted,  ///< No section speaks of it: a reference to it means null.
        free,      ///< Deleted: likewise.
        inFile,    ///< `position` is its offset, `detail` its generation number.
        inStream,  ///< `position` is the object stream's number, `detail` the index in it.
    };
    std::uint64_t position = 0;
    std::uint32_t detail = 0;
    Kind kind = Kind::unlisted;
};

/// The merged cross-reference table of a document. Sections are added from the newest to the
/// oldest, so what is there already stays.
class ObjectTable {
 public:
    /// `fileSize` bounds how much a table may ask for: there cannot be more objects than bytes.
    explicit ObjectTable(std::uint64_t fileSize);

    /// Where the object is; `unlisted` where no section says.
    [[nodiscard]] ObjectLocation find(std::uint32_t number) const { return entries_.get(number); }

    /// Lists the object unless a newer section did. Throws DamagedDocument beyond the limits.
    void add(std::uint64_t number, const ObjectLocation& location);

    /// Lists the object, which is listed already, elsewhere.
    void replace(std::uint32_t number, const ObjectLocation& location) {
        entries_.at(number) = location;
    }

    /// Notes that a section of the table takes so many bytes of the file.
    void addStored(std::uint64_t bytes) { stored_ += bytes; }
    /// What all sections take.
    [[nodiscard]] std::uint64_t storedBytes() const { return stored_; }

    /// Below this, object numbers are worth flat storage.
    [[nodiscard]] std::size_t flatLimit() const { return flatLimit_; }

 private:
    std::size_t flatLimit_;
    std::uint64_t room_;
    std::uint64_t wildRoom_;
    std::uint64_t stored_ = 0;
    SparseArray<ObjectLocation> entries_;
};

}  // namespace quirebind
