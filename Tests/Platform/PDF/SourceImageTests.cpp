// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Platform/Files/FileSystem.h"
#include "Platform/PDF/SourceImage.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind {
namespace {

/// A file that is larger than what is kept of it, and no two pieces of which are alike.
class SourceImageTests : public ::testing::Test {
 protected:
    SourceImageTests() : contents_(3 * limits::kWindowBytes + 12345, '\0') {
        std::mt19937 random(1);
        for (char& byte : contents_) byte = static_cast<char>(random());
        folder_.write("source.pdf", contents_);
    }

    SourceImage open() {
        return SourceImage::open(URL::file(folder_ / "source.pdf"), FileSystem::native()).value();
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

}  // namespace
}  // namespace quirebind
