// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Platform/PDF/DocumentTestSupport.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/PDFDocument.h"
#include "Tests/Support/Oracle.h"
#include "Tests/Support/Process.h"

namespace quirebind::pdftest {

namespace {

bool appendAllPages(PDFDocument& output, const std::string& path) {
    const auto source = PDFDocument::open(URL::file(path));
    if (!source) return false;
    for (std::size_t i = 0; i < source->pageCount(); ++i) {
        const auto page = source->pageAtIndex(i);
        if (!page || !output.insertPage(*page, output.pageCount())) return false;
    }
    return true;
}

}  // namespace

std::string onePageWith(std::string_view objects) {
    return document(std::string(kOnePage) + std::string(objects));
}

std::string document(std::string_view objects) {
    return "{{header 1.7}}\n" + std::string(objects) + "\n{{xref}}" + std::string(kTrailer);
}

std::string pageObjects(int number, int width, std::string_view text, std::string_view more) {
    std::ostringstream out;
    out << "{{object " << number << " 0}}\n"
        << "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " << width << " 300] /Contents "
        << number + 1 << " 0 R /Resources << /Font << /F1 5 0 R >> >> " << more << " >>\n"
        << "endobj\n"
        << "{{object " << number + 1 << " 0}}\n"
        << "<< /Length {{length}} >>\n{{stream}}\nBT /F1 12 Tf 20 150 Td (" << text
        << ") Tj ET\n{{endstream}}\nendobj\n";
    return out.str();
}

std::string object(int number, std::string_view value) {
    return "{{object " + std::to_string(number) + " 0}}\n" + std::string(value) + "\nendobj\n";
}

std::size_t countOf(std::string_view what, std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string_view::npos;
         at = text.find(what, at + what.size()))
        ++count;
    return count;
}

std::string replaced(std::string_view text, std::string_view what, std::string_view with) {
    const std::size_t at = text.find(what);
    if (at == std::string_view::npos) {
        throw std::invalid_argument("nothing to replace: " + std::string(what));
    }
    return std::string(text).replace(at, what.size(), with);
}

std::string Bench::add(std::string_view name, std::string_view bytes) const {
    folder_.write(name, bytes);
    return folder_ / name;
}

std::string Bench::fixture(std::string_view name, std::string_view text) const {
    return add(name, test::fixturePDF(text));
}

std::optional<std::string> Bench::tryMerge(const std::vector<std::string>& sources,
                                           std::string_view result) const {
    PDFDocument output;
    for (const std::string& source : sources) {
        if (!appendAllPages(output, source)) return std::nullopt;
    }
    const auto data = std::move(output).dataRepresentation();
    if (!data) return std::nullopt;
    return add(result, data->text());
}

std::string Bench::merge(const std::vector<std::string>& sources, std::string_view result) const {
    const auto merged = tryMerge(sources, result);
    if (!merged) throw std::runtime_error("the documents could not be merged");
    return *merged;
}

std::string Bench::mergeFixture(std::string_view text) const {
    return merge({fixture("source.pdf", text)});
}

std::string Bench::read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

void expectSound(const std::string& path, int pages) {
    const test::CheckResult check = test::qpdfCheck(path);
    EXPECT_EQ(check.exitCode, 0) << check.text;
    EXPECT_THAT(check.text, Not(::testing::HasSubstr("WARNING")));
    const test::PageCounts counts = test::pageCounts(path);
    EXPECT_TRUE(counts.allAre(pages)) << ::testing::PrintToString(counts);
}

void expectPages(const std::string& path, const std::vector<double>& widths,
                 const std::vector<std::string>& texts) {
    expectSound(path, static_cast<int>(widths.size()));
    std::vector<test::PageView> pages;
    for (const double width : widths) {
        const test::PageBox box{.right = width, .top = 300};
        pages.push_back({.mediaBox = box, .cropBox = box});
    }
    EXPECT_THAT(test::pagesByPoppler(path), ::testing::ElementsAreArray(pages));
    EXPECT_THAT(test::pagesByMuPDF(path), ::testing::ElementsAreArray(pages));
    EXPECT_THAT(test::pageTexts(path), ::testing::ElementsAreArray(texts));
}

std::string runOrFail(const std::vector<std::string>& argv) {
    const test::RunResult result = test::run(argv);
    if (!result.succeeded()) throw std::runtime_error(argv.front() + " failed: " + result.err);
    return result.out;
}

std::vector<std::string> objectsOf(const std::string& path) {
    // "3/0, uncompressed; offset = 15" and "4/0, compressed; stream = 2, index = 0"
    std::istringstream lines(runOrFail({"qpdf", "--show-xref", path}));
    std::vector<std::string> numbers;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t slash = line.find('/');
        if (slash != std::string::npos) numbers.push_back(line.substr(0, slash));
    }
    return numbers;
}

std::string everyObject(const std::string& path) {
    std::string all;
    for (const std::string& number : objectsOf(path)) all += test::objectText(path, number) + '\n';
    return all;
}

}  // namespace quirebind::pdftest
