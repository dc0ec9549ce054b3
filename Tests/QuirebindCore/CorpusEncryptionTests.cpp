// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Real files that are encrypted: with a password, and with none.

#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Support/Corpus.h"
#include "Tests/Support/Oracle.h"
#include "Tests/Support/Process.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::coretest {
namespace {

using std::filesystem::path;
using ::testing::HasSubstr;

constexpr int kNotEncrypted = 2;
constexpr int kWarnings = 3;

test::RunResult merge(const path& file, const std::string& destination) {
    return test::run({QUIREBIND_MERGE_PDFS, destination, file.string()});
}

/// mutool draws a mark of its own over a field whose signature is gone, as every merge leaves it.
bool isSigned(const std::string& file) {
    return test::fileJSON(file).find(R"("/FT": "/Sig")") != std::string::npos;
}

TEST(CorpusEncryption, withoutAPasswordArrivesInClear) {
    if (!test::corpusFolder()) GTEST_SKIP() << "QUIREBIND_CORPUS does not name a corpus";
    for (const path& file : test::corpusList("encrypted")) {
        const TemporaryFolder folder;
        const std::string merged = folder / "merged.pdf";
        const auto result = merge(file, merged);
        EXPECT_EQ(result.exitCode, 0) << file << '\n' << result.err;
        if (result.exitCode != 0) continue;
        EXPECT_EQ(test::run({"qpdf", "--is-encrypted", merged}).exitCode, kNotEncrypted) << file;
        EXPECT_EQ(test::qpdfCheck(merged).exitCode, 0) << file;
        // The others do not try the empty password as an owner's, so qpdf decrypts for them.
        const std::string byQPDF = folder / "decrypted.pdf";
        const int decrypted = test::run({"qpdf", "--decrypt", file.string(), byQPDF}).exitCode;
        EXPECT_TRUE(decrypted == 0 || decrypted == kWarnings) << file;
        EXPECT_EQ(test::pageTexts(merged), test::pageTexts(byQPDF)) << file;
        const auto render = isSigned(byQPDF) ? test::renderingsByPoppler : test::renderingsByMuPDF;
        EXPECT_EQ(render(merged), render(byQPDF)) << file;
    }
}

TEST(CorpusEncryption, withAPasswordIsLocked) {
    if (!test::corpusFolder()) GTEST_SKIP() << "QUIREBIND_CORPUS does not name a corpus";
    for (const path& file : test::corpusList("locked")) {
        const TemporaryFolder folder;
        const auto result = merge(file, folder / "merged.pdf");
        EXPECT_EQ(result.exitCode, 1) << file;
        EXPECT_TRUE(folder.names().empty()) << file;
        EXPECT_THAT(result.err, HasSubstr(" is locked.")) << file;
    }
}

}  // namespace
}  // namespace quirebind::coretest
