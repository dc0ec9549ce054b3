// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// What users read when the engine refuses, byte for byte.

#include <string>

#include <gtest/gtest.h>

#include "QuirebindCore/PDFMerger.h"

namespace quirebind::PDFMerger {
namespace {

TEST(Failure, saysWhichSourceCannotBeRead) {
    EXPECT_EQ(Failure::invalid("a.pdf").errorDescription(), "Could not read every page of a.pdf.");
}

TEST(Failure, saysWhichSourceIsLocked) {
    EXPECT_EQ(Failure::locked("a.pdf").errorDescription(),
              "a.pdf is locked. Unlock it in Preview before adding it.");
}

TEST(Failure, saysThatThereAreNoPages) {
    EXPECT_EQ(Failure::empty().errorDescription(), "Add PDFs containing at least one page.");
}

TEST(Failure, saysThatAnotherDestinationIsNeeded) {
    EXPECT_EQ(Failure::sourceOverwrite().errorDescription(),
              "Choose a different output file to preserve your original PDFs.");
}

TEST(Failure, takesNamesAsTheyAre) {
    const auto sentence = [](const std::string& name) {
        return Failure::invalid(name).errorDescription();
    };
    EXPECT_EQ(sentence("my file.pdf"), "Could not read every page of my file.pdf.");
    EXPECT_EQ(sentence("\xC3\xBC\xFF\x01.pdf"),
              "Could not read every page of \xC3\xBC\xFF\x01.pdf.");
    EXPECT_EQ(sentence(""), "Could not read every page of .");
    EXPECT_EQ(sentence("etc."), "Could not read every page of etc..");
    EXPECT_EQ(sentence("50%s%n"), "Could not read every page of 50%s%n.");
    EXPECT_EQ(Failure::locked(" two\nlines").errorDescription(),
              " two\nlines is locked. Unlock it in Preview before adding it.");
    EXPECT_EQ(Failure::locked("").errorDescription(),
              " is locked. Unlock it in Preview before adding it.");
}

TEST(Failure, tellsItsKindAndName) {
    EXPECT_EQ(Failure::invalid("a").kind(), Failure::Kind::invalid);
    EXPECT_EQ(Failure::locked("a").kind(), Failure::Kind::locked);
    EXPECT_EQ(Failure::empty().kind(), Failure::Kind::empty);
    EXPECT_EQ(Failure::sourceOverwrite().kind(), Failure::Kind::sourceOverwrite);
    EXPECT_EQ(Failure::invalid("a").name(), "a");
    EXPECT_EQ(Failure::locked("b c").name(), "b c");
    EXPECT_EQ(Failure::empty().name(), "");
    EXPECT_EQ(Failure::sourceOverwrite().name(), "");
}

TEST(Failure, saysTheSameToWhoeverCatchesAnyException) {
    try {
        throw Failure::locked("a.pdf");
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "a.pdf is locked. Unlock it in Preview before adding it.");
    }
}

}  // namespace
}  // namespace quirebind::PDFMerger
