// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/TemporaryFolder.h"

/// What the tests of the document library have in common: documents are written into a folder of
/// the test, joined through PDFDocument, and looked at with other readers.
namespace quirebind::pdftest {

/// The objects 1 to 5 of a document: its catalog, its page tree, a page of 200 by 300, the page's
/// content, which shows the text "one", and its font.
inline constexpr std::string_view kOnePage = R"({{object 1 0}}
<< /Type /Catalog /Pages 2 0 R >>
endobj
{{object 2 0}}
<< /Type /Pages /Kids [3 0 R] /Count 1 >>
endobj
{{object 3 0}}
<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 4 0 R
   /Resources << /Font << /F1 5 0 R >> >> >>
endobj
{{object 4 0}}
<< /Length {{length}} >>
{{stream}}
BT /F1 12 Tf 20 150 Td (one) Tj ET
{{endstream}}
endobj
{{object 5 0}}
<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>
endobj
)";

/// The trailer and the end of a document with a classic table.
inline constexpr std::string_view kTrailer = R"(
trailer
<< /Size {{size}} /Root 1 0 R >>
{{startxref}}
%%EOF
)";

/// kOnePage with further objects, as a file with a classic table: a fixture's text.
[[nodiscard]] std::string onePageWith(std::string_view objects = "");

/// `objects` as a file with a classic table: a fixture's text. Object 1 is the catalog.
[[nodiscard]] std::string document(std::string_view objects);

/// A page of that width, as object `number` below the node 2: it shows `text`, its content is the
/// next object, its font is object 5. `more` are further entries.
[[nodiscard]] std::string pageObjects(int number, int width, std::string_view text,
                                      std::string_view more = "");

/// An object of a fixture's text.
[[nodiscard]] std::string object(int number, std::string_view value);

/// How often `what` stands in the text.
[[nodiscard]] std::size_t countOf(std::string_view what, std::string_view text);

/// `text` with the first `what` in it replaced. Throws std::invalid_argument where there is none,
/// so that no fixture stays as it was unawares.
[[nodiscard]] std::string replaced(std::string_view text, std::string_view what,
                                   std::string_view with);

/// The paths of the sources of one test and of what they are merged into.
class Bench {
 public:
    /// Writes a source; gives its path.
    [[nodiscard]] std::string add(std::string_view name, std::string_view bytes) const;
    /// The same, from a fixture's text.
    [[nodiscard]] std::string fixture(std::string_view name, std::string_view text) const;

    /// Joins all pages of all sources, in their order, and closes each when its pages are inserted.
    /// Gives the path of the result; nothing where a source cannot be opened or not every page of
    /// it inserted.
    [[nodiscard]] std::optional<std::string> tryMerge(const std::vector<std::string>& sources,
                                                      std::string_view result = "merged.pdf") const;
    /// The same, where that must succeed: throws std::runtime_error otherwise.
    [[nodiscard]] std::string merge(const std::vector<std::string>& sources,
                                    std::string_view result = "merged.pdf") const;
    /// Merges the one document that the fixture's text describes.
    [[nodiscard]] std::string mergeFixture(std::string_view text) const;

    /// The bytes of a file by its path.
    [[nodiscard]] static std::string read(const std::string& path);

    [[nodiscard]] const TemporaryFolder& folder() const { return folder_; }

 private:
    TemporaryFolder folder_;
};

/// Expects that qpdf finds nothing to report in the file and that all readers count `pages` pages.
void expectSound(const std::string& path, int pages);

/// Expects a sound file whose pages are as wide as that, all of them 300 high and upright, and show
/// these texts.
void expectPages(const std::string& path, const std::vector<double>& widths,
                 const std::vector<std::string>& texts);

/// Runs a program that must succeed; gives its standard output. Throws std::runtime_error where it
/// fails.
[[nodiscard]] std::string runOrFail(const std::vector<std::string>& argv);

/// The numbers of the objects that qpdf finds in the file, all of them.
[[nodiscard]] std::vector<std::string> objectsOf(const std::string& path);

/// All that the file's objects say, by qpdf: their texts, one line each.
[[nodiscard]] std::string everyObject(const std::string& path);

}  // namespace quirebind::pdftest
