// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Real files, in as many parts as make a test short. What other readers agree on is asked of ours.

#include <algorithm>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include "Tests/Support/Corpus.h"
#include "Tests/Support/Oracle.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::coretest {
namespace {

using std::filesystem::path;

constexpr std::size_t kParts = 24;
constexpr int kQPDFErrors = 2;

std::set<path> listed(const std::string& name) {
    const auto files = test::corpusList(name);
    return {files.begin(), files.end()};
}

/// How many pages a reader counts. Nothing if it fails, takes too long or says something that is no
/// number of pages: real files lead readers to all of that.
std::optional<int> countBy(const std::vector<std::string>& argv, std::string_view label) {
    const auto result = test::run(argv, std::chrono::seconds(20));
    std::string_view text(result.out);
    while (!text.starts_with(label)) {
        const std::size_t next = text.find('\n');
        if (next == std::string_view::npos) return std::nullopt;
        text.remove_prefix(next + 1);
    }
    text.remove_prefix(label.size());
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    int count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc() || count < 0) return std::nullopt;
    return count;
}

/// The count that at least two of the three readers agree on.
std::optional<int> majority(const std::string& file) {
    const auto byMuPDF = countBy({"mutool", "info", file}, "Pages:");
    const auto byPoppler = countBy({"pdfinfo", file}, "Pages:");
    if (byMuPDF && byMuPDF == byPoppler) return byMuPDF;
    const auto byQPDF = countBy({"qpdf", "--show-npages", file}, "");
    return byQPDF == byMuPDF || byQPDF == byPoppler ? byQPDF : std::nullopt;
}

class CorpusPart : public ::testing::TestWithParam<std::size_t> {
 protected:
    /// Merges the file by itself. True where it was merged; a refusal is in order unless the file
    /// is sound.
    static bool merges(const path& file, const std::string& destination, bool sound) {
        const auto result =
            test::run({QUIREBIND_MERGE_PDFS, destination, file.string()}, std::chrono::seconds(30));
        EXPECT_FALSE(result.timedOut) << file;
        EXPECT_EQ(result.signal, 0) << file;
        EXPECT_TRUE(result.exitCode == 0 || result.exitCode == 1) << file << '\n' << result.err;
        if (sound) {
            EXPECT_EQ(result.exitCode, 0) << file << '\n' << result.err;
        }
        EXPECT_EQ(std::filesystem::exists(destination), result.exitCode == 0) << file;
        return result.exitCode == 0;
    }

    /// `disputed`: readers believe a /Count that promises more pages than they can show.
    static void expectNothingLost(const path& file, const std::string& merged, bool disputed) {
        const auto pages = majority(merged);
        EXPECT_TRUE(pages) << file;
        const auto expected = disputed ? std::nullopt : majority(file.string());
        if (expected) {
            EXPECT_GE(pages.value_or(0), *expected) << file;
        }
        const test::CheckResult check = test::qpdfCheck(merged);
        if (check.exitCode == kQPDFErrors) {
            EXPECT_EQ(test::qpdfCheck(file).exitCode, kQPDFErrors) << file << '\n' << check.text;
        }
    }
};

TEST_P(CorpusPart, isMergedOrRefused) {
    if (!test::corpusFolder()) GTEST_SKIP() << "QUIREBIND_CORPUS does not name a corpus";
    const std::set<path> full = listed("full");
    const std::set<path> damaged = listed("damaged");
    const std::set<path> disputed = listed("disputed");
    const auto all = test::allCorpusFiles();
    const TemporaryFolder folder;
    const std::string merged = folder / "merged.pdf";
    for (std::size_t i = GetParam(); i < all.size(); i += kParts) {
        const path& file = all[i];
        const bool sound = full.contains(file) && !damaged.contains(file);
        if (merges(file, merged, sound)) expectNothingLost(file, merged, disputed.contains(file));
        std::filesystem::remove(merged);
    }
}

// What is refused has lost something that a page needs, or so much that no reader knows its pages.
TEST(DamagedCorpus, isMergedNineTimesInTen) {
    if (!test::corpusFolder()) GTEST_SKIP() << "QUIREBIND_CORPUS does not name a corpus";
    const std::set<path> encrypted = listed("encrypted");
    const TemporaryFolder folder;
    const std::string merged = folder / "merged.pdf";
    std::size_t files = 0;
    std::vector<path> refused;
    for (const path& file : test::corpusList("damaged")) {
        if (encrypted.contains(file)) continue;
        ++files;
        const auto result =
            test::run({QUIREBIND_MERGE_PDFS, merged, file.string()}, std::chrono::seconds(30));
        EXPECT_FALSE(result.timedOut) << file;
        if (result.exitCode != 0) refused.push_back(file);
    }
    EXPECT_LE(refused.size() * 10, files) << ::testing::PrintToString(refused);
}

INSTANTIATE_TEST_SUITE_P(Of24, CorpusPart, ::testing::Range(std::size_t{0}, kParts));

}  // namespace
}  // namespace quirebind::coretest
