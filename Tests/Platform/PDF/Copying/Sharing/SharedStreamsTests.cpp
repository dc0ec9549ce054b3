// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Sources that one program made bring the same fonts and pictures; the output has each once. What
// belongs to one page is never taken for that of another.

#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

constexpr std::size_t kWidth = 40;
constexpr std::size_t kHeight = 50;

/// The body of a picture, all of one shade.
std::string shade(char value = 'x') {
    return std::string(kWidth * kHeight, value);
}

std::string stream(int number, const std::string& entries, const std::string& data) {
    return object(number, "<< " + entries + " /Length {{length}} >>\n{{stream}}\n" + data +
                              "\n{{endstream}}");
}

std::string picture(int number, const std::string& more = "", const std::string& data = shade()) {
    return stream(number,
                  "/Type /XObject /Subtype /Image /Width 40 /Height 50 /BitsPerComponent 8 "
                  "/ColorSpace /DeviceGray " +
                      more,
                  data);
}

/// A page whose resources have object 10 as a picture.
std::string pageShowing(const std::string& objects) {
    return replaced(onePageWith(objects), "/Resources <<",
                    "/Resources << /XObject << /Im 10 0 R >>");
}

/// How many streams with such an entry there are when these two are merged.
std::size_t countInMerged(const std::string& first, const std::string& second,
                          const std::string& entry = "/Width 40") {
    const Bench bench;
    const std::string merged =
        bench.merge({bench.fixture("a.pdf", first), bench.fixture("b.pdf", second)});
    expectPages(merged, {200, 200}, {"one", "one"});
    return countOf(entry, everyObject(merged));
}

TEST(SharedStreams, arePicturesWithTheSameBytes) {
    EXPECT_EQ(countInMerged(pageShowing(picture(10)), pageShowing(picture(10))), 1U);
}

TEST(SharedStreams, areTheSameUnderOtherNumbers) {
    const std::string other =
        replaced(pageShowing(object(11, "[1]") + picture(12)), "/Im 10 0 R", "/Im 12 0 R");
    EXPECT_EQ(countInMerged(pageShowing(picture(10)), other), 1U);
}

TEST(SharedStreams, areFontProgramsColourProfilesAndCharacterMaps) {
    for (const std::string entries :
         {"/Length1 2000", "/Subtype /Type1C", "/Subtype /CIDFontType0C", "/Subtype /OpenType",
          "/N 3 /Alternate /DeviceRGB", "/Type /CMap /CMapName /Quire"}) {
        const std::string text = replaced(onePageWith(stream(10, entries, shade())), "/MediaBox",
                                          "/PieceInfo << /A << /Private 10 0 R >> >> /MediaBox");
        EXPECT_EQ(countInMerged(text, text, "/Length 2000"), 1U) << entries;
    }
}

TEST(SharedStreams, areThoseOfDocumentsListedTwice) {
    const Bench bench;
    const std::string source = bench.fixture("a.pdf", pageShowing(picture(10)));
    const std::string merged = bench.merge({source, source, source});
    expectPages(merged, {200, 200, 200}, {"one", "one", "one"});
    EXPECT_EQ(countOf("/Width 40", everyObject(merged)), 1U);
}

TEST(SharedStreams, sayTheirLengthElsewhere) {
    const std::string far =
        replaced(pageShowing(picture(10) + object(11, "2000")), "/DeviceGray  /Length {{length}}",
                 "/DeviceGray  /Length 11 0 R");
    EXPECT_EQ(countInMerged(far, far), 1U);
}

TEST(SharedStreams, haveTheSameMask) {
    const auto masked = [](char value) {
        return pageShowing(picture(10, "/SMask 11 0 R") + picture(11, "", shade(value)));
    };
    EXPECT_EQ(countInMerged(masked('m'), masked('m')), 2U);
    EXPECT_EQ(countInMerged(masked('m'), masked('n')), 4U);
}

// Only the bytes between the samples that the digest is made of differ.
TEST(SharedStreams, areNotThoseOfTheSameLength) {
    std::string other = shade();
    other[400] = 'y';
    EXPECT_EQ(countInMerged(pageShowing(picture(10)), pageShowing(picture(10, "", other))), 2U);
    EXPECT_EQ(countInMerged(pageShowing(picture(10)), pageShowing(picture(10, "", shade('y')))),
              2U);
}

TEST(SharedStreams, areNotThoseThatAreDescribedOtherwise) {
    EXPECT_EQ(
        countInMerged(pageShowing(picture(10)), pageShowing(picture(10, "/Interpolate true"))), 2U);
}

TEST(SharedStreams, areNotThoseThatBelongToTheStructureOrToALayer) {
    const std::string inStructure = pageShowing(picture(10, "/StructParent 0"));
    EXPECT_EQ(countInMerged(inStructure, inStructure), 2U);
    const std::string onLayer =
        replaced(pageShowing(picture(10, "/OC 11 0 R") + object(11, "<< /Type /OCG /Name (A) >>")),
                 "/Type /Catalog", "/Type /Catalog /OCProperties << /OCGs [11 0 R] /D << >> >>");
    EXPECT_EQ(countInMerged(onLayer, onLayer), 2U);
}

TEST(SharedStreams, areNeverContentsAndForms) {
    const std::string spaces(2000, ' ');
    const std::string form = pageShowing(
        stream(10, "/Type /XObject /Subtype /Form /BBox [0 0 1 1] /N 3 /Length1 4", spaces));
    EXPECT_EQ(countInMerged(form, form, "/Subtype /Form"), 2U);

    const Bench bench;
    const std::string content = bench.fixture(
        "a.pdf", replaced(onePageWith(), "BT", "q\n" + std::string(2000, '\n') + "Q BT"));
    EXPECT_EQ(countOf("Q BT", Bench::read(bench.merge({content, content}))), 2U);
}

TEST(SharedStreams, areNotThoseThatReferToThemselves) {
    const std::string looped = pageShowing(picture(10, "/SMask 11 0 R /Quire 10 0 R") +
                                           picture(11, "/Quire [10 0 R 11 0 R]"));
    EXPECT_EQ(countInMerged(looped, looped), 4U);
}

TEST(SharedStreams, standDeepInOneAnother) {
    std::string chain;
    for (int number = 10; number < 40; ++number)
        chain += picture(number, "/Quire " + std::to_string(number + 1) + " 0 R");
    const std::size_t count = countInMerged(pageShowing(chain), pageShowing(chain));
    EXPECT_GE(count, 30U);
    EXPECT_LE(count, 60U);
}

// A stream that cannot be read refuses its source as it does where there is nothing to share.
TEST(SharedStreams, areNotThoseThatAreDamaged) {
    const Bench bench;
    const std::string sound = bench.fixture("a.pdf", pageShowing(picture(10)));
    const std::string damaged =
        bench.fixture("b.pdf", pageShowing(picture(10, "/Length 2000 /Quire [ ")));
    EXPECT_FALSE(bench.tryMerge({damaged}));
    EXPECT_FALSE(bench.tryMerge({sound, damaged}));
}

TEST(SharedStreams, areInClearWhereTheirSourceWasEncrypted) {
    const Bench bench;
    const std::string plain = bench.fixture("a.pdf", pageShowing(picture(10)));
    const std::string encrypted = bench.folder().path() + "/b.pdf";
    static_cast<void>(runOrFail({"qpdf", "--stream-data=preserve", "--encrypt", "", "owner", "256",
                                 "--", plain, encrypted}));
    const std::string merged = bench.merge({plain, encrypted, plain});
    expectPages(merged, {200, 200, 200}, {"one", "one", "one"});
    EXPECT_EQ(countOf("/Width 40", everyObject(merged)), 2U);
    EXPECT_EQ(countOf(shade(), Bench::read(merged)), 2U);
}

}  // namespace
}  // namespace quirebind::pdftest
