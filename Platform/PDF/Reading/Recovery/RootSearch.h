// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Reading/Recovery/FileScanner.h"

namespace quirebind {

/// Finds where a damaged document begins. The trailer that it is read by is
///
///  1. the last one in the file, or cross-reference stream, whose /Root is a dictionary with
///  /Pages;
///  2. otherwise one made for the last catalog with /Pages;
///  3. otherwise one made for the last page-tree node that has /Kids and no /Parent;
///  4. otherwise one made for all pages, in the order in which the file first has them. A page with
///     a /Parent is none of those: its tree is lost, and nobody can say how many pages it had.
///
/// Throws DamagedDocument where none of them is found. Used for one file, once.
class RootSearch {
 public:
    /// `scan` is that of the file that `reader` reads. Both must outlive this.
    RootSearch(const FileScan& scan, ObjectReader& reader);

    /// The last trailer that has an /Encrypt, if no later one has a /Root without it; otherwise
    /// empty. Objects in the file are enough to find it.
    [[nodiscard]] std::string encryptedTrailer();

    /// The trailer, as text. Asked when the reader has all objects.
    [[nodiscard]] std::string trailer();

 private:
    using Visit = std::function<bool(Reference, ScannedObject::Kind)>;

    [[nodiscard]] std::string textOfTrailer(std::size_t index);
    [[nodiscard]] bool isCatalog(Value value);
    /// Tells of all objects, from the last to the first, until `visit` says to stop.
    void visitObjects(const Visit& visit);
    [[nodiscard]] bool visitMembers(std::uint32_t stream, const Visit& visit);
    [[nodiscard]] std::optional<std::string> madeForCatalog();
    [[nodiscard]] std::optional<std::string> madeForPageTree();
    [[nodiscard]] std::optional<std::string> madeForPages();

    const FileScan& scan_;
    ObjectReader& reader_;
    WorkBudget budget_;
    /// Where trailers are, in the order of the file: dictionaries, or objects with a number.
    struct Trailer {
        std::uint64_t offset = 0;
        std::optional<std::uint32_t> object;
    };
    std::vector<Trailer> trailers_;
};

}  // namespace quirebind
