// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Support/Process.h"

namespace quirebind::test {
namespace {

using ::testing::HasSubstr;
using namespace std::chrono_literals;

TEST(Run, givesExitCodeAndBothOutputsApart) {
    const RunResult result = run({"sh", "-c", "echo one; echo two >&2; exit 7"});
    EXPECT_EQ(result.exitCode, 7);
    EXPECT_EQ(result.out, "one\n");
    EXPECT_EQ(result.err, "two\n");
    EXPECT_EQ(result.signal, 0);
    EXPECT_FALSE(result.timedOut);
    EXPECT_FALSE(result.succeeded());
    EXPECT_TRUE(run({"true"}).succeeded());
}

TEST(Run, hasNoShellBetweenWordsAndProgram) {
    EXPECT_EQ(run({"printf", "%s,", "a b", "$HOME", "", "*"}).out, "a b,$HOME,,*,");
}

TEST(Run, givesAnEmptyInput) {
    EXPECT_EQ(run({"cat"}).out, "");
}

TEST(Run, takesMoreOutputThanAPipeHolds) {
    const RunResult result = run({"sh", "-c", "head -c 3000000 /dev/zero | tee /dev/stderr"});
    EXPECT_EQ(result.out.size(), 3000000U);
    EXPECT_EQ(result.err.size(), 3000000U);
}

TEST(Run, saysWhichSignalEndedTheProgram) {
    const RunResult result = run({"sh", "-c", "kill -TERM $$"});
    EXPECT_EQ(result.signal, SIGTERM);
    EXPECT_EQ(result.exitCode, -1);
    EXPECT_FALSE(result.succeeded());
}

TEST(Run, endsAProgramWhoseTimeIsOver) {
    const RunResult result = run({"sh", "-c", "echo begun; sleep 1000"}, 300ms);
    EXPECT_TRUE(result.timedOut);
    EXPECT_EQ(result.signal, SIGKILL);
    EXPECT_EQ(result.out, "begun\n");
}

TEST(Run, doesNotWaitForWhatTheProgramLeavesBehind) {
    const RunResult result = run({"sh", "-c", "sleep 1000 & echo done $!"}, 100s);
    EXPECT_TRUE(result.succeeded());
    EXPECT_FALSE(result.timedOut);
    ASSERT_THAT(result.out, HasSubstr("done "));
    kill(std::stoi(result.out.substr(5)), SIGKILL);
}

TEST(Run, namesAMissingProgram) {
    try {
        static_cast<void>(run({"quirebind-no-such-program", "x"}));
        FAIL() << "it was run";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("need the program 'quirebind-no-such-program'"));
    }
    EXPECT_THROW(static_cast<void>(run({})), std::invalid_argument);
}

TEST(Run, measuresMemoryAndTime) {
    // dd holds one block of this size in memory.
    const RunResult big = run({"dd", "if=/dev/zero", "of=/dev/null", "bs=400M", "count=1"});
    EXPECT_TRUE(big.succeeded()) << big.err;
    EXPECT_GT(big.peakMemoryKB, 400 * 1024);
    EXPECT_LT(big.peakMemoryKB, 500 * 1024);
    EXPECT_GT(big.cpuSeconds, 0);
}

}  // namespace
}  // namespace quirebind::test
