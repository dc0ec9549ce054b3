// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "Tests/Support/Process.h"

/// What other readers of PDF see in a file. They run as programs of their own: qpdf, mutool, and
/// pdfinfo, pdftotext and pdftoppm. Every function throws std::runtime_error, and so fails the
/// test, if a program is missing or takes more than four minutes; and, where nothing else is said,
/// if it reports that it cannot read the file.
namespace quirebind::test {

struct CheckResult {
    int exitCode = -1;  ///< 0: nothing to report; 3: warnings; 2: errors.
    std::string text;   ///< Everything that was said.
};

/// `qpdf --check`. Does not throw for a bad file.
[[nodiscard]] CheckResult qpdfCheck(const std::filesystem::path& file);

/// How many pages each reader counts; nothing if it cannot read the file.
struct PageCounts {
    std::optional<int> qpdf;
    std::optional<int> mutool;
    std::optional<int> pdfinfo;

    /// Whether all three count that many.
    [[nodiscard]] bool allAre(int count) const;
    friend bool operator==(const PageCounts&, const PageCounts&) = default;
};
void PrintTo(const PageCounts& counts, std::ostream* out);  // NOLINT(readability-identifier-naming)

[[nodiscard]] PageCounts pageCounts(const std::filesystem::path& file);

/// A page's box in units of user space, normalized.
struct PageBox {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
};

/// A page as a reader sees it, with what it inherits. Two are equal if they rotate alike and no
/// side differs by more than 0.02: readers round differently, and one prints two decimals only.
struct PageView {
    PageBox mediaBox;
    PageBox cropBox;
    int rotate = 0;  ///< Degrees as a reader says them.

    friend bool operator==(const PageView& one, const PageView& other);
};
void PrintTo(const PageView& view, std::ostream* out);  // NOLINT(readability-identifier-naming)

/// By pdfinfo, which cuts the crop box to the media box and brings /Rotate into 0 ... 270.
[[nodiscard]] std::vector<PageView> pagesByPoppler(const std::filesystem::path& file);

/// By mutool: the entries as they stand in the page or above it.
[[nodiscard]] std::vector<PageView> pagesByMuPDF(const std::filesystem::path& file);

/// Each page's text by pdftotext, without blanks and line ends at its end.
[[nodiscard]] std::vector<std::string> pageTexts(const std::filesystem::path& file);

/// A digest of each page's picture at 30 dots per inch, for comparing a page with the same page in
/// another file. Digests of the two readers cannot be compared with each other.
[[nodiscard]] std::vector<std::string> renderingsByMuPDF(const std::filesystem::path& file);
[[nodiscard]] std::vector<std::string> renderingsByPoppler(const std::filesystem::path& file);

/// qpdf's text of an object, in one line with the keys of dictionaries sorted: "3", "3,1" (with the
/// generation), or "trailer". For a stream, its dictionary.
[[nodiscard]] std::string objectText(const std::filesystem::path& file, const std::string& object);

/// The numbers of the page objects in the order of the pages, by qpdf.
[[nodiscard]] std::vector<std::string> pageNumbers(const std::filesystem::path& file);

/// qpdf's text of each page's dictionary, in the order of the pages.
[[nodiscard]] std::vector<std::string> pageDictionaries(const std::filesystem::path& file);

/// The decoded data of a stream by qpdf.
[[nodiscard]] std::string streamData(const std::filesystem::path& file, int object);

/// The whole file by `qpdf --json=2`: objects, outlines, pages with their labels, form fields.
[[nodiscard]] std::string fileJSON(const std::filesystem::path& file);

}  // namespace quirebind::test
