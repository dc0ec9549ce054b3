// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// A large merge that is killed at any moment: the destination is the old file or the new one.

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Tests/QuirebindCore/CoreTestSupport.h"

namespace quirebind::coretest {
namespace {

using std::chrono::microseconds;

constexpr int kKills = 100;
constexpr std::string_view kOld = "what was there before";

/// Writes a document whose one page has a content stream of 2 MB; gives its path.
std::string addLarge(const TemporaryFolder& folder) {
    constexpr std::size_t kOperators = std::size_t{1} << 18U;
    std::string content;
    for (std::size_t i = 0; i < kOperators; ++i) content += "0 0 m n\n";
    folder.write("large.pdf", test::fixturePDF(R"({{header 1.7}}
{{object 1 0}} << /Type /Catalog /Pages 2 0 R >> endobj
{{object 2 0}} << /Type /Pages /Kids [3 0 R] /Count 1 >> endobj
{{object 3 0}} << /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] /Contents 4 0 R >> endobj
{{object 4 0}} << /Length {{length}} >>
{{stream}}
)" + content + R"(
{{endstream}}
endobj
{{xref}}
trailer << /Size 5 /Root 1 0 R >>
{{startxref}}
%%EOF
)"));
    return folder / "large.pdf";
}

/// Merges in a process of its own, which is killed after that time. True where it was finished.
bool mergeAndKill(const std::vector<std::string>& sources, const std::string& destination,
                  microseconds time) {
    const pid_t child = ::fork();
    if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (child == 0) {
        int result = 1;
        try {
            merge(sources, destination);
            result = 0;
        } catch (...) {
            result = 2;
        }
        ::_exit(result);
    }
    std::this_thread::sleep_for(time);
    ::kill(child, SIGKILL);
    int status = 0;
    if (::waitpid(child, &status, 0) != child)
        throw std::system_error(errno, std::generic_category(), "waitpid");
    if (WIFEXITED(status)) {
        EXPECT_EQ(WEXITSTATUS(status), 0);
    }
    return WIFEXITED(status);
}

/// How long the merge takes when nobody kills it.
microseconds timeOfMerging(const std::vector<std::string>& sources,
                           const std::string& destination) {
    const auto begin = std::chrono::steady_clock::now();
    merge(sources, destination);
    return std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now() - begin);
}

TEST(KilledMerge, leavesTheOldFileOrTheNewOne) {
    const TemporaryFolder folder;
    const std::string large = addLarge(folder);
    const std::string source = folder.read("large.pdf");
    const auto modified = std::filesystem::last_write_time(large);
    const std::vector<std::string> sources(4, large);
    const std::string destination = folder / "out.pdf";
    microseconds whole = timeOfMerging(sources, destination);
    // The first one reads from a disk that may be slow; the next ones are what is killed.
    for (int i = 0; i < 3; ++i) whole = std::min(whole, timeOfMerging(sources, destination));
    const std::string merged = folder.read("out.pdf");

    std::minstd_rand random(20260101);
    std::uniform_int_distribution<microseconds::rep> moment(0, whole.count());
    int killed = 0;
    for (int i = 0; i < kKills; ++i) {
        folder.write("out.pdf", kOld);
        const bool finished = mergeAndKill(sources, destination, microseconds(moment(random)));
        killed += finished ? 0 : 1;
        const std::string now = folder.read("out.pdf");
        ASSERT_TRUE(now == merged || (now == kOld && !finished)) << now.size() << " bytes";
        for (const std::string& name : folder.names()) {
            if (name == "large.pdf" || name == "out.pdf") continue;
            // Killed in the instant in which the new file has a name, but not yet the right one.
            ASSERT_EQ(folder.read(name), merged) << name;
            std::filesystem::remove(folder / name);
        }
    }
    EXPECT_GT(killed, 0) << "every merge was over before it was killed";
    EXPECT_EQ(folder.read("large.pdf"), source);
    EXPECT_EQ(std::filesystem::last_write_time(large), modified);
}

}  // namespace
}  // namespace quirebind::coretest
