// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/landlock.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
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

    /// What became of an attempt in a child process.
    enum class Outcome : std::uint8_t {
        done,
        refused,  ///< The attempt came back and said that it failed.
        died,     ///< The child ended otherwise, perhaps before it tried anything.
    };
    friend std::ostream& operator<<(std::ostream& out, Outcome outcome) {
        constexpr std::array kNames{"done", "refused", "died"};
        return out << kNames[static_cast<std::size_t>(outcome)];
    }

    /// Makes `attempt`, which returns whether it succeeded, or becomes a program that ends with 0.
    [[nodiscard]] static Outcome outside(const std::function<bool()>& attempt) {
        return inChild(attempt);
    }
    /// The same in a confined process.
    [[nodiscard]] static Outcome inside(const std::function<bool()>& attempt) {
        return inChild([&attempt] {
            confine();
            return attempt();
        });
    }
    /// Expects that what can be done cannot be done inside, and why is not that the attempt or the
    /// confined process is broken.
    static void expectRefused(const std::function<bool()>& attempt, const std::string& what) {
        EXPECT_EQ(inside(attempt), Outcome::refused) << what;
        EXPECT_EQ(outside(attempt), Outcome::done) << what;
    }

 private:
    static Outcome inChild(const std::function<bool()>& attempt) {
        constexpr int kRefused = 77;
        const pid_t child = ::fork();
        if (child == 0) ::_exit(attempt() ? 0 : kRefused);
        int status = 0;
        ::waitpid(child, &status, 0);
        if (!WIFEXITED(status)) return Outcome::died;
        if (WEXITSTATUS(status) == kRefused) return Outcome::refused;
        return WEXITSTATUS(status) == 0 ? Outcome::done : Outcome::died;
    }
};

/// Whether the system can keep a process from files.
bool systemConfinesFiles() {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): so is the call
    return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) > 0;
}

bool canOpen(const std::string& path, int flags) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): so is the call
    const int file = ::open(path.c_str(), flags | O_CLOEXEC, 0600);
    if (file >= 0) ::close(file);
    return file >= 0;
}

TEST_F(Confinement, LeavesNoNetwork) {
    for (const int family : {AF_INET, AF_INET6, AF_UNIX}) {
        const auto opens = [family] {
            return ::socket(family, SOCK_STREAM, 0) >= 0 || errno == EAFNOSUPPORT;
        };
        expectRefused(opens, "socket of family " + std::to_string(family));
    }
}

TEST_F(Confinement, LeavesNothingToWriteTo) {
    const TemporaryFolder folder;
    folder.write("a", "content");
    // Each undoes what it does, so that it can be done again.
    const auto overwrites = [&] { return canOpen(folder / "a", O_RDWR); };
    const auto creates = [&] {
        return canOpen(folder / "new", O_WRONLY | O_CREAT) &&
               ::unlink((folder / "new").c_str()) == 0;
    };
    const auto renames = [&] {
        return ::rename((folder / "a").c_str(), (folder / "b").c_str()) == 0 &&
               ::rename((folder / "b").c_str(), (folder / "a").c_str()) == 0;
    };
    const auto makesFolder = [&] {
        return ::mkdir((folder / "sub").c_str(), 0700) == 0 &&
               ::rmdir((folder / "sub").c_str()) == 0;
    };
    const auto removes = [&] { return ::unlink((folder / "a").c_str()) == 0; };
    expectRefused(overwrites, "overwriting");
    expectRefused(creates, "creating");
    expectRefused(renames, "renaming");
    expectRefused(makesFolder, "making a folder");
    EXPECT_EQ(inside(removes), Outcome::refused);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"a"});
    EXPECT_EQ(outside(removes), Outcome::done);
}

TEST_F(Confinement, KeepsFilesOfTheUserFromBeingRead) {
    if (!systemConfinesFiles()) GTEST_SKIP() << "this system has no Landlock";
    const TemporaryFolder folder;
    folder.write("a.pdf", "content");
    expectRefused([&] { return canOpen(folder / "a.pdf", O_RDONLY); }, "reading a file");
    expectRefused([&] { return canOpen(folder.path(), O_RDONLY | O_DIRECTORY); }, "listing");
    expectRefused([&] { return canOpen("/etc/passwd", O_RDONLY); }, "reading who there is");
    expectRefused([&] { return canOpen("/proc/self/environ", O_RDONLY); }, "reading itself");
}

TEST_F(Confinement, LeavesTheOpenFileReadable) {
    const TemporaryFolder folder;
    folder.write("a.pdf", "content");
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): so is the call
    const int file = ::open((folder / "a.pdf").c_str(), O_RDONLY | O_CLOEXEC);
    const auto reads = [file] {
        std::array<char, 7> content{};
        return ::pread(file, content.data(), content.size(), 0) == 7 && content[0] == 'c';
    };
    EXPECT_EQ(inside(reads), Outcome::done);
    ::close(file);
}

TEST_F(Confinement, LeavesNoOtherProgramToStart) {
    const auto starts = [] {
        std::string program = "/bin/true";
        const std::array<char*, 2> arguments{program.data(), nullptr};
        ::execv(program.c_str(), arguments.data());
        return false;
    };
    expectRefused(starts, "becoming another program");
    const auto forks = [] {
        const pid_t child = ::fork();
        if (child == 0) ::_exit(0);
        return child > 0 && ::waitpid(child, nullptr, 0) == child;
    };
    expectRefused(forks, "starting a process");
}

TEST_F(Confinement, KeepsFontsReadable) {
    const std::filesystem::path fonts = "/usr/share/fonts";
    if (!std::filesystem::exists(fonts)) GTEST_SKIP() << "there are no fonts here";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(fonts)) {
        if (!entry.is_regular_file()) continue;
        const std::string path = entry.path().string();
        EXPECT_EQ(inside([&] { return canOpen(path, O_RDONLY); }), Outcome::done) << path;
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
    expectRefused(reserves, "3 GB");
}

TEST_F(Confinement, LetsThreadsBe) {
    const auto runsOne = [] {
        bool ran = false;
        std::thread([&ran] { ran = true; }).join();
        return ran;
    };
    EXPECT_EQ(inside(runsOne), Outcome::done);
}

TEST_F(Confinement, CannotBeUndone) {
    const auto raises = [] {
        rlimit limits{};
        ::getrlimit(RLIMIT_AS, &limits);
        limits.rlim_cur = limits.rlim_max;
        return ::setrlimit(RLIMIT_AS, &limits) == 0;
    };
    expectRefused(raises, "setting limits");
}

}  // namespace
}  // namespace quirebind
