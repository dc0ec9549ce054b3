// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Headers (ISO 32000-2, 7.5.2): where they stand, and which version a merged file gets.

#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"

namespace quirebind::pdftest {
namespace {

using ::testing::StartsWith;

std::string headed(const std::string& header) {
    return replaced(onePageWith(), "{{header 1.7}}", header);
}

const std::string kJunk = "From: somebody\nTo: somebody else\n\n";

INSTANTIATE_TEST_SUITE_P(
    Header, ReadableFile,
    ::testing::Values(
        Kind("behindJunkWithOffsetsFromTheHeader", kJunk + headed("{{header 1.7}}")),
        Kind("behindJunkWithOffsetsFromTheStart", kJunk + headed("{{header 1.7 origin=file}}")),
        Kind("behindOneByteWithOffsetsFromTheStart", "x" + headed("{{header 1.7 origin=file}}")),
        Kind("behindALineEnd", "{{hex 0a}}" + headed("{{header 1.7}}")),
        Kind("behindAMarkOfUTF8", "{{hex ef bb bf}}" + headed("{{header 1.7}}")),
        Kind("behind1024Bytes", "{{fill 1024 20}}" + headed("{{header 1.7}}")),
        Kind("behind1024BytesWithOffsetsFromTheStart",
             "{{fill 1024 20}}" + headed("{{header 1.7 origin=file}}")),
        Kind("withoutItsBinaryComment", headed("%PDF-1.4")),
        Kind("withSomethingBehindTheVersion", headed("%PDF-1.4 %%made by hand")),
        Kind("withoutAVersion", headed("%PDF-"))),
    nameOfKind);

// Readers take it for what it is all the same.
INSTANTIATE_TEST_SUITE_P(
    NoHeader, ReadableFile,
    ::testing::Values(Kind("atAll", headed("")), Kind("butOfPostScript", headed("%!PS-Adobe-3.0")),
                      Kind("inTheFirst1024Bytes", "{{fill 1025 20}}" + headed("{{header 1.7}}"))),
    nameOfKind);

TEST(Junk, behindTheEndIsPassedOver) {
    const Bench bench;
    std::string bytes = test::fixturePDF(onePageWith());
    bytes += "\r\n" + std::string(1000, '\0') + "<html>not found</html>";
    expectPages(bench.merge({bench.add("a.pdf", bytes)}), {200}, {"one"});
}

/// What the header of a merged file says, of sources with these headers and catalogs.
std::string mergedHeader(const Bench& bench,
                         const std::vector<std::pair<std::string, std::string>>& versions) {
    std::vector<std::string> sources;
    for (const auto& [header, catalog] : versions) {
        const std::string text = replaced(headed("{{header " + header + "}}"), "/Type /Catalog",
                                          "/Type /Catalog " + catalog);
        sources.push_back(bench.fixture("v" + std::to_string(sources.size()) + ".pdf", text));
    }
    const std::string merged = bench.merge(sources);
    expectSound(merged, static_cast<int>(versions.size()));
    return Bench::read(merged).substr(0, 8);
}

TEST(Version, isThatOfASingleSource) {
    const Bench bench;
    for (const std::string version :
         {"1.0", "1.1", "1.2", "1.3", "1.4", "1.5", "1.6", "1.7", "2.0"}) {
        EXPECT_EQ(mergedHeader(bench, {{version, ""}}), "%PDF-" + version);
    }
}

TEST(Version, isTheHighestOfTheSources) {
    const Bench bench;
    EXPECT_EQ(mergedHeader(bench, {{"1.3", ""}, {"1.6", ""}, {"1.4", ""}}), "%PDF-1.6");
    EXPECT_EQ(mergedHeader(bench, {{"2.0", ""}, {"1.7", ""}}), "%PDF-2.0");
}

TEST(Version, ofACatalogCountsWhereItIsHigher) {
    const Bench bench;
    EXPECT_EQ(mergedHeader(bench, {{"1.3", "/Version /1.6"}, {"1.4", ""}}), "%PDF-1.6");
    EXPECT_EQ(mergedHeader(bench, {{"1.6", "/Version /1.3"}}), "%PDF-1.6");
    EXPECT_EQ(mergedHeader(bench, {{"1.4", "/Version 1.6"}}), "%PDF-1.4");
}

TEST(Version, isAtLeastThatOfCrossReferenceStreamsWhereThereIsOne) {
    const Bench bench;
    const std::string old = bench.add("a.pdf", test::simplePDF(2, {.version = "1.3"}));
    const std::string packed =
        bench.add("b.pdf", test::simplePDF(2, {.version = "1.3", .objectStreams = true}));
    const std::string merged = bench.merge({old, packed});
    expectSound(merged, 4);
    EXPECT_THAT(Bench::read(merged), StartsWith("%PDF-1.5"));
}

}  // namespace
}  // namespace quirebind::pdftest
