// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include "Quirebind/Preview/PagePictures.h"

namespace quirebind {
namespace {

QImage picture(int megabytes) {
    return {1024, 256 * megabytes, QImage::Format_RGB32};
}

TEST(PagePictures, AreSettledAtTheSizeTheyWereDrawnAt) {
    PagePictures pictures;
    EXPECT_FALSE(pictures.isSettled(3, {1024, 256}));
    pictures.put(3, picture(1), 3);
    EXPECT_TRUE(pictures.isSettled(3, {1024, 256}));
    EXPECT_FALSE(pictures.isSettled(3, {2048, 512}));
    EXPECT_FALSE(pictures.find(3).isNull()) << "the old one is better than none";
    EXPECT_TRUE(pictures.find(4).isNull());
}

TEST(PagePictures, RememberAFailureAtItsSizeOnly) {
    PagePictures pictures;
    pictures.put(0, picture(1), 0);
    pictures.putFailure(0, {2048, 512});
    EXPECT_FALSE(pictures.find(0).isNull()) << "the old one is better than none";
    EXPECT_TRUE(pictures.isSettled(0, {2048, 512}));
    EXPECT_FALSE(pictures.isSettled(0, {1024, 256}));
    EXPECT_EQ(pictures.bytes(), std::size_t{1} << 20U);
    pictures.putFailure(1, {1024, 256});
    EXPECT_TRUE(pictures.find(1).isNull());
    EXPECT_TRUE(pictures.isSettled(1, {1024, 256}));
}

TEST(PagePictures, CanBeTriedAnew) {
    PagePictures pictures;
    pictures.put(0, picture(1), 0);
    pictures.putFailure(0, {2048, 512});
    pictures.putFailure(1, {2048, 512});
    pictures.forgetFailures();
    EXPECT_FALSE(pictures.isSettled(0, {2048, 512}));
    EXPECT_TRUE(pictures.isSettled(0, {1024, 256})) << "that was drawn";
    EXPECT_FALSE(pictures.isSettled(1, {2048, 512}));
}

TEST(PagePictures, KeepTheNearestPagesWithinTheirMemory) {
    PagePictures pictures;
    for (std::size_t page = 0; page < 1000; ++page) pictures.put(page, picture(4), page);
    EXPECT_LE(pictures.bytes(), PagePictures::kMostBytes);
    EXPECT_FALSE(pictures.find(999).isNull());
    EXPECT_FALSE(pictures.find(990).isNull());
    EXPECT_TRUE(pictures.find(0).isNull());
    for (std::size_t page = 999; page > 0; --page) pictures.put(page, picture(4), page);
    EXPECT_LE(pictures.bytes(), PagePictures::kMostBytes);
    EXPECT_FALSE(pictures.find(1).isNull());
    EXPECT_TRUE(pictures.find(999).isNull());
}

TEST(PagePictures, KeepThePageInSightHoweverLargeItIs) {
    PagePictures pictures;
    pictures.put(1, picture(100), 1);
    pictures.put(2, picture(100), 2);
    EXPECT_FALSE(pictures.find(2).isNull());
    EXPECT_TRUE(pictures.find(1).isNull());
}

}  // namespace
}  // namespace quirebind
