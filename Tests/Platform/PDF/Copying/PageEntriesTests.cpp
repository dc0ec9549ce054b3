// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Platform/PDF/Copying/PageEntries.h"
#include "Platform/PDF/Syntax/ValueScanner.h"

namespace quirebind {
namespace {

/// The keys that `entries` says a page has, each with what stands under it.
std::string own(PageEntries& entries, std::string_view page) {
    (void)scanValue(page, 0, &entries.parts());
    std::string result;
    for (const auto& [index, key] : entries.of(Value(page))) {
        const DictionaryEntry entry = entryAt(entries.parts().entries()[index], page);
        EXPECT_EQ(key, pageKeyOf(entry.key)) << page;
        result.append(entry.key.text()).append("=").append(entry.value.text()).append(";");
    }
    return result;
}

TEST(PageEntries, areThoseWithAKeyOfTheirOwn) {
    PageEntries entries;
    EXPECT_EQ(own(entries, "<</Type/Page/Contents 1 0 R/Parent 2 0 R/Tabs/S/StructParents 3>>"),
              "/Type=/Page;/Parent=2 0 R;/StructParents=3;");
    EXPECT_EQ(own(entries, "<</Contents 1 0 R/Annots[4 0 R]/AA<</O 5 0 R>>/Rotate 90>>"),
              "/Annots=[4 0 R];/AA=<</O 5 0 R>>;/Rotate=90;");
    EXPECT_EQ(own(entries, "<</Contents 1 0 R>>"), "");
}

TEST(PageEntries, areThoseOfTheLastPageWhateverPagesCameBefore) {
    constexpr std::string_view kPlain = "<</Type/Page/Parent 2 0 R/Contents 11 0 R/Note(1)>>";
    constexpr std::string_view kAlike = "<</Type/Page/Parent 3 0 R/Contents 29 0 R/Note(2)>>";
    constexpr std::string_view kOther = "<</Contents 11 0 R/Type/Page/Parent 4 0 R/Note(3)>>";
    PageEntries entries;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(own(entries, kPlain), "/Type=/Page;/Parent=2 0 R;");
        EXPECT_EQ(own(entries, kAlike), "/Type=/Page;/Parent=3 0 R;");
        EXPECT_EQ(own(entries, kOther), "/Type=/Page;/Parent=4 0 R;");
    }
}

TEST(PageEntries, areThoseOfPagesThatSpellTheirKeysOtherwise) {
    PageEntries entries;
    EXPECT_EQ(own(entries, "<</P#61rent 2 0 R/Contents 11 0 R>>"), "/P#61rent=2 0 R;");
    EXPECT_EQ(own(entries, "<</P#62rent 2 0 R/Contents 11 0 R>>"), "");
    EXPECT_EQ(own(entries, "<</P#61rent 2 0 R/Contents 11 0 R>>"), "/P#61rent=2 0 R;");
}

TEST(PageEntries, areALastKeyWithoutAValue) {
    PageEntries entries;
    EXPECT_EQ(own(entries, "<</Contents 1 0 R/Tabs>>"), "/Tabs=;");
}

}  // namespace
}  // namespace quirebind
