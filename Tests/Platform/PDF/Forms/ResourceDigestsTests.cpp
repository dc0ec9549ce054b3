// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Which default resources of forms are taken for the same.

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Files/FileSystem.h"
#include "Platform/Files/URL.h"
#include "Platform/PDF/Copying/KeyedHash.h"
#include "Platform/PDF/Forms/ResourceDigests.h"
#include "Platform/PDF/Reading/SourceDocument.h"
#include "Tests/Platform/PDF/Forms/FormTestSupport.h"

namespace quirebind::pdftest {
namespace {

/// Digests resources in documents that have some objects from number 6 on.
class ResourceDigestsTest : public ::testing::Test {
 protected:
    /// Of `resources`, one after the other, in one document; returns that of the last.
    std::optional<std::string> digestOf(const std::string& objects,
                                        const std::vector<std::string>& resources) {
        const std::string path =
            bench_.fixture("source.pdf", formDocument("<< >>", "[ ]", objects));
        SourceDocument document(URL::file(path), FileSystem::native(), Recovery::refused);
        ResourceDigests digests(document.reader(), hash_);
        std::optional<std::string> last;
        for (const std::string& resource : resources) last = digests.of(Value(resource));
        return last;
    }

 private:
    Bench bench_;
    KeyedHash hash_;
};

/// Two drawings, 6 and 7, the second of which uses the first, and both the font 8.
std::string drawings(const std::string& baseFont) {
    const std::string descriptor =
        "<< /Type /FontDescriptor /FontName /A /Flags 32 /FontBBox [-100 -200 1000 900] >>";
    return object(6, "<< /Kind (first drawing) /Resources << /Font << /F 8 0 R >> >> >>") +
           object(7,
                  "<< /Kind (second drawing) /Resources << /Font << /F 8 0 R >> "
                  "/XObject << /First 6 0 R >> >> >>") +
           object(8, "<< /Type /Font /BaseFont /" + baseFont +
                         " /Widths 9 0 R "
                         "/FontDescriptor 10 0 R >>") +
           object(9, "[500 600 700 800 900 1000 500 600 700 800 900 1000]") +
           object(10, descriptor);
}

TEST_F(ResourceDigestsTest, doNotDependOnWhatWasLookedAtBefore) {
    const auto alone = digestOf(drawings("A"), {"7 0 R"});
    ASSERT_TRUE(alone);
    EXPECT_EQ(digestOf(drawings("A"), {"8 0 R", "6 0 R", "7 0 R"}), alone);
    EXPECT_EQ(digestOf(drawings("A"), {"7 0 R", "7 0 R"}), alone);
}

TEST_F(ResourceDigestsTest, tellWhatDiffersDeepInsideOfWhatIsShared) {
    EXPECT_NE(digestOf(drawings("A"), {"6 0 R", "7 0 R"}),
              digestOf(drawings("B"), {"6 0 R", "7 0 R"}));
}

TEST_F(ResourceDigestsTest, areTheSameHoweverAResourceIsDividedIntoObjects) {
    const std::string inOne =
        "<</Type/Font/BaseFont/A/FontDescriptor<</FontBBox[-100 -200 1000 900]/Flags 32"
        "/FontName/A/Type/FontDescriptor>>"
        "/Widths[500 600 700 800 900 1000\n500 600 700 800 900 1000]>>";
    const auto divided = digestOf(drawings("A"), {"8 0 R"});
    EXPECT_EQ(digestOf("", {inOne}), divided);
    EXPECT_EQ(digestOf(object(6, inOne), {"6 0 R"}), divided);
    EXPECT_NE(digestOf(object(6, "[ " + inOne + " ]"), {"6 0 R"}), divided);
}

/// Two resources, 6 and 7, that refer to each other, and themselves.
std::string loop(const std::string& name) {
    return object(6, "<< /Name (the first of two resources) /Other 7 0 R /Self 6 0 R >>") +
           object(7, "<< /Name (" + name + ") /Other [6 0 R] >>");
}

TEST_F(ResourceDigestsTest, haveAnEndWhereResourcesLoop) {
    const auto first = digestOf(loop("the second of two resources"), {"6 0 R"});
    const auto second = digestOf(loop("the second of two resources"), {"7 0 R"});
    ASSERT_TRUE(first && second);
    EXPECT_NE(first, second);
    EXPECT_EQ(digestOf(loop("the second of two resources"), {"7 0 R", "6 0 R"}), first);
    EXPECT_EQ(digestOf(loop("the second of two resources"), {"6 0 R", "7 0 R"}), second);
    EXPECT_NE(digestOf(loop("another of two resources"), {"6 0 R"}), first);
}

TEST_F(ResourceDigestsTest, haveAnEndWhereObjectsAreNothingButReferences) {
    const std::string round = object(6, "7 0 R") + object(7, "6 0 R");
    const auto digest = digestOf(round, {"6 0 R"});
    EXPECT_TRUE(digest);
    EXPECT_EQ(digestOf(round, {"7 0 R", "6 0 R"}), digest);
}

TEST_F(ResourceDigestsTest, sayWhatIsNothing) {
    const std::string objects = object(6, "null") + object(7, "6 0 R") + object(8, "8 0 R") +
                                object(9, "10 0 R") + object(10, "9 0 R") +
                                object(11, "<< /Self 11 0 R >>");
    for (const std::string resource : {"null", "6 0 R", "7 0 R", "8 0 R", "9 0 R", "99 0 R"}) {
        EXPECT_TRUE(ResourceDigests::isOfNothing(digestOf(objects, {resource}).value()))
            << resource;
    }
    for (const std::string resource : {"<<>>", "[]", "0", "/null", "()", "[null]", "11 0 R"}) {
        EXPECT_FALSE(ResourceDigests::isOfNothing(digestOf(objects, {resource}).value()))
            << resource;
    }
}

TEST_F(ResourceDigestsTest, takeTheLastOfRepeatedKeysInAnyOrder) {
    const auto digest = digestOf("", {"<< /A 1 /B 2 >>"});
    ASSERT_TRUE(digest);
    EXPECT_EQ(digestOf("", {"<< /B 4 /A 3 /A 1 /B 2 >>"}), digest);
    EXPECT_EQ(digestOf("", {"<< /A 3 /B 2 /A 1 /B >>"}), digest) << "one without a value is none";
    EXPECT_NE(digestOf("", {"<< /B 2 /A 1 /A 3 /B 4 >>"}), digest);
}

TEST_F(ResourceDigestsTest, areNotMadeWhereThatWouldBeTooMuch) {
    // Each resource refers to the next one many times, and all of them to the first.
    std::string objects;
    for (int i = 6; i < 30; ++i) {
        const std::string next = std::to_string(i + 1) + " 0 R ";
        objects += object(i, "[ 6 0 R " + next + next + next + next + "]");
    }
    EXPECT_EQ(digestOf(objects, {"6 0 R"}), std::nullopt);
    EXPECT_EQ(digestOf(objects + object(31, "<< /X 6 0 R >>"), {"6 0 R", "31 0 R"}), std::nullopt);
}

}  // namespace
}  // namespace quirebind::pdftest
