// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// What the writing side puts together from objects that are no pages of any source.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/Writing/CrossReferenceWriter.h"
#include "Platform/PDF/Writing/DocumentWriter.h"
#include "Platform/PDF/Writing/PageTreeWriter.h"
#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;

/// Writes the catalog of a document with that page tree and all of it to a file.
std::string finished(const Bench& bench, DocumentWriter& writer, std::uint32_t pages, bool packed) {
    const std::uint32_t root = writer.reserve();
    ByteBuffer& out = writer.beginObject(root, packed);
    out.append("<</Type/Catalog/Pages ");
    out.append(std::uint64_t{pages});
    out.append(" 0 R>>");
    writer.endObject();
    const ByteBuffer file = writer.finish(root, {1, 7});
    return bench.add("written.pdf", file.text());
}

std::uint32_t writePage(DocumentWriter& writer, std::uint32_t parent, std::size_t width,
                        bool packed) {
    const std::uint32_t number = writer.reserve();
    ByteBuffer& out = writer.beginObject(number, packed);
    out.append("<</Type/Page/MediaBox[0 0 ");
    out.append(std::uint64_t{width});
    out.append(" 300]/Parent ");
    out.append(std::uint64_t{parent});
    out.append(" 0 R>>");
    writer.endObject();
    return number;
}

std::vector<double> widthsOf(const std::string& path) {
    std::vector<double> widths;
    for (const auto& page : test::pagesByMuPDF(path)) widths.push_back(page.mediaBox.right);
    return widths;
}

TEST(PageTreeWriter, keepsTheOrderOfInsertionsAnywhere) {
    constexpr std::size_t kPages = 500;
    constexpr std::size_t kNarrowest = 100;
    for (const bool packed : {false, true}) {
        const Bench bench;
        DocumentWriter writer;
        PageTreeWriter tree(writer);
        std::vector<double> expected;
        for (std::size_t i = 0; i < kPages; ++i) {
            // The first half at the end, so that there are several leaves; then all over.
            const std::size_t at = i < kPages / 2 ? i : i * 7919 % (i + 1);
            const std::uint32_t leaf = tree.leafFor(at);
            tree.insert(writePage(writer, leaf, kNarrowest + i, packed), at);
            expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(at),
                            static_cast<double>(kNarrowest + i));
        }
        EXPECT_EQ(tree.pageCount(), kPages);
        const std::string path = finished(bench, writer, tree.finish(), packed);
        expectSound(path, kPages);
        EXPECT_EQ(widthsOf(path), expected);
    }
}

TEST(PageTreeWriter, tellsEachPageTheLeafItIsIn) {
    const Bench bench;
    DocumentWriter writer;
    PageTreeWriter tree(writer);
    for (const std::size_t at : {0U, 0U, 1U, 3U, 2U, 0U}) {
        const std::uint32_t leaf = tree.leafFor(at);
        tree.insert(writePage(writer, leaf, 200, false), at);
    }
    const std::uint32_t root = tree.finish();
    const std::string path = finished(bench, writer, root, false);
    for (const std::string& page : test::pageDictionaries(path)) {
        EXPECT_THAT(page, HasSubstr("/Parent " + std::to_string(root) + " 0 R"));
    }
}

TEST(PageTreeWriter, writesATreeWithoutPages) {
    const Bench bench;
    DocumentWriter writer;
    PageTreeWriter tree(writer);
    // Two of three readers refuse to open a file in which there is nothing to see.
    const std::string path = finished(bench, writer, tree.finish(), false);
    EXPECT_EQ(test::qpdfCheck(path).exitCode, 0);
    EXPECT_EQ(test::pageCounts(path).qpdf, 0);
}

/// Numbers that are reserved and never written become free objects, which refer to one another.
TEST(CrossReferenceWriter, linksFreeObjectsInATable) {
    ByteBuffer out;
    std::vector<OutputLocation> locations(6);
    locations[1] = OutputLocation::inFile(17);
    locations[3] = OutputLocation::inFile(9'999'999'999);
    locations[4] = OutputLocation::inFile(20);
    writeCrossReferenceTable(out, locations, 1);
    EXPECT_THAT(std::string(out.text()), ::testing::StartsWith("xref\n0 6\n"
                                                               "0000000002 65535 f \n"
                                                               "0000000017 00000 n \n"
                                                               "0000000005 00000 f \n"
                                                               "9999999999 00000 n \n"
                                                               "0000000020 00000 n \n"
                                                               "0000000000 00000 f \n"
                                                               "trailer\n"));
}

TEST(DocumentWriter, leavesNumbersFreeThatAreNotWritten) {
    for (const bool packed : {false, true}) {
        const Bench bench;
        DocumentWriter writer;
        PageTreeWriter tree(writer);
        const std::uint32_t leaf = tree.leafFor(0);
        const std::uint32_t unused = writer.reserve();
        const std::uint32_t page = writer.reserve();
        ByteBuffer& out = writer.beginObject(page, packed);
        out.append("<</Type/Page/MediaBox[0 0 200 300]/Here ");
        out.append(std::uint64_t{unused});
        out.append(" 0 R/Parent ");
        out.append(std::uint64_t{leaf});
        out.append(" 0 R>>");
        writer.endObject();
        static_cast<void>(writer.reserve());
        tree.insert(page, 0);
        const std::string path = finished(bench, writer, tree.finish(), packed);
        expectSound(path, 1);
        EXPECT_EQ(test::objectText(path, std::to_string(unused)), "null");
    }
}

TEST(DocumentWriter, spendsFewSpacesOnBodiesThatAreBorrowed) {
    constexpr std::uint64_t kSources = 4'000'000;
    constexpr std::size_t kLong = std::size_t{2} << 20U;
    DocumentWriter writer;
    writer.borrowLongBodies();
    writer.addSource(kSources);
    std::size_t aligned = 0;
    for (std::uint64_t i = 0; i < 100; ++i) {
        writer.beginStream(writer.reserve()).append("<<>>");
        const std::uint64_t position = 1000 * i;
        const bool isAligned = writer.alignBody(position, kLong);
        const std::size_t body = writer.written().size() + std::string("\nstream\n").size();
        if (isAligned) {
            EXPECT_EQ(body % 4096, position % 4096);
            ++aligned;
        }
        writer.streamBody(1).front() = '.';  // what is there is anything, a space at times
        writer.endStream();
    }
    const std::string_view text = writer.written().text();
    const auto spaces = std::ranges::count(text, ' ') - 2 * 100;  // "1 0 obj"
    EXPECT_GT(aligned, 4U);
    EXPECT_LT(aligned, 100U);
    EXPECT_LE(spaces, kSources / 200);
    EXPECT_FALSE(writer.alignBody(0, 1000));
}

TEST(OutputLocation, tellsApartWhereAnObjectIs) {
    EXPECT_TRUE(OutputLocation().isFree());
    const auto inFile = OutputLocation::inFile(std::uint64_t{1} << 40U);
    EXPECT_FALSE(inFile.isFree());
    EXPECT_FALSE(inFile.isPacked());
    EXPECT_EQ(inFile.position(), std::uint64_t{1} << 40U);
    const auto inStream = OutputLocation::inStream(0x7fffffff, 65535);
    EXPECT_FALSE(inStream.isFree());
    EXPECT_TRUE(inStream.isPacked());
    EXPECT_EQ(inStream.position(), 0x7fffffffU);
    EXPECT_EQ(inStream.index(), 65535U);
}

}  // namespace
}  // namespace quirebind::pdftest
