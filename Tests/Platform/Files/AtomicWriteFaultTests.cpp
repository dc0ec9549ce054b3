// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <array>
#include <cerrno>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Tests/Platform/Files/AtomicWriteSupport.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind {
namespace {

using testing::ElementsAre;

constexpr std::string_view kOldBytes = "the bytes of before";
constexpr std::string_view kNewBytes = "all of the new bytes";
constexpr std::size_t kMostNames = 16;

/// What the system under the atomic write can do.
enum class System : std::uint8_t { complete, withoutProc, withoutUnnamedFiles };

struct Situation {
    System system;
    bool destinationExists;
};

std::string nameOf(const Situation& situation) {
    static constexpr std::array<std::string_view, 3> kSystems{"complete", "withoutProc",
                                                              "withoutUnnamedFiles"};
    return std::string(kSystems.at(static_cast<std::size_t>(situation.system))) +
           (situation.destinationExists ? "Replacing" : "Creating");
}

std::ostream& operator<<(std::ostream& out, const Situation& situation) {
    return out << nameOf(situation);
}

void configure(FaultyFileSystem& files, System system) {
    files.pretendToSync();
    files.limitTransfers(8);  // several writes, so that one in the middle can fail
    if (system == System::withoutProc) files.fail(FileCall::linkUnnamed, ENOENT);
    if (system == System::withoutUnnamedFiles) files.fail(FileCall::openUnnamed, EOPNOTSUPP);
}

/// A folder of a test, and all that must not change in it where a write fails.
class Scene {
 public:
    explicit Scene(bool destinationExists) {
        folder_.write("other.pdf", "another file");
        if (destinationExists) folder_.write("out.pdf", kOldBytes);
        static_cast<void>(::chmod(destination().c_str(), 0604));
        names_ = folder_.names();
        descriptors_ = openDescriptors();
        static_cast<void>(::lstat(destination().c_str(), &before_));
    }

    [[nodiscard]] std::string destination() const { return folder_ / "out.pdf"; }

    void expectNoLeak(const FaultyFileSystem& files) const {
        EXPECT_EQ(files.openFiles(), 0U);
        EXPECT_EQ(openDescriptors(), descriptors_);
    }

    void expectOldDestination() const {
        struct stat now{};
        static_cast<void>(::lstat(destination().c_str(), &now));
        EXPECT_EQ(now.st_ino, before_.st_ino);
        EXPECT_EQ(now.st_mode, before_.st_mode);
        if (std::ranges::find(names_, "out.pdf") != names_.end()) {
            EXPECT_EQ(folder_.read("out.pdf"), kOldBytes);
        }
    }

    void expectNothingElse() const { EXPECT_EQ(folder_.names(), names_); }

    void expectNewDestination() const {
        EXPECT_EQ(folder_.read("out.pdf"), kNewBytes);
        EXPECT_THAT(folder_.names(), ElementsAre("other.pdf", "out.pdf"));
        EXPECT_EQ(folder_.read("other.pdf"), "another file");
    }

    [[nodiscard]] const TemporaryFolder& folder() const { return folder_; }

 private:
    TemporaryFolder folder_;
    std::vector<std::string> names_;
    std::ptrdiff_t descriptors_ = 0;
    struct stat before_{};
};

/// The calls of a write in which nothing fails that does not have to.
std::vector<FileCall> callsOf(const Situation& situation) {
    const Scene scene(situation.destinationExists);
    FaultyFileSystem files;
    configure(files, situation.system);
    EXPECT_EQ(errorOfWriting(kNewBytes, scene.destination(), files), 0);
    scene.expectNewDestination();
    return files.history();
}

/// The one step of a write that made these calls in which the destination changes.
FileCall decisiveCallOf(const std::vector<FileCall>& calls) {
    const bool isRenamed = std::ranges::find(calls, FileCall::rename) != calls.end();
    return isRenamed ? FileCall::rename : FileCall::linkUnnamed;
}

/// Whether a write succeeds although call number `failing` (from 1) of `calls` fails with `error`.
bool survives(const std::vector<FileCall>& calls, std::size_t failing, int error) {
    const FileCall kind = calls.at(failing - 1);
    const std::span before = std::span(calls).first(failing - 1);
    const std::span after = std::span(calls).subspan(failing);
    const auto isAmong = [](auto some, FileCall call) {
        return std::ranges::find(some, call) != some.end();
    };
    if (isAmong(before, decisiveCallOf(calls))) return true;  // the new file is there
    if (error == EINTR) return true;                          // made again; a closed file is closed
    switch (kind) {
        case FileCall::creationMask:  // cannot fail
        case FileCall::linkUnnamed:   // there is another way
            return true;
        case FileCall::open:
            // The folder may perhaps be used without being listed; another name may be free.
            return error == (isAmong(before, FileCall::open) ? EEXIST : EACCES);
        case FileCall::openUnnamed:
            return error == EOPNOTSUPP || error == EISDIR || error == ENOENT || error == EINVAL;
        case FileCall::linkStatus:
            return error == ENOENT;  // nothing there
        case FileCall::close:
            return isAmong(after, FileCall::setMode);  // another file has taken its place
        default:
            return false;
    }
}

/// Every errno that the atomic write treats in its own way somewhere, and some others.
constexpr std::array kErrors{ENOSPC,  EIO,    EDQUOT,       EROFS,      EACCES, EPERM,  EEXIST,
                             ENOENT,  EINVAL, EISDIR,       EOPNOTSUPP, ENOMEM, EMFILE, EXDEV,
                             ENOTDIR, ELOOP,  ENAMETOOLONG, EFBIG,      EBADF,  EINTR};

/// Writes while call number `failing` of `calls` fails with `error`, and looks at what is left.
void expectFailureOrWholeFile(const Situation& situation, const std::vector<FileCall>& calls,
                              std::size_t failing, int error) {
    SCOPED_TRACE(std::string(nameOf(calls.at(failing - 1))) + ", call " + std::to_string(failing) +
                 ": " + std::generic_category().message(error));
    const Scene scene(situation.destinationExists);
    FaultyFileSystem files;
    files.failCall(failing, error);
    configure(files, situation.system);
    const int thrown = errorOfWriting(kNewBytes, scene.destination(), files);
    scene.expectNoLeak(files);
    if (survives(calls, failing, error)) {
        EXPECT_EQ(thrown, 0);
        scene.expectNewDestination();
    } else {
        EXPECT_EQ(thrown, error);
        scene.expectOldDestination();
        scene.expectNothingElse();
    }
}

class AtomicWriteFaults : public testing::TestWithParam<Situation> {};

TEST_P(AtomicWriteFaults, ofEachCallAreReportedAndLeaveEverythingAsItWas) {
    const std::vector<FileCall> calls = callsOf(GetParam());
    ASSERT_GT(std::ranges::count(calls, FileCall::write), 2);
    for (std::size_t failing = 1; failing <= calls.size(); ++failing) {
        for (const int error : kErrors) {
            // getrlimit(2) does not wait for anything that a signal could interrupt.
            if (calls[failing - 1] == FileCall::fileSizeLimit && error == EINTR) continue;
            expectFailureOrWholeFile(GetParam(), calls, failing, error);
        }
    }
}

TEST_P(AtomicWriteFaults, thatCleaningUpMeetsDoNotHideTheFirstOne) {
    const std::vector<FileCall> calls = callsOf(GetParam());
    for (std::size_t failing = 1; failing <= calls.size(); ++failing) {
        if (survives(calls, failing, ENOSPC)) continue;
        SCOPED_TRACE(std::string(nameOf(calls[failing - 1])) + ", call " + std::to_string(failing));
        const Scene scene(GetParam().destinationExists);
        FaultyFileSystem files;
        files.failCall(failing, ENOSPC);
        files.failFrom(failing, EIO);
        configure(files, GetParam().system);
        EXPECT_EQ(errorOfWriting(kNewBytes, scene.destination(), files), ENOSPC);
        scene.expectNoLeak(files);
        scene.expectOldDestination();
    }
}

TEST_P(AtomicWriteFaults, areToldInTheSystemsOwnWords) {
    const Scene scene(GetParam().destinationExists);
    FaultyFileSystem files;
    files.fail(FileCall::sync, ENOSPC);
    configure(files, GetParam().system);
    try {
        writeAtomically({}, URL::file(scene.destination()), files);
        ADD_FAILURE() << "nothing is thrown";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code(), std::errc::no_space_on_device);
        EXPECT_EQ(std::string(error.what()), std::generic_category().message(ENOSPC));
    }
}

TEST_P(AtomicWriteFaults, neverLetAReaderSeeHalfAFile) {
    const FileCall decisive = decisiveCallOf(callsOf(GetParam()));
    const Scene scene(GetParam().destinationExists);
    FaultyFileSystem files;
    configure(files, GetParam().system);
    std::size_t looks = 0;
    files.onEachCall([&](FileCall) {
        const bool isDecided = files.count(decisive) > 0;
        ++looks;
        if (isDecided) {
            EXPECT_EQ(scene.folder().read("out.pdf"), kNewBytes);
        } else {
            scene.expectOldDestination();
        }
    });
    EXPECT_EQ(errorOfWriting(kNewBytes, scene.destination(), files), 0);
    EXPECT_EQ(looks, files.count());
}

TEST_P(AtomicWriteFaults, ofThePowerLeaveTheOldBytesOrTheNewOnes) {
    // The bytes and the permissions are on the medium before the name is; then the name is, too.
    const std::vector<FileCall> calls = callsOf(GetParam());
    const FileCall decisive = decisiveCallOf(calls);
    const auto last = [&](FileCall call) {
        return std::ranges::find(calls.rbegin(), calls.rend(), call).base() - calls.begin();
    };
    EXPECT_LT(last(FileCall::write), last(FileCall::sync));
    EXPECT_LT(last(FileCall::setMode), last(FileCall::sync));
    EXPECT_LT(last(FileCall::sync), last(decisive));
    EXPECT_LT(last(decisive), last(FileCall::syncFolder));
    EXPECT_EQ(std::ranges::count(calls, decisive), 1);
}

INSTANTIATE_TEST_SUITE_P(All, AtomicWriteFaults,
                         testing::Values(Situation{System::complete, true},
                                         Situation{System::complete, false},
                                         Situation{System::withoutProc, true},
                                         Situation{System::withoutProc, false},
                                         Situation{System::withoutUnnamedFiles, true},
                                         Situation{System::withoutUnnamedFiles, false}),
                         [](const auto& each) { return nameOf(each.param); });

TEST(AtomicWriteFault, ofLinkingIsNoReasonToFail) {
    for (const int error : {ENOENT, EPERM, EXDEV, EACCES, EOPNOTSUPP, EMLINK, EEXIST}) {
        const Scene scene(true);
        FaultyFileSystem files;
        files.fail(FileCall::linkUnnamed, error);
        EXPECT_EQ(errorOfWriting(kNewBytes, scene.destination(), files), 0) << error;
        scene.expectNewDestination();
        scene.expectNoLeak(files);
    }
}

TEST(AtomicWriteFault, ofTheSecondAttemptIsTheOneThatCounts) {
    const Scene scene(true);
    FaultyFileSystem files;
    files.fail(FileCall::linkUnnamed, ENOENT);
    files.failOnce(FileCall::open, EROFS, 2);  // the first one is the folder
    EXPECT_EQ(errorOfWriting(kNewBytes, scene.destination(), files), EROFS);
    scene.expectOldDestination();
    scene.expectNothingElse();
    scene.expectNoLeak(files);
}

TEST(AtomicWriteFault, isOvercomeWithoutBytesThatWereWrittenBefore) {
    for (const System system :
         {System::complete, System::withoutProc, System::withoutUnnamedFiles}) {
        const Scene scene(true);
        FaultyFileSystem files;
        configure(files, system);
        std::string bytes(kNewBytes);
        std::size_t gone = 0;
        writeAtomically(std::as_bytes(std::span(bytes)), URL::file(scene.destination()), files,
                        [&](std::size_t written) {
                            EXPECT_GT(written, gone);
                            gone = written;
                            std::ranges::fill(std::span(bytes).first(written), '?');
                        });
        EXPECT_EQ(gone, kNewBytes.size());
        scene.expectNewDestination();
    }
}

TEST(AtomicWriteFault, ofTakenNamesIsOvercomeByOthers) {
    const Scene scene(true);
    FaultyFileSystem files;
    files.fail(FileCall::openUnnamed, EOPNOTSUPP);
    for (std::size_t i = 0; i + 1 < kMostNames; ++i) {
        files.failOnce(FileCall::open, EEXIST, 2 + i);
    }
    EXPECT_EQ(errorOfWriting(kNewBytes, scene.destination(), files), 0);
    scene.expectNewDestination();
}

TEST(AtomicWriteFault, ofTakenNamesWithoutEndEnds) {
    const Scene scene(true);
    FaultyFileSystem files;
    files.fail(FileCall::openUnnamed, EOPNOTSUPP);
    for (std::size_t i = 0; i < kMostNames; ++i) files.failOnce(FileCall::open, EEXIST, 2 + i);
    EXPECT_EQ(errorOfWriting(kNewBytes, scene.destination(), files), EEXIST);
    scene.expectOldDestination();
    scene.expectNothingElse();
    scene.expectNoLeak(files);
}

TEST(AtomicWriteFault, ofClosingIsReportedWhileTheOldFileIsStillThere) {
    // A network file system may tell only then that there was no space.
    for (const System system : {System::complete, System::withoutUnnamedFiles}) {
        const Scene scene(true);
        FaultyFileSystem files;
        configure(files, system);
        files.failOnce(FileCall::close, EDQUOT);
        EXPECT_EQ(errorOfWriting(kNewBytes, scene.destination(), files), EDQUOT);
        scene.expectOldDestination();
        scene.expectNothingElse();
        scene.expectNoLeak(files);
    }
}

/// Somebody else is faster, and puts a file where a new one is about to appear.
class ForestallingFileSystem final : public FaultyFileSystem {
 public:
    explicit ForestallingFileSystem(const TemporaryFolder& folder) : folder_(folder) {}

    int linkUnnamed(int file, int folder, const char* name) override {
        if (count(FileCall::linkUnnamed) == 0) folder_.write("out.pdf", kOldBytes);
        return FaultyFileSystem::linkUnnamed(file, folder, name);
    }

 private:
    const TemporaryFolder& folder_;
};

TEST(AtomicWriteFault, ofSomebodyWhoWasFasterIsOvercomeByReplacingThatFile) {
    const TemporaryFolder folder;
    ForestallingFileSystem files(folder);
    EXPECT_EQ(errorOfWriting(kNewBytes, folder / "out.pdf", files), 0);
    EXPECT_EQ(folder.read("out.pdf"), kNewBytes);
    EXPECT_THAT(folder.names(), ElementsAre("out.pdf"));
    EXPECT_EQ(files.openFiles(), 0U);
}

/// Somebody else is faster, and puts a link to another file where a named file is about to be made.
class PlantingFileSystem final : public FaultyFileSystem {
 public:
    explicit PlantingFileSystem(std::string target) : target_(std::move(target)) {}

    int open(int folder, const char* path, int flags, mode_t mode) override {
        if ((flags & O_CREAT) != 0 && planted_.empty()) {
            planted_ = path;
            EXPECT_EQ(::symlinkat(target_.c_str(), folder, path), 0);
        }
        return FaultyFileSystem::open(folder, path, flags, mode);
    }

    /// The name of the link.
    [[nodiscard]] const std::string& planted() const { return planted_; }

 private:
    std::string target_;
    std::string planted_;
};

TEST(AtomicWriteFault, ofANameThatSomebodyTookDoesNotTouchWhatItLeadsTo) {
    const TemporaryFolder folder;
    folder.write("victim", "precious");
    PlantingFileSystem files("victim");
    files.fail(FileCall::openUnnamed, EOPNOTSUPP);
    EXPECT_EQ(errorOfWriting(kNewBytes, folder / "out.pdf", files), 0);
    EXPECT_EQ(folder.read("victim"), "precious");
    EXPECT_EQ(folder.read("out.pdf"), kNewBytes);
    EXPECT_THAT(folder.names(), ElementsAre(files.planted(), "out.pdf", "victim"));
}

TEST(AtomicWriteFault, ofListingTheFolderOnlyMeansThatItIsNotSynced) {
    const Scene scene(true);
    FaultyFileSystem files;
    files.failOnce(FileCall::open, EACCES);
    EXPECT_EQ(errorOfWriting(kNewBytes, scene.destination(), files), 0);
    scene.expectNewDestination();
    scene.expectNoLeak(files);
    EXPECT_EQ(files.count(FileCall::syncFolder), 0U);
}

}  // namespace
}  // namespace quirebind
