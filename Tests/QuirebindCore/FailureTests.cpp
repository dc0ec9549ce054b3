// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// What users read when the engine refuses, byte for byte.

#include <array>
#include <exception>
#include <string>

#include <gtest/gtest.h>

#include "QuirebindCore/PDFMerger.h"

namespace quirebind::PDFMerger {
namespace {

struct Refusal {
    Failure failure;
    Failure::Kind kind;
    std::string name;
    std::string sentence;
};

TEST(Failure, tellsItsKindItsSourceAndWhatToSay) {
    using enum Failure::Kind;
    const std::array refusals{
        Refusal{Failure::invalid("a.pdf"), invalid, "a.pdf", "Could not read every page of a.pdf."},
        Refusal{Failure::locked("b c.pdf"), locked, "b c.pdf",
                "b c.pdf is locked. Unlock it in Preview before adding it."},
        Refusal{Failure::empty(), empty, "", "Add PDFs containing at least one page."},
        Refusal{Failure::sourceOverwrite(), sourceOverwrite, "",
                "Choose a different output file to preserve your original PDFs."},
    };
    for (const Refusal& refusal : refusals) {
        EXPECT_EQ(refusal.failure.kind(), refusal.kind) << refusal.sentence;
        EXPECT_EQ(refusal.failure.name(), refusal.name);
        EXPECT_EQ(refusal.failure.errorDescription(), refusal.sentence);
        // To whoever catches any exception it says the same.
        const std::exception& any = refusal.failure;
        EXPECT_EQ(any.what(), refusal.sentence);
    }
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

}  // namespace
}  // namespace quirebind::PDFMerger
