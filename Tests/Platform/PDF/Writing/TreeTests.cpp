// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Number trees (and so name trees, which differ in their keys only) that are written and read back.

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Files/FileSystem.h"
#include "Platform/Files/URL.h"
#include "Platform/PDF/Reading/SourceDocument.h"
#include "Platform/PDF/Reading/TreeReader.h"
#include "Platform/PDF/Syntax/ReferenceText.h"
#include "Platform/PDF/Writing/DocumentWriter.h"
#include "Platform/PDF/Writing/TreeWriter.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::pdftest {
namespace {

constexpr std::size_t kWidth = 64;

std::int64_t keyOf(std::size_t entry) {
    return static_cast<std::int64_t>(3 * entry);
}

/// A document whose catalog has a /Tree of so many entries, each of whose values is its key and 1.
class WrittenTree {
 public:
    explicit WrittenTree(std::size_t entries) {
        DocumentWriter writer;
        const std::uint32_t pages = writer.reserve();
        const std::uint32_t page = writer.reserve();
        const std::uint32_t root = writer.reserve();
        write(writer, page, "<</Type/Page/MediaBox[0 0 9 9]/Parent " + referenceText(pages) + ">>");
        write(writer, pages, "<</Type/Pages/Count 1/Kids[" + referenceText(page) + "]>>");
        TreeWriter tree(writer, "Nums");
        for (std::size_t i = 0; i < entries; ++i)
            tree.add(std::to_string(keyOf(i)), std::to_string(keyOf(i) + 1));
        write(writer, root,
              "<</Type/Catalog/Pages " + referenceText(pages) + "/Tree " +
                  referenceText(tree.finish()) + ">>");
        folder_.write("tree.pdf", writer.finish(root, Version{}).text());
        document_.emplace(URL::file(folder_ / "tree.pdf"), FileSystem::native(), Recovery::refused);
    }

    /// The integers of all entries, in the order of the tree.
    [[nodiscard]] std::vector<std::int64_t> entries() {
        std::vector<std::int64_t> found;
        visitTree(document_->reader(), root(), "Nums", [&](Value key, Value value) {
            found.push_back(key.integer().value_or(-1));
            found.push_back(value.integer().value_or(-1));
            return true;
        });
        return found;
    }

    /// The value of a key, looked for by /Limits as readers do that want one entry only.
    [[nodiscard]] std::optional<std::int64_t> find(std::int64_t key) {
        ObjectReader& reader = document_->reader();
        Value node = reader.resolve(root());
        while (node.find("Kids").isArray()) {
            std::size_t kids = 0;
            std::optional<Value> next;
            ArrayReader elements(node.find("Kids"));
            while (const auto kid = elements.next()) {
                ++kids;
                const Value candidate = reader.resolve(*kid);
                ArrayReader limits(candidate.find("Limits"));
                const auto first = limits.next().value_or(Value()).integer();
                const auto last = limits.next().value_or(Value()).integer();
                if (first.value_or(0) > key || last.value_or(0) < key) continue;
                EXPECT_FALSE(next) << key << " may be in two nodes";
                next = candidate;
            }
            EXPECT_LE(kids, kWidth);
            if (!next) return std::nullopt;
            node = *next;
        }
        ArrayReader pairs(node.find("Nums"));
        while (const auto found = pairs.next()) {
            const auto value = pairs.next().value_or(Value()).integer();
            if (found->integer() == key) return value;
        }
        return std::nullopt;
    }

 private:
    static void write(DocumentWriter& writer, std::uint32_t number, std::string_view text) {
        writer.beginObject(number, false).append(text);
        writer.endObject();
    }

    [[nodiscard]] Value root() const { return document_->catalog().find("Tree"); }

    TemporaryFolder folder_;
    std::optional<SourceDocument> document_;
};

class TreeOf : public ::testing::TestWithParam<std::size_t> {};

TEST_P(TreeOf, entriesIsReadBack) {
    WrittenTree tree(GetParam());
    std::vector<std::int64_t> expected;
    for (std::size_t i = 0; i < GetParam(); ++i) {
        expected.push_back(keyOf(i));
        expected.push_back(keyOf(i) + 1);
    }
    EXPECT_EQ(tree.entries(), expected);
}

TEST_P(TreeOf, entriesIsFoundByItsLimits) {
    WrittenTree tree(GetParam());
    const std::size_t last = GetParam() - 1;
    for (const std::size_t entry : {std::size_t{0}, last / 3, last / 2, last}) {
        EXPECT_EQ(tree.find(keyOf(entry)), keyOf(entry) + 1);
        EXPECT_EQ(tree.find(keyOf(entry) + 1), std::nullopt);
    }
    EXPECT_EQ(tree.find(keyOf(last + 1)), std::nullopt);
}

// Around what fits into one leaf, two levels and three.
INSTANTIATE_TEST_SUITE_P(Some, TreeOf,
                         ::testing::Values(1, kWidth, kWidth + 1, kWidth* kWidth,
                                           kWidth* kWidth + 1, kWidth* kWidth* kWidth + 1));

}  // namespace
}  // namespace quirebind::pdftest
