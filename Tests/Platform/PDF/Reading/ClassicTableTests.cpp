// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Classic cross-reference tables (ISO 32000-2, 7.5.4) as real writers produce them.

#include <string>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"

namespace quirebind::pdftest {
namespace {

std::string withTable(const std::string& options, const std::string& objects = "") {
    return "{{header 1.4}}\n" + std::string(kOnePage) + objects + "{{xref " + options + "}}" +
           std::string(kTrailer);
}

/// A table that says something behind each entry.
std::string withRemarks(const std::string& remark, int furtherEntries = 0) {
    std::string text = "{{header 1.4}}\n" + std::string(kOnePage) + "{{label table}}\nxref\n0 " +
                       std::to_string(6 + furtherEntries) + "\n0000000000 65535 f" + remark + "\n";
    for (int i = 1; i <= 5; ++i) {
        text += "{{offset " + std::to_string(i) + "}} 00000 n" + remark + "\n";
    }
    for (int i = 0; i < furtherEntries; ++i) text += "0000000000 00001 f" + remark + "\n";
    return text + "trailer\n<< /Size 6 /Root 1 0 R >>\nstartxref\n{{offset table}}\n%%EOF\n";
}

/// A table whose entries are as long as they should be, with blanks where zeros should be.
std::string withBlanks() {
    std::string text = "{{header 1.4}}\n" + std::string(kOnePage) +
                       "{{label table}}\nxref\n0 6\n         0 65535 f \n";
    for (int i = 1; i <= 5; ++i) {
        const std::string blanks(i == 1 ? 8 : 7, ' ');  // the first offset has two digits
        text += blanks + "{{offset " + std::to_string(i) + "}} 00000 n \n";
    }
    return text + "trailer\n<< /Size 6 /Root 1 0 R >>\nstartxref\n{{offset table}}\n%%EOF\n";
}

INSTANTIATE_TEST_SUITE_P(
    ClassicTable, ReadableFile,
    ::testing::Values(
        Kind("inOneSubsection", withTable("")),  //
        Kind("inSeveralSubsections", withTable("split=2,3,5")),
        Kind("numberedFromOne", withTable("shift=1")),
        Kind("withEntriesOf19Bytes", withTable("entry=19")),
        Kind("withCarriageReturns", "{{eol cr}}\n" + withTable("")),
        Kind("withBothLineEnds", "{{eol crlf}}\n" + withTable("")),
        Kind("withCarriageReturnsInEntriesOf19Bytes", "{{eol cr}}\n" + withTable("entry=19")),
        Kind("withoutObjectZero", withTable("zero=no")),
        Kind("withFreeEntries", withTable("", "{{free 6 1}}\n{{free 9 65535}}\n")),
        Kind("withBlanksInPlaceOfZeros", withBlanks()),
        Kind("withComments", withRemarks(" % an object")),
        Kind("withRemarks", withRemarks(" (an object)")),
        Kind("withRemarksBehindAllEntriesButTheLast",
             replaced(withRemarks(" (an object)"), "{{offset 5}} 00000 n (an object)",
                      "{{offset 5}} 00000 n")),
        // Such tables are read piece by piece.
        Kind("withLongCommentsInALargeTable", withRemarks(" %" + std::string(150, '-'), 6000)),
        Kind("withLongRemarksInALargeTable", withRemarks(' ' + std::string(151, '-'), 6000)),
        Kind("withLongBlanksInALargeTable", withRemarks(std::string(152, ' '), 6000))),
    nameOfKind);

}  // namespace
}  // namespace quirebind::pdftest
