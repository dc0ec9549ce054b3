// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/PDF/Syntax/FoundParts.h"
#include "Platform/PDF/Syntax/ValueScanner.h"

namespace quirebind {
namespace {

/// All that a scan of `text` says.
std::vector<std::size_t> scanned(std::string_view text, FoundParts& parts) {
    const Extent extent = scanValue(text, 0, &parts);
    std::vector<std::size_t> result{extent.begin, extent.end, extent.looked,
                                    parts.wellFormed() ? 1U : 0U};
    for (const FoundReference& each : parts.references())
        result.insert(result.end(),
                      {each.begin, each.end, each.reference.number, each.reference.generation});
    for (const FoundEntry& each : parts.entries())
        result.insert(result.end(), {each.keyBegin, each.keyEnd, each.valueBegin, each.valueEnd});
    return result;
}

std::vector<std::size_t> scannedAfresh(std::string_view text) {
    FoundParts parts;
    return scanned(text, parts);
}

TEST(RememberedShapes, tellApartWhatDiffersInMoreThanDigits) {
    constexpr std::string_view kFirst = "<</Type/Page/A 12 0 R/B[7 0 R(x1)]/C 1.50>>";
    for (const std::string_view next :
         {"<</Type/Page/A 34 0 R/B[9 0 R(x2)]/C 2.75>>", "<</Type/Page/A 34 1 R/B[0 7 R(9x)]/C 1>>",
          "<</Type/Page/A 34 0 R/B[9 0 R(x2)]/C 2.7>>",
          "<</Type/Page/A 34 0 R/B[9 0 R(x2)]/C 2.>>5",
          "<</Type/Page/A 34 0 R/B[9 0 R(x)]]/C 1.50>>", "<</Type/Page/A 34 0 R/B[9 0 R(x)2]/C 1>>",
          "<</Type/Page/A 34 0 S/B[9 0 R(x2)]/C 2.75>>",
          "<</Type/Page/A 3400 R/B[9 0 R(x2)]/C 2.>>",
          "<</Type/Page/A 34 0 R/B[9 0 R(x2)]/C 2.75/>", "<</Type/Page/A 34 0 R/B[9 0 R",
          "<</Type/Pag3/A 34 0 R/B[9 0 R(x2)]/C 2.75>>", "[</Type/Page/A 34 0 R]", "<<>>", ""}) {
        FoundParts parts(FoundParts::Memory::shapes);
        EXPECT_EQ(scanned(kFirst, parts), scannedAfresh(kFirst));
        EXPECT_EQ(scanned(next, parts), scannedAfresh(next)) << next;
        EXPECT_EQ(scanned(kFirst, parts), scannedAfresh(kFirst)) << next;
    }
}

/// The text with every digit, or every second or third one, replaced by another.
std::string withOtherDigits(std::string_view text, std::size_t step) {
    std::string result(text);
    std::size_t digits = 0;
    for (char& c : result)
        if (isDigit(c) && digits++ % step == 0) c = c == '9' ? '0' : static_cast<char>(c + 1);
    return result;
}

TEST(RememberedShapes, sayWhatAScanWouldSayWhateverTheDigitsArePartOf) {
    for (const std::string_view text :
         {"<</A 1 0 R/B 23 45 R/C[6 0 R 7 8 0 R]>>", "<</A12#31 3/F1 4 0 R/#32b 5>>",
          "<</A(1 0 R \\101 \\) 2)/B<30 31>/C 9>>", "<< /A %1 0 R\n 2 0\tR /B 3 %4\n 0 R >>",
          "<</A 1234567890123456789 0 R/B 12345678901234567890 0 R>>",
          "<</A 4294967298 0 R/B 1 65534 R/C 1 65539 R/D 5 99999 R>>",
          "<</A -1 0 R/B +2 0 R/C .3 0 R/D 4.0 R/E 5 0R/F 60 R/G 7 0 R8>>",
          "<</A<</B<</C[[[1 0 R]2]3]>>>>/D 4>>", "<</A 1/B 2 3 4/C 5>>", "<</A 1 0 R 2 0 R/B>>",
          "<<1 0 R/A 2>>", "<</A 1 0 R>>", "<</A1>>"}) {
        for (const std::size_t step : {1U, 2U, 3U}) {
            FoundParts parts(FoundParts::Memory::shapes);
            std::string next(text);
            for (int i = 0; i < 10; ++i, next = withOtherDigits(next, step))
                EXPECT_EQ(scanned(next, parts), scannedAfresh(next)) << next;
        }
    }
}

TEST(RememberedShapes, areRecalledThoughOthersCameBetween) {
    FoundParts parts(FoundParts::Memory::shapes);
    const auto dictionary = [](char key, int number) {
        return std::string("<</") + key + " " + std::to_string(number) + " 0 R/Kind/" + key + ">>";
    };
    for (int number = 10; number < 90; ++number) {
        for (const char key : std::string_view("ABCDEF")) {
            const std::string text = dictionary(key, number);
            EXPECT_EQ(scanned(text, parts), scannedAfresh(text)) << text;
        }
        parts.clear();
        EXPECT_TRUE(parts.references().empty());
        EXPECT_TRUE(parts.entries().empty());
    }
}

TEST(RememberedShapes, arePlacedFromTheValuesBeginning) {
    FoundParts parts(FoundParts::Memory::shapes);
    for (const std::string_view text : {"<</A 1 0 R>>", "x <</A 2 0 R>> y", "x\n\n <</A 3 0 R>>"}) {
        const Extent extent = scanValue(text, text[0] == 'x' ? 1 : 0, &parts);
        EXPECT_EQ(extent.in(text).substr(0, 5), "<</A ");
        ASSERT_EQ(parts.references().size(), 1U) << text;
        EXPECT_EQ(parts.references()[0].begin, 5U) << text;
        EXPECT_EQ(extent.in(text).substr(5, 5),
                  std::to_string(parts.references()[0].reference.number) + " 0 R");
    }
}

TEST(RememberedShapes, ofEntriesSayWhatAScanWouldSayOfThem) {
    FoundParts parts(FoundParts::Memory::shapesOfEntries);
    for (const std::string_view text :
         {"<</A 1 0 R/B[2 0 R]>>", "<</A 3 0 R/B[4 0 R]>>", "<</A 33 0 R/B[4 0 R]>>"}) {
        FoundParts afresh;
        EXPECT_EQ(scanValue(text, 0, &parts).end, scanValue(text, 0, &afresh).end);
        const auto valueIn = [&](const FoundParts& found) {
            const FoundEntry& entry = found.entries().at(0);
            return text.substr(entry.valueBegin, entry.valueEnd - entry.valueBegin);
        };
        EXPECT_EQ(parts.entries().size(), 2U) << text;
        EXPECT_EQ(valueIn(parts), valueIn(afresh)) << text;
    }
}

TEST(RememberedShapes, needTheWholeTextToBeThere) {
    constexpr std::string_view kWhole = "<</A 1 0 R/B 2 0 R>>";
    FoundParts parts(FoundParts::Memory::shapes);
    EXPECT_EQ(scanned(kWhole, parts), scannedAfresh(kWhole));
    for (std::size_t size = 0; size < kWhole.size(); ++size)
        EXPECT_FALSE(scanValue(kWhole.substr(0, size), 0, &parts).isValue() && size != 0) << size;
}

}  // namespace
}  // namespace quirebind
