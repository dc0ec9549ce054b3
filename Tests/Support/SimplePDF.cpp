// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cctype>
#include <sstream>
#include <stdexcept>

#include "Tests/Support/FixturePDF.h"

namespace quirebind::test {

namespace {

constexpr int kCatalog = 1;
constexpr int kPages = 2;
constexpr int kFont = 3;
constexpr int kFirstPage = 4;  ///< Page i is object 2 + 2 i, its content the one after it.

int pageObject(int index) {
    return kFirstPage + 2 * index;
}

/// `{{object N 0}}` with `endobj`, or a member of an object stream.
void writeObject(std::ostream& out, int number, const std::string& body, bool compressed) {
    out << "{{object " << number << (compressed ? "}}\n" : " 0}}\n") << body << '\n';
    if (!compressed) out << "endobj\n";
}

void writeDictionaries(std::ostream& out, int pages, const SimplePDFOptions& options) {
    std::ostringstream kids;
    for (int i = 0; i < pages; ++i) kids << pageObject(i) << " 0 R ";
    const bool compressed = options.objectStreams;
    writeObject(out, kCatalog, "<< /Type /Catalog /Pages 2 0 R >>", compressed);
    writeObject(out, kPages,
                "<< /Type /Pages /Count " + std::to_string(pages) + " /Kids [ " + kids.str() +
                    "] /Resources << /Font << /F1 3 0 R >> >> >>",
                compressed);
    writeObject(out, kFont,
                "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica "
                "/Encoding /WinAnsiEncoding >>",
                compressed);
    for (int i = 0; i < pages; ++i) {
        const int more = options.distinctSizes ? 10 * (i + 1) : 0;
        std::ostringstream page;
        page << "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " << 200 + more << ' ' << 300 + more
             << "] /Contents " << pageObject(i) + 1 << " 0 R >>";
        writeObject(out, pageObject(i), page.str(), compressed);
    }
}

void writeContents(std::ostream& out, int pages, const SimplePDFOptions& options) {
    for (int i = 0; i < pages; ++i) {
        out << "{{object " << pageObject(i) + 1 << " 0}}\n"
            << "<< /Length {{length}} >>\n"
            << "{{stream}}\n"
            << "BT /F1 24 Tf 20 150 Td (" << options.label << '-' << i + 1 << ") Tj ET\n"
            << "{{endstream}}\n"
            << "endobj\n";
    }
}

}  // namespace

std::string simplePDF(int pages, const SimplePDFOptions& options) {
    const auto isPlain = [](unsigned char c) {
        return std::isalnum(c) != 0 || c == ' ' || c == '-';
    };
    if (!std::ranges::all_of(options.label, isPlain)) {
        throw std::invalid_argument("a label has letters, digits, blanks and hyphens");
    }
    if (pages < 0) throw std::invalid_argument("a document cannot have fewer than no pages");
    std::ostringstream out;
    out << "{{header " << options.version << "}}\n";
    writeContents(out, pages, options);
    if (!options.objectStreams) {
        writeDictionaries(out, pages, options);
        out << "{{xref}}\ntrailer\n<< /Size {{size}} /Root 1 0 R >>\n";
    } else {
        out << "{{objectstream " << pageObject(pages) << " 0 filter=/FlateDecode}}\n";
        writeDictionaries(out, pages, options);
        out << "{{endobjectstream}}\n"
            << "{{xrefstream " << pageObject(pages) + 1 << " 0 filter=/FlateDecode predictor=12}}\n"
            << "/Root 1 0 R\n{{endxrefstream}}\n";
    }
    out << "{{startxref}}\n%%EOF\n";
    return fixturePDF(out.str());
}

}  // namespace quirebind::test
