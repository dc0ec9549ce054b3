// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <chrono>
#include <filesystem>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "Quirebind/Preview/HelperProcess.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind {
namespace {

constexpr int kSocket = 3;

/// All that the process says until it ends.
std::string wordsOf(HelperProcess& process) {
    std::string words;
    std::vector<std::byte> part(4096);
    for (;;) {
        const auto received = process.receive(part);
        if (!received) return words;
        for (const std::byte byte : std::span(part).first(*received))
            words += static_cast<char>(byte);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

// A program that also had our end of the socket would never learn that we are gone.
TEST(HelperProcess, hasNoFileOfOursButItsSocket) {
    if (!std::filesystem::exists("/proc/self/fd")) GTEST_SKIP() << "only /proc lists open files";
    const TemporaryFolder folder;
    folder.write("helper", "#!/bin/sh\necho /proc/$$/fd/* >&3\n");
    std::filesystem::permissions(folder / "helper", std::filesystem::perms::owner_all);
    const int careless = ::dup(STDERR_FILENO);  // stays open in programs that are started
    ASSERT_GT(careless, kSocket);
    auto process = HelperProcess::start(folder / "helper", kSocket);
    ::close(careless);
    ASSERT_TRUE(process);
    const std::string words = wordsOf(*process);
    std::string open;  // the shell has its script open, too, with a number from 10 on
    for (std::size_t at = words.find("/fd/"); at != std::string::npos;
         at = words.find("/fd/", at + 1)) {
        const std::string number = words.substr(at + 4, words.find_first_of(" \n", at) - at - 4);
        if (number.size() == 1) open += number;
    }
    EXPECT_EQ(open, "01234") << words;  // the last is the folder that it lists
}

}  // namespace
}  // namespace quirebind
