// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/ObjectTable.h"
#include "Platform/PDF/Reading/SourceImage.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

class TableCursor;

/// What the cross-reference sections of a file say.
struct CrossReference {
    ObjectTable table;
    /// The newest trailer dictionary that has a /Root, as text.
    std::string trailer;
    std::uint64_t newest = 0;  ///< Where the newest section is.
};

/// Reads all cross-reference sections of a file, from the newest, which startxref points to, back
/// along /Prev to the oldest (ISO 32000-2, 7.5.4, 7.5.5, 7.5.8). CrossReferenceWriter writes what
/// this reads.
///
/// A classic section:                      A cross-reference stream:
///
///     xref                                    12 0 obj
///     0 2            first number, count      << /Type /XRef /W [1 2 1] /Index [0 2] /Size 2
///     0000000000 65535 f                         /Root ... /Prev ... >>
///     0000000017 00000 n                      stream
///     trailer                                 type, field 2, field 3: of /W bytes each
///     << /Size 2 /Root ... /Prev ... >>       endstream endobj
///
/// In a hybrid file a classic trailer has /XRefStm, the offset of a stream whose entries replace
/// the free ones of its table (7.5.8.4).
///
/// Throws DamagedDocument where a section is not as it should be. Used for one file, once.
class CrossReferenceReader {
 public:
    /// `image` must outlive this.
    explicit CrossReferenceReader(SourceImage& image);

    /// Reads all sections, beginning with the one that startxref names.
    [[nodiscard]] CrossReference read();

    /// Reads the one section at `offset` into the table, and nothing that it points to but its
    /// /XRefStm; gives its trailer dictionary. For files of which only some sections can be read;
    /// of a section that is broken the table then has what came before the break.
    std::string readSection(std::uint64_t offset);
    /// What has been read so far.
    [[nodiscard]] const ObjectTable& table() const { return result_.table; }

 private:
    [[nodiscard]] std::uint64_t startOffset();
    /// Each of these reads the section at `offset` and returns its trailer dictionary.
    std::string readTable(std::uint64_t offset);
    std::string readStream(std::uint64_t offset);
    void readSubsection(TableCursor& cursor, std::vector<std::uint64_t>& freed);
    bool addRows(std::string_view rows, Value dictionary);

    SourceImage& image_;
    WorkBudget budget_;
    CrossReference result_;
    std::set<std::uint64_t> visited_;
};

/// The text of the dictionary at `offset`, with as much of the file fetched as it takes. Throws
/// DamagedDocument where there is none.
[[nodiscard]] std::string readTrailerDictionary(SourceImage& image, std::uint64_t offset,
                                                WorkBudget& budget);

}  // namespace quirebind
