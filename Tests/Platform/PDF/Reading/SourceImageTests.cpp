// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/Files/FileSystem.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Reading/SourceImage.h"
#include "Tests/Support/FaultyFileSystem.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind {
namespace {

/// A file that is larger than what is kept of it, and no two pieces of which are alike.
class SourceImageTests : public ::testing::Test {
 protected:
    explicit SourceImageTests(std::size_t size = 3 * limits::kWindowBytes + 12345)
        : contents_(size, '\0') {
        std::mt19937 random(1);
        for (char& byte : contents_) byte = static_cast<char>(random());
        folder_.write("source.pdf", contents_);
    }

    SourceImage open(FileSystem& files = FileSystem::native()) {
        return SourceImage::open(URL::file(folder_ / "source.pdf"), files).value();
    }

    /// What is wrong with a view, if anything.
    std::string mistake(SourceImage& image, std::size_t offset, std::size_t length) const {
        const std::string_view seen = image.view(offset, length);
        if (seen.size() < std::min(length, contents_.size() - offset)) return "too short";
        if (seen.size() > contents_.size() - offset) return "beyond the end";
        return seen == std::string_view(contents_).substr(offset, seen.size()) ? "" : "other bytes";
    }

    const std::string& contents() const { return contents_; }

 private:
    TemporaryFolder folder_;
    std::string contents_;
};

TEST_F(SourceImageTests, showsTheFileFromFrontToBackTwice) {
    SourceImage image = open();
    constexpr std::size_t kStep = 1000;
    for (int pass = 0; pass < 2; ++pass) {
        for (std::size_t offset = 0; offset < contents().size(); offset += kStep) {
            ASSERT_EQ(mistake(image, offset, kStep), "") << offset;
            image.trim();
        }
    }
}

TEST_F(SourceImageTests, showsTheFileInAnyOrder) {
    SourceImage image = open();
    std::mt19937 random(2);
    constexpr int kViews = 20'000;
    constexpr std::size_t kLongest = 40'000;
    for (int i = 0; i < kViews; ++i) {
        const std::size_t offset = random() % contents().size();
        ASSERT_EQ(mistake(image, offset, random() % kLongest), "") << offset;
        if (i % 3 == 0) image.trim();
    }
}

TEST_F(SourceImageTests, showsAnythingBesidesWhatIsReadInSequence) {
    SourceImage image = open();
    constexpr std::size_t kStep = 5000;
    for (std::size_t offset = 0; offset < contents().size(); offset += kStep) {
        ASSERT_EQ(mistake(image, offset, kStep), "") << offset;
        ASSERT_EQ(mistake(image, contents().size() - 1 - offset, kStep), "") << offset;
        image.trim();
    }
}

TEST_F(SourceImageTests, keepsViewsUntilItIsTrimmed) {
    SourceImage image = open();
    const std::string_view first = image.view(0, 100);
    const std::string_view all = image.view(0, contents().size());
    EXPECT_EQ(all, contents());
    EXPECT_EQ(first.substr(0, 100), contents().substr(0, 100));
    image.trim();
    EXPECT_EQ(image.view(0, contents().size()), contents());
}

TEST_F(SourceImageTests, countsFromTheOriginAfterATrim) {
    SourceImage image = open();
    constexpr std::size_t kOrigin = 777;
    image.setOrigin(kOrigin);
    constexpr std::size_t kStep = 100'000;
    for (std::size_t offset = 0; offset + kStep < image.size(); offset += kStep) {
        ASSERT_EQ(image.view(offset, kStep).substr(0, kStep),
                  contents().substr(offset + kOrigin, kStep));
        image.trim();
    }
}

TEST_F(SourceImageTests, lendsWhatIsCountedFromTheOrigin) {
    SourceImage image = open();
    constexpr std::size_t kOrigin = 777;
    constexpr std::size_t kOffset = 5000;
    constexpr std::size_t kLength = 2'000'000;
    image.setOrigin(kOrigin);
    EXPECT_EQ(image.positionInFile(kOffset), kOrigin + kOffset);
    for (const std::size_t misfit : {std::size_t{0}, std::size_t{1}}) {
        ByteBuffer borrower;
        borrower.append(std::string(kOrigin + kOffset + misfit, '-'));
        EXPECT_FALSE(misfit == 0 && image.lentFile());
        image.lend(kOffset, borrower.extend(kLength), borrower);
        EXPECT_TRUE(borrower.text().substr(kOrigin + kOffset + misfit) ==
                    std::string_view(contents()).substr(kOrigin + kOffset, kLength));
#if defined(__linux__)
        EXPECT_TRUE(image.lentFile());
#endif
    }
    ByteBuffer borrower;
    const std::size_t beyond = contents().size() - kOrigin - kLength + 1;
    EXPECT_THROW(image.lend(beyond, borrower.extend(kLength), borrower), DamagedDocument);
}

TEST_F(SourceImageTests, copiesWhatIsInMemoryAndWhatIsNot) {
    SourceImage image = open();
    std::string copy(50'000, '\0');
    for (const std::size_t offset : {std::size_t{0}, contents().size() - copy.size()}) {
        image.copy(offset, copy);
        EXPECT_EQ(copy, contents().substr(offset, copy.size()));
        (void)image.view(offset, copy.size());
        image.copy(offset, copy);
        EXPECT_EQ(copy, contents().substr(offset, copy.size()));
    }
}

/// A file that is much larger than what is kept of any.
class LargeSourceImageTests : public SourceImageTests {
 protected:
    LargeSourceImageTests() : SourceImageTests(2 * limits::kResidentBytes + 1'234'567) {}

    /// The first mistake in views here and there, if there is one.
    std::string mistakeHereAndThere(SourceImage& image, std::size_t length) {
        constexpr int kViews = 3000;
        for (int i = 0; i < kViews; ++i) {
            const std::size_t offset = random_() % contents().size();
            if (const std::string wrong = mistake(image, offset, length); !wrong.empty())
                return wrong + " at " + std::to_string(offset);
            if (i % 3 == 0) image.trim();
        }
        return "";
    }

 private:
    std::mt19937 random_{3};
};

/// Counts the bytes that are read.
class CountingFiles : public FaultyFileSystem {
 public:
    ssize_t read(int file, std::span<std::byte> into, std::uint64_t offset) override {
        const ssize_t result = FaultyFileSystem::read(file, into, offset);
        bytes_ += static_cast<std::uint64_t>(std::max<ssize_t>(result, 0));
        return result;
    }
    [[nodiscard]] std::uint64_t bytes() const { return bytes_; }

 private:
    std::uint64_t bytes_ = 0;
};

TEST_F(LargeSourceImageTests, areReadPieceByPieceWhereTheyAreReadInNoOrder) {
    CountingFiles files;
    SourceImage image = open(files);
    constexpr std::size_t kLength = 1000;
    EXPECT_EQ(mistakeHereAndThere(image, kLength), "");
    const std::uint64_t before = files.bytes();
    EXPECT_EQ(mistakeHereAndThere(image, kLength), "");
    EXPECT_LE(files.bytes() - before, 3000 * 2 * kLength);
}

TEST_F(LargeSourceImageTests, areReadInBlocksAgainOnceTheyAreReadInOrder) {
    FaultyFileSystem files;
    SourceImage image = open(files);
    constexpr std::size_t kStep = 1000;
    for (int pass = 0; pass < 2; ++pass) {
        EXPECT_EQ(mistakeHereAndThere(image, kStep), "");
        const std::size_t before = files.count(FileCall::read);
        for (std::size_t offset = 0; offset < contents().size(); offset += kStep) {
            ASSERT_EQ(mistake(image, offset, kStep), "") << offset;
            image.trim();
        }
        EXPECT_LE(files.count(FileCall::read) - before, contents().size() / kStep / 10);
    }
}

TEST_F(LargeSourceImageTests, keepViewsOfPiecesUntilTheyAreTrimmed) {
    SourceImage image = open();
    EXPECT_EQ(mistakeHereAndThere(image, 1000), "");
    image.trim();
    std::vector<std::pair<std::size_t, std::string_view>> views;
    constexpr std::size_t kStep = 3'000'017;
    // Much more than is held of pieces.
    for (std::size_t i = 0; i < 40; ++i) {
        const std::size_t offset = i * kStep % (contents().size() - 1'000'000);
        views.emplace_back(offset, image.view(offset, 1'000'000));
    }
    for (const auto& [offset, view] : views) {
        ASSERT_GE(view.size(), 1'000'000U);
        EXPECT_EQ(view, std::string_view(contents()).substr(offset, view.size())) << offset;
    }
    image.trim();
    EXPECT_EQ(mistakeHereAndThere(image, 100'000), "");
}

TEST_F(LargeSourceImageTests, copyFromPiecesAndFromTheFile) {
    SourceImage image = open();
    EXPECT_EQ(mistakeHereAndThere(image, 1000), "");
    std::string copy(600, '\0');
    for (const std::size_t offset : {std::size_t{1}, contents().size() / 2}) {
        EXPECT_EQ(mistake(image, offset, 1000), "");
        for (const std::size_t ahead : {0U, 300U, 700U}) {
            image.copy(offset + ahead, copy);
            EXPECT_EQ(copy, contents().substr(offset + ahead, copy.size())) << ahead;
        }
    }
}

}  // namespace
}  // namespace quirebind
