// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Merges that run out of memory: the source that needed it is refused, and nothing is written.

#include <filesystem>
#include <fstream>
#include <new>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "Tests/QuirebindCore/CoreTestSupport.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Tests/Support/MemoryLimit.h"

namespace quirebind::coretest {
namespace {

using ::testing::ElementsAre;
namespace fs = std::filesystem;

TEST(OutOfMemory, whileASourceIsReadRefusesThatSource) {
    const TemporaryFolder folder;
    const std::vector<URL> sources =
        urls({addPages(folder, "a", 1), addPages(folder, "b", 1), addPages(folder, "c", 1)});
    for (const FileCall kind : {FileCall::open, FileCall::status, FileCall::read}) {
        for (std::size_t which = 1; which <= sources.size(); ++which) {
            FaultyFileSystem files;
            std::size_t opened = 0;
            files.onEachCall([&](FileCall call) {
                if (call == FileCall::open) ++opened;
                if (call == kind && opened == which) throw std::bad_alloc();
            });
            const auto failure = failureOf(
                [&] { PDFMerger::mergeOn(files, sources, URL::file(folder / "out.pdf")); });
            expectFailure(failure, Kind::invalid, sources[which - 1].lastPathComponent());
            EXPECT_EQ(files.openFiles(), 0U);
            EXPECT_THAT(folder.names(), ElementsAre("a.pdf", "b.pdf", "c.pdf"));
        }
    }
}

constexpr rlim_t kMegabyte = rlim_t{1} << 20U;
constexpr rlim_t kBodyMegabytes = 200;

/// A document whose page has a content stream of 200 MB, nearly all of it a hole in the file.
std::string addLarge(const TemporaryFolder& folder, const std::string& name) {
    const std::string mark = "the body";
    const std::string text = test::fixturePDF(R"({{header 1.7}}
{{object 1 0}} << /Type /Catalog /Pages 2 0 R >> endobj
{{object 2 0}} << /Type /Pages /Kids [3 0 R] /Count 1 >> endobj
{{object 3 0}} << /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] /Contents 4 0 R >> endobj
{{entry 4 1 @body 0}}
{{xref}}
trailer << /Size 5 /Root 1 0 R >>
{{label body}}
4 0 obj << /Length )" + std::to_string(kBodyMegabytes * kMegabyte) +
                                              R"( >> stream
the body
endstream endobj
{{startxref}}
%%EOF
)");
    const std::size_t at = text.find(mark);
    folder.write(name, text.substr(0, at));
    fs::resize_file(folder / name, at + kBodyMegabytes * kMegabyte);
    std::ofstream(folder / name, std::ios::binary | std::ios::app) << text.substr(at + mark.size());
    return folder / name;
}

class LittleMemory : public ::testing::TestWithParam<rlim_t> {};

TEST_P(LittleMemory, refusesTheSourceThatIsTooLarge) {
    if (!test::kMemoryLimitsWork)
        GTEST_SKIP() << "sanitizers map more memory than any limit that would matter";
    const TemporaryFolder folder;
    const std::vector<std::string> sources{addPages(folder, "small", 1),
                                           addLarge(folder, "large.pdf")};
    folder.write("out.pdf", "what was there before");
    const int result = inChildProcess([&] {
        test::limitMemory(GetParam() * kMegabyte);
        const auto failure = failureOfMerging(sources, folder / "out.pdf");
        if (!failure) return 1;
        return failure->kind() == Kind::invalid && failure->name() == "large.pdf" ? 0 : 2;
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(folder.read("out.pdf"), "what was there before");
    EXPECT_THAT(folder.names(), ElementsAre("large.pdf", "out.pdf", "small.pdf"));
}

// Too little to open the source, and enough for that but not for its copy.
INSTANTIATE_TEST_SUITE_P(Of, LittleMemory, ::testing::Values(rlim_t{50}, kBodyMegabytes + 100));

TEST(LargeSource, isMergedWhereThereIsMemory) {
    const TemporaryFolder folder;
    merge({addLarge(folder, "large.pdf")}, folder / "out.pdf");
    EXPECT_EQ(test::pageCounts(folder / "out.pdf").qpdf, 1);
    EXPECT_GT(fs::file_size(folder / "out.pdf"), kBodyMegabytes * kMegabyte);
}

}  // namespace
}  // namespace quirebind::coretest
