// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Support/Oracle.h"

#include <array>
#include <chrono>
#include <cmath>
#include <functional>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quirebind::test {

namespace {

using Path = std::filesystem::path;

/// What qpdf exits with when it has read a file but warned of it.
constexpr int kQPDFWarnings = 3;

RunResult runInTime(const std::vector<std::string>& argv) {
    // One real file keeps qpdf busy for most of a minute.
    RunResult result = run(argv, std::chrono::minutes(4));
    if (result.timedOut) throw std::runtime_error(argv.front() + " did not end in time");
    return result;
}

RunResult runOrThrow(const std::vector<std::string>& argv) {
    RunResult result = runInTime(argv);
    const bool warned = argv.front() == "qpdf" && result.exitCode == kQPDFWarnings;
    if (!result.succeeded() && !warned) {
        throw std::runtime_error(argv.front() + " failed with " + std::to_string(result.exitCode) +
                                 ": " + result.err);
    }
    return result;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

std::string trimmedEnd(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of(" \t\r\n\f") + 1));
}

/// The number behind `key` at the beginning of a line.
std::optional<int> numberAfter(const std::string& text, std::string_view key) {
    for (const std::string& line : linesOf(text)) {
        if (line.starts_with(key)) return std::stoi(line.substr(key.size()));
    }
    return std::nullopt;
}

bool isNear(const PageBox& one, const PageBox& other) {
    constexpr double kTolerance = 0.02;
    return std::abs(one.left - other.left) <= kTolerance &&
           std::abs(one.bottom - other.bottom) <= kTolerance &&
           std::abs(one.right - other.right) <= kTolerance &&
           std::abs(one.top - other.top) <= kTolerance;
}

std::istream& operator>>(std::istream& in, PageBox& box) {
    return in >> box.left >> box.bottom >> box.right >> box.top;
}

std::ostream& operator<<(std::ostream& out, const PageBox& box) {
    return out << '[' << box.left << ' ' << box.bottom << ' ' << box.right << ' ' << box.top << ']';
}

/// Cuts a sequence of binary PPM pictures, "P6 width height 255" and the samples, into digests.
std::vector<std::string> digestsOfPPM(const std::string& pictures) {
    constexpr int kDepth = 255;
    std::vector<std::string> digests;
    std::size_t at = 0;
    while (at < pictures.size()) {
        std::istringstream head(pictures.substr(at, 64));
        std::string magic;
        std::size_t width = 0;
        std::size_t height = 0;
        int depth = 0;
        head >> magic >> width >> height >> depth;
        if (!head || magic != "P6" || depth != kDepth) {
            throw std::runtime_error("pdftoppm wrote something else than pictures");
        }
        const std::size_t size = static_cast<std::size_t>(head.tellg()) + 1 + width * height * 3;
        if (size > pictures.size() - at) throw std::runtime_error("pdftoppm cut a picture short");
        const auto digest =
            std::hash<std::string_view>{}(std::string_view(pictures).substr(at, size));
        digests.push_back(std::to_string(width) + "x" + std::to_string(height) + ":" +
                          std::to_string(digest));
        at += size;
    }
    return digests;
}

}  // namespace

CheckResult qpdfCheck(const Path& file) {
    const RunResult result = runInTime({"qpdf", "--check", file.string()});
    return {.exitCode = result.exitCode, .text = result.out + result.err};
}

bool PageCounts::allAre(int count) const {
    return qpdf == count && mutool == count && pdfinfo == count;
}

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds it by this name.
void PrintTo(const PageCounts& counts, std::ostream* out) {
    const auto print = [out](std::string_view reader, const std::optional<int>& count) {
        *out << reader << (count ? std::to_string(*count) : "unreadable");
    };
    print("qpdf: ", counts.qpdf);
    print(", mutool: ", counts.mutool);
    print(", pdfinfo: ", counts.pdfinfo);
}

PageCounts pageCounts(const Path& file) {
    PageCounts counts;
    const RunResult byQPDF = runInTime({"qpdf", "--show-npages", file.string()});
    if (byQPDF.succeeded() || byQPDF.exitCode == kQPDFWarnings) {
        counts.qpdf = numberAfter(byQPDF.out, "");
    }
    const RunResult byMuPDF = runInTime({"mutool", "info", file.string()});
    if (byMuPDF.succeeded()) counts.mutool = numberAfter(byMuPDF.out, "Pages:");
    const RunResult byPoppler = runInTime({"pdfinfo", file.string()});
    if (byPoppler.succeeded()) counts.pdfinfo = numberAfter(byPoppler.out, "Pages:");
    return counts;
}

bool operator==(const PageView& one, const PageView& other) {
    return one.rotate == other.rotate && isNear(one.mediaBox, other.mediaBox) &&
           isNear(one.cropBox, other.cropBox);
}

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds it by this name.
void PrintTo(const PageView& view, std::ostream* out) {
    *out << "media " << view.mediaBox << " crop " << view.cropBox << " rotate " << view.rotate;
}

std::vector<PageView> pagesByPoppler(const Path& file) {
    constexpr const char* kAllPages = "1000000";
    const RunResult result =
        runOrThrow({"pdfinfo", "-box", "-f", "1", "-l", kAllPages, file.string()});
    std::vector<PageView> pages;
    // "Page    1 rot:   0", and likewise for the boxes.
    for (const std::string& line : linesOf(result.out)) {
        std::istringstream in(line);
        std::string word;
        std::size_t number = 0;
        std::string key;
        if (!(in >> word >> number >> key) || word != "Page" || number == 0) continue;
        if (number > pages.size()) pages.resize(number);
        PageView& page = pages[number - 1];
        if (key == "rot:") in >> page.rotate;
        if (key == "MediaBox:") in >> page.mediaBox;
        if (key == "CropBox:") in >> page.cropBox;
        if (!in) throw std::runtime_error("pdfinfo wrote an unknown line: " + line);
    }
    return pages;
}

std::vector<PageView> pagesByMuPDF(const Path& file) {
    const std::string script = std::string(QUIREBIND_TEST_SUPPORT_FOLDER) + "/PageBoxes.js";
    const RunResult result = runOrThrow({"mutool", "run", script, file.string()});
    std::vector<PageView> pages;
    for (const std::string& line : linesOf(result.out)) {
        std::istringstream in(line);
        std::array<std::string, 3> words;
        PageView page;
        in >> words[0] >> page.mediaBox >> words[1] >> page.cropBox >> words[2] >> page.rotate;
        if (!in) throw std::runtime_error("mutool wrote an unknown line: " + line);
        pages.push_back(page);
    }
    return pages;
}

std::vector<std::string> pageTexts(const Path& file) {
    const RunResult result = runOrThrow({"pdftotext", "-enc", "UTF-8", file.string(), "-"});
    std::vector<std::string> texts;
    std::string_view rest = result.out;
    // A form feed ends each page.
    for (auto end = rest.find('\f'); end != std::string_view::npos; end = rest.find('\f')) {
        texts.push_back(trimmedEnd(rest.substr(0, end)));
        rest.remove_prefix(end + 1);
    }
    return texts;
}

std::vector<std::string> renderingsByMuPDF(const Path& file) {
    const RunResult result = runOrThrow({"mutool", "draw", "-r", "30", "-s", "5", file.string()});
    std::vector<std::string> digests;
    // "page <file> <number> <digest>", on either output.
    for (const std::string& line : linesOf(result.out + result.err)) {
        if (line.starts_with("page ")) digests.push_back(line.substr(line.rfind(' ') + 1));
    }
    return digests;
}

std::vector<std::string> renderingsByPoppler(const Path& file) {
    return digestsOfPPM(runOrThrow({"pdftoppm", "-r", "30", file.string()}).out);
}

std::string objectText(const Path& file, const std::string& object) {
    return trimmedEnd(runOrThrow({"qpdf", "--show-object=" + object, file.string()}).out);
}

std::vector<std::string> pageNumbers(const Path& file) {
    const RunResult result = runOrThrow({"qpdf", "--show-pages", file.string()});
    std::vector<std::string> numbers;
    // "page 1: 4 0 R", followed by lines about its content.
    for (const std::string& line : linesOf(result.out)) {
        if (!line.starts_with("page ")) continue;
        std::istringstream in(line.substr(line.find(':') + 1));
        std::string number;
        in >> number;
        numbers.push_back(number);
    }
    return numbers;
}

std::vector<std::string> pageDictionaries(const Path& file) {
    std::vector<std::string> dictionaries;
    for (const std::string& number : pageNumbers(file))
        dictionaries.push_back(objectText(file, number));
    return dictionaries;
}

std::string streamData(const Path& file, int object) {
    return runOrThrow({"qpdf", "--show-object=" + std::to_string(object), "--filtered-stream-data",
                       file.string()})
        .out;
}

std::string fileJSON(const Path& file) {
    return runOrThrow({"qpdf", "--json=2", file.string()}).out;
}

}  // namespace quirebind::test
