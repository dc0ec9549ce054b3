// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Quirebind/Renderer/Confinement.h"
#include "Tests/Support/TemporaryFolder.h"

// Each test confines a child process and has it try something there.

namespace quirebind {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
constexpr bool kSanitized = false;
#endif

class Confinement : public testing::Test {
 protected:
    void SetUp() override {
        if (kSanitized) GTEST_SKIP() << "a sanitizer's own run-time would be confined, too";
    }

    /// Whether `attempt`, which must not return before it has failed or succeeded, succeeds in a
    /// confined process.
    [[nodiscard]] static bool succeeds(const std::function<bool()>& attempt) {
        const pid_t child = ::fork();
        if (child == 0) {
            confine();
            ::_exit(attempt() ? 0 : 1);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    /// The same without confinement: that the attempt itself is sound.
    [[nodiscard]] static bool succeedsOutside(const std::function<bool()>& attempt) {
        const pid_t child = ::fork();
        if (child == 0) ::_exit(attempt() ? 0 : 1);
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
};

bool canOpen(const std::string& path, int flags) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): so is the call
    const int file = ::open(path.c_str(), flags | O_CLOEXEC, 0600);
    if (file >= 0) ::close(file);
    return file >= 0;
}

TEST_F(Confinement, LeavesNoNetwork) {
    for (const int family : {AF_INET, AF_INET6, AF_UNIX}) {
        const auto connects = [family] { return ::socket(family, SOCK_STREAM, 0) >= 0; };
        EXPECT_FALSE(succeeds(connects)) << family;
    }
}

TEST_F(Confinement, LeavesNothingToWriteTo) {
    const TemporaryFolder folder;
    folder.write("a", "content");
    const auto overwrites = [&] { return canOpen(folder / "a", O_RDWR); };
    const auto creates = [&] { return canOpen(folder / "new", O_WRONLY | O_CREAT); };
    const auto removes = [&] { return ::unlink((folder / "a").c_str()) == 0; };
    const auto renames = [&] {
        return ::rename((folder / "a").c_str(), (folder / "b").c_str()) == 0;
    };
    const auto makesFolder = [&] { return ::mkdir((folder / "sub").c_str(), 0700) == 0; };
    const std::array<std::function<bool()>, 5> attempts{overwrites, creates, removes, renames,
                                                        makesFolder};
    for (const auto& attempt : attempts) EXPECT_FALSE(succeeds(attempt));
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a"});
    EXPECT_TRUE(succeedsOutside(overwrites));
}

TEST_F(Confinement, LeavesNoOtherProgramToStart) {
    const auto starts = [] {
        std::string program = "/bin/true";
        const std::array<char*, 2> arguments{program.data(), nullptr};
        ::execv(program.c_str(), arguments.data());
        return false;
    };
    EXPECT_TRUE(succeedsOutside(starts));
    EXPECT_FALSE(succeeds(starts));
    EXPECT_FALSE(succeeds([] { return ::fork() >= 0; }));
}

TEST_F(Confinement, KeepsFontsReadable) {
    const std::filesystem::path fonts = "/usr/share/fonts";
    if (!std::filesystem::exists(fonts)) GTEST_SKIP() << "there are no fonts here";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(fonts)) {
        if (!entry.is_regular_file()) continue;
        const std::string path = entry.path().string();
        EXPECT_TRUE(succeeds([&] { return canOpen(path, O_RDONLY); })) << path;
        return;
    }
}

TEST_F(Confinement, LimitsMemory) {
    const auto reserves = [] {
        constexpr std::size_t kMuch = std::size_t{3} << 30U;
        void* memory = std::malloc(kMuch);  // NOLINT(*-no-malloc,*-owning-memory)
        const bool got = memory != nullptr;
        std::free(memory);  // NOLINT(*-no-malloc,*-owning-memory)
        return got;
    };
    EXPECT_TRUE(succeedsOutside(reserves));
    EXPECT_FALSE(succeeds(reserves));
}

TEST_F(Confinement, LetsThreadsBe) {
    EXPECT_TRUE(succeeds([] {
        bool ran = false;
        std::thread([&ran] { ran = true; }).join();
        return ran;
    }));
}

TEST_F(Confinement, CannotBeUndone) {
    EXPECT_FALSE(succeeds([] {
        const rlimit more{RLIM_INFINITY, RLIM_INFINITY};
        return ::setrlimit(RLIMIT_AS, &more) == 0;
    }));
}

}  // namespace
}  // namespace quirebind
