// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Files that are made to exhaust or to crash whoever reads them. Each is refused or merged in the
// end, whichever; what must not happen is told apart by how the reading process ends.

#include <csignal>
#include <cstdint>
#include <filesystem>
#include <new>
#include <sstream>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <zlib.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/ChildProcess.h"

namespace quirebind::pdftest {
namespace {

enum class Outcome : std::uint8_t { merged, refused, hung, crashed };

/// What becomes of a process that merges the file. The time is many times what any of the files
/// takes, also on a slow machine.
Outcome outcomeOf(const Bench& bench, const std::string& path) {
    constexpr unsigned kSeconds = 100;
    constexpr int kRefused = 3;
    const int result = inChildProcess([&] {
        ::alarm(kSeconds);
        return bench.tryMerge({path}) ? 0 : kRefused;
    });
    if (result == 0) return Outcome::merged;
    if (result == kRefused) return Outcome::refused;
    return result == -SIGALRM ? Outcome::hung : Outcome::crashed;
}

class Hostile : public ::testing::Test {
 protected:
    void expectAnEnd(const std::string& text) {
        EXPECT_THAT(outcomeOf(bench_, bench_.fixture("hostile.pdf", text)),
                    ::testing::AnyOf(Outcome::merged, Outcome::refused));
    }
    void expectRefusal(const std::string& text) {
        EXPECT_EQ(outcomeOf(bench_, bench_.fixture("hostile.pdf", text)), Outcome::refused);
    }
    void expectMerge(const std::string& text) {
        EXPECT_EQ(outcomeOf(bench_, bench_.fixture("hostile.pdf", text)), Outcome::merged);
    }
    [[nodiscard]] const Bench& bench() const { return bench_; }

 private:
    Bench bench_;
};

std::string withEntry(const std::string& entry, const std::string& objects = "") {
    return replaced(onePageWith(objects), "/MediaBox", entry + " /MediaBox");
}

std::string withXRefStream(const std::string& options, const std::string& entries) {
    return "{{header 1.5}}\n" + std::string(kOnePage) + "{{xrefstream 6 0 " + options +
           "}}\n/Root 1 0 R " + entries + "\n{{endxrefstream}}\n{{startxref}}\n%%EOF\n";
}

/// The page and its tree in object stream 6, whose dictionary has those entries.
std::string withObjectStream(const std::string& options, const std::string& entries,
                             const std::string& objects = "", const std::string& members = "") {
    const std::string text(kOnePage);
    std::string packed = text.substr(0, text.find("{{object 4 0}}"));
    for (const auto& [object, member] :
         {std::pair("{{object 1 0}}", "{{object 1}}"), std::pair("{{object 2 0}}", "{{object 2}}"),
          std::pair("{{object 3 0}}", "{{object 3}}")}) {
        packed = replaced(replaced(packed, object, member), "endobj\n", "");
    }
    return "{{header 1.5}}\n" + text.substr(text.find("{{object 4 0}}")) + objects +
           "{{objectstream 6 0 " + options + "}}\n" + entries + "\n" + packed + members +
           "{{endobjectstream}}\n{{xrefstream 9 0}}\n/Root 1 0 R\n{{endxrefstream}}\n"
           "{{startxref}}\n%%EOF\n";
}

std::string nested(const std::string& open, const std::string& close, int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += open;
    for (int i = 0; i < depth; ++i) text += close;
    return text;
}

TEST_F(Hostile, widthsOfCrossReferenceFields) {
    // The section is of no use, but the objects are all there.
    expectMerge(withXRefStream("", "/W [1 2147483647 2]"));
    expectMerge(withXRefStream("", "/W [1 9223372036854775807 9223372036854775807]"));
    expectMerge(withXRefStream("", "/W [-1 4 2]"));
}

TEST_F(Hostile, columnsOfAPredictor) {
    for (const std::string columns :
         {"1000000000", "2147483647", "9223372036854775807", "-1", "0"}) {
        expectAnEnd(withXRefStream("filter=/FlateDecode without=/DecodeParms",
                                   "/DecodeParms << /Predictor 12 /Columns " + columns +
                                       " /Colors 32 /BitsPerComponent 16 >>"));
    }
}

TEST_F(Hostile, hundredsOfThousandsOfTheSameKid) {
    std::string kids;
    for (int i = 0; i < 200'000; ++i) kids += "3 0 R ";
    expectAnEnd(replaced(onePageWith(), "[3 0 R]", "[" + kids + "]"));
}

// Each level lists the next one twice: 2 to the power of 40 pages.
TEST_F(Hostile, pageTreeWhoseNodesDouble) {
    constexpr int kLevels = 40;
    std::ostringstream nodes;
    for (int i = 0; i < kLevels; ++i) {
        const int next = i + 1 == kLevels ? 3 : 101 + i;
        nodes << "{{object " << 100 + i << " 0}}\n<< /Kids [" << next << " 0 R " << next
              << " 0 R] >>\nendobj\n";
    }
    expectRefusal(replaced(onePageWith(nodes.str()), "[3 0 R]", "[100 0 R]"));
}

TEST_F(Hostile, deeplyNestedArrays) {
    expectAnEnd(withEntry("/Deep " + nested("[", "]", 100'000)));
    expectAnEnd(withEntry("/Deep " + nested("[", "", 100'000)));
}

TEST_F(Hostile, deeplyNestedDictionaries) {
    expectAnEnd(withEntry("/Deep " + nested("<</A", ">>", 100'000)));
    expectAnEnd(withEntry("/Deep " + nested("<<", "", 100'000)));
}

TEST_F(Hostile, deeplyNestedStrings) {
    expectMerge(withEntry("/Deep " + nested("(", ")", 100'000)));
    expectAnEnd(withEntry("/Deep " + nested("(", "", 100'000)));
}

TEST_F(Hostile, longChainsOfObjects) {
    std::ostringstream objects;
    constexpr int kObjects = 50'000;
    for (int i = 0; i < kObjects; ++i) {
        objects << "{{object " << 100 + i << " 0}} [" << 101 + i << " 0 R] endobj\n";
    }
    expectMerge(withEntry("/Chain 100 0 R", objects.str()));
}

TEST_F(Hostile, deepPageTree) {
    constexpr int kDepth = 10'000;
    std::ostringstream nodes;
    for (int i = 0; i < kDepth; ++i) {
        nodes << "{{object " << 100 + i << " 0}} << /Type /Pages /Kids ["
              << (i + 1 == kDepth ? 3 : 101 + i) << " 0 R] >> endobj\n";
    }
    expectAnEnd(replaced(onePageWith(nodes.str()), "[3 0 R]", "[100 0 R]"));
}

TEST_F(Hostile, pageTreeThatLeadsBack) {
    expectAnEnd(replaced(onePageWith(), "[3 0 R]", "[2 0 R]"));
    expectAnEnd(replaced(onePageWith("{{object 9 0}} << /Kids [10 0 R] >> endobj\n"
                                     "{{object 10 0}} << /Kids [9 0 R 3 0 R] >> endobj\n"),
                         "[3 0 R]", "[9 0 R]"));
}

TEST_F(Hostile, referencesThatLeadBack) {
    expectAnEnd(
        replaced(onePageWith("{{object 9 0}} 10 0 R endobj\n{{object 10 0}} 9 0 R endobj\n"),
                 "/Kids [3 0 R]", "/Kids 9 0 R"));
    expectAnEnd(
        replaced(onePageWith("{{object 9 0}} 9 0 R endobj\n"), "/Root 1 0 R", "/Root 9 0 R"));
    expectAnEnd(replaced(onePageWith("{{object 9 0}} 9 0 R endobj\n"), "/Root 1 0 R",
                         "/Root 1 0 R /Encrypt 9 0 R"));
}

TEST_F(Hostile, lengthThatRefersToItsOwnStream) {
    expectAnEnd(replaced(onePageWith(), "/Length {{length}}", "/Length 4 0 R"));
    expectAnEnd(withObjectStream("", "/Length 6 0 R"));
}

TEST_F(Hostile, objectStreamThatContainsItself) {
    expectAnEnd(
        replaced(withObjectStream("", ""), "{{xrefstream", "{{entry 6 2 6 0}}\n{{xrefstream"));
}

TEST_F(Hostile, objectStreamWhoseLengthIsInAnother) {
    expectAnEnd(withObjectStream("", "/Length 20 0 R",
                                 "{{objectstream 7 0}}\n/Length 21 0 R\n{{object 20}}\n"
                                 "999\n{{endobjectstream}}\n",
                                 "{{object 21}}\n999\n"));
}

TEST_F(Hostile, objectStreamsThatExtendOneAnother) {
    expectAnEnd(withObjectStream("", "/Extends 7 0 R",
                                 "{{objectstream 7 0}}\n/Extends 6 0 R\n{{object 20}}\n"
                                 "999\n{{endobjectstream}}\n"));
}

/// The beginning of a zlib stream that inflates to `text` and `megabytes` of blanks.
std::string deflatedBlanks(const std::string& text, int megabytes) {
    constexpr std::size_t kMegabyte = std::size_t{1} << 20U;
    z_stream state{};
    if (deflateInit(&state, Z_BEST_SPEED) != Z_OK) throw std::bad_alloc();
    std::string result;
    const auto add = [&](std::string bytes) {
        std::string out(deflateBound(&state, bytes.size()) + 64, '\0');
        state.next_in = reinterpret_cast<Bytef*>(bytes.data());  // NOLINT: zlib's types
        state.avail_in = static_cast<uInt>(bytes.size());
        state.next_out = reinterpret_cast<Bytef*>(out.data());  // NOLINT
        state.avail_out = static_cast<uInt>(out.size());
        deflate(&state, Z_FULL_FLUSH);
        return out.substr(0, out.size() - state.avail_out);
    };
    result += add(text);
    // Behind a full flush nothing refers back, so what follows may be repeated.
    const std::string piece = add(std::string(kMegabyte, ' '));
    for (int i = 0; i < megabytes; ++i) result += piece;
    deflateEnd(&state);
    return result;
}

TEST_F(Hostile, objectStreamOfAGigabyte) {
    const std::string text(kOnePage);
    const std::string body =
        deflatedBlanks("1 0 2 50 3 100 << /Type /Catalog /Pages 2 0 R >>                 ", 1024);
    const std::string fill = "{{fill " + std::to_string(body.size()) + " 78}}";
    std::string bytes = test::fixturePDF(
        "{{header 1.5}}\n" + text.substr(text.find("{{object 4 0}}")) +
        "{{object 6 0}}\n<< /Type /ObjStm /N 3 /First 15 /Filter /FlateDecode /Length " +
        std::to_string(body.size()) + " >>\nstream\n" + fill +
        "\nendstream\nendobj\n{{entry 1 2 6 0}}\n{{entry 2 2 6 1}}\n{{entry 3 2 6 2}}\n"
        "{{xrefstream 9 0}}\n/Root 1 0 R\n{{endxrefstream}}\n{{startxref}}\n%%EOF\n");
    bytes.replace(bytes.find(std::string(body.size(), 'x')), body.size(), body);
    EXPECT_EQ(outcomeOf(bench(), bench().add("hostile.pdf", bytes)), Outcome::refused);
}

TEST_F(Hostile, objectNumbersAndSizes) {
    expectAnEnd(replaced(onePageWith("{{entry 2147483647 1 @5 0}}\n"), "{{size}}", "1000000000"));
    expectAnEnd(withXRefStream("", "/Index [2147483640 100] /Size 1000000000"));
    expectAnEnd(withXRefStream("", "/Index [0 9223372036854775807]"));
    expectAnEnd(withXRefStream("", "/Index [9223372036854775807 6]"));
    expectAnEnd(withEntry("/Far [2147483647 0 R 4294967297 0 R 99999999999999999999999 0 R]"));
}

TEST_F(Hostile, subsectionOfManyEntries) {
    for (const std::string count :
         {"1000000000000000000", "18446744073709551615", "99999999999999999999"}) {
        expectAnEnd("{{header 1.7}}\n" + std::string(kOnePage) + "{{label table}}\nxref\n0 " +
                    count +
                    "\n0000000000 65535 f \ntrailer\n<< /Root 1 0 R >>\nstartxref\n"
                    "{{offset table}}\n%%EOF\n");
        expectAnEnd("{{header 1.7}}\n" + std::string(kOnePage) + "{{label table}}\nxref\n" + count +
                    " 1\n0000000000 65535 f \ntrailer\n<< /Root 1 0 R >>\nstartxref\n"
                    "{{offset table}}\n%%EOF\n");
    }
}

TEST_F(Hostile, startxref) {
    const std::string before = "{{header 1.7}}\n" + std::string(kOnePage) +
                               "{{xref}}\ntrailer\n<< /Size 6 /Root 1 0 R >>\nstartxref\n";
    for (const std::string offset : {"99999999", "-1", "-99999999", "18446744073709551615",
                                     "9223372036854775807", "0", "x", ""}) {
        expectAnEnd(before + offset + "\n%%EOF\n");
    }
}

// Written out, the bodies would together be many times as large as the file.
TEST_F(Hostile, streamsThatLieInOneAnother) {
    constexpr int kStreams = 200;
    std::string references;
    std::string streams;
    // From the last to the first, each as long as all that follow; the lengths have ten digits.
    for (int i = kStreams; i > 0; --i) {
        const std::string length = std::to_string(streams.size());
        const std::string number = std::to_string(100 + i);
        references += number + " 0 R ";
        // What a directive writes is as long as what stands in for it here.
        streams = number + " 0 obj << /Length " + std::string(10 - length.size(), '0') + length +
                  " >> stream\n" + streams;
    }
    std::string text =
        withEntry("/PieceInfo << /A [" + references + "] >>", streams + "\nendstream\nendobj\n");
    for (int i = 1; i <= kStreams; ++i) {
        const std::string number = std::to_string(100 + i);
        text = replaced(text, number + " 0 obj", "{{object " + number + " 0}}");
    }
    expectRefusal(text);
}

TEST_F(Hostile, thousandsOfReferencesToALargeObjectListedWrongly) {
    std::string references;
    for (int i = 0; i < 5000; ++i) references += "70 3 R ";
    expectMerge(withEntry(
        "/PieceInfo << /A [" + references + "] >>",
        "{{object 70 3}} (" + std::string(300000, 'x') + ") endobj\n" + "{{entry 70 1 @70 0}}\n"));
}

/// The page 8,000 times, which is not too much syntax to read, with a hundred links that have that
/// entry.
std::string withManyLinks(const std::string& entry, const std::string& catalog) {
    std::string links;
    for (int i = 0; i < 100; ++i)
        links += "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] " + entry + " >>";
    std::string pages;
    for (int i = 0; i < 8000; ++i) pages += "3 0 R ";
    std::string text = withEntry("/Annots [" + links + "]");
    text = replaced(text, "[3 0 R] /Count 1", "[" + pages + "] /Count 8000");
    return replaced(text, "/Type /Catalog", "/Type /Catalog " + catalog);
}

TEST_F(Hostile, destinationThatManyLinksUse) {
    const std::string text = "[3 0 R /XYZ (" + std::string(2000, 'x') + ")]";
    expectRefusal(withManyLinks("/Dest /a", "/Dests << /a " + text + " >>"));
}

TEST_F(Hostile, dictionaryOfADestinationThatManyLinksUse) {
    const std::string text = "<< /X (" + std::string(2000, 'x') + ") /D [3 0 R /Fit] >>";
    expectRefusal(withManyLinks("/Dest /a", "/Dests << /a " + text + " >>"));
}

TEST_F(Hostile, pageThatIsListedThousandsOfTimes) {
    std::string pages;
    for (int i = 0; i < 9000; ++i) pages += "3 0 R ";
    const std::string text = withEntry("/Large (" + std::string(9000, 'x') + ")");
    expectRefusal(replaced(text, "[3 0 R] /Count 1", "[" + pages + "] /Count 9000"));
}

TEST_F(Hostile, pageDeepInNodesThatAreNoObjects) {
    constexpr int kDepth = 60;
    std::string page = "<< /Type /Page /Large (" + std::string(500'000, 'x') + ") >>";
    for (int i = 0; i < kDepth; ++i) page = "<< /Type /Pages /Count 1 /Kids [" + page + "] >>";
    expectRefusal(replaced(onePageWith(), "[3 0 R]", "[" + page + "]"));
}

TEST_F(Hostile, arrayOfNamesThatManyNodesShare) {
    std::string nodes;
    std::string names;
    for (int i = 0; i < 12'000; ++i) nodes += "<< /Names 20 0 R >>";
    for (int i = 0; i < 10'000; ++i) names += "//";
    const std::string text =
        withEntry("/Annots [<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /Dest (a) >>]",
                  "{{object 20 0}}\n[" + names + "]\nendobj\n");
    expectMerge(replaced(text, "/Type /Catalog",
                         "/Type /Catalog /Names << /Dests << /Kids [" + nodes + "] >> >>"));
}

TEST_F(Hostile, fieldWithManyValues) {
    std::string values;
    for (int i = 0; i < 100'000; ++i) values += "/V 1 ";
    const std::string text = withEntry(
        "/Annots [20 0 R]",
        "{{object 20 0}}\n<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] /T (a) /#41 1 " +
            values + ">>\nendobj\n");
    expectMerge(
        replaced(text, "/Type /Catalog", "/Type /Catalog /AcroForm << /Fields [20 0 R] >>"));
}

TEST_F(Hostile, baseOfTheAddressesOfManyLinks) {
    const std::string base = "http://" + std::string(200, 'x') + "/";
    expectRefusal(withManyLinks("/A << /S /URI /URI (a) >>", "/URI << /Base (" + base + ") >>"));
}

TEST_F(Hostile, sparseFile) {
    constexpr std::uintmax_t kSize = std::uintmax_t{3} << 30U;
    const std::string whole = bench().fixture("whole.pdf", onePageWith());
    std::filesystem::resize_file(whole, kSize);
    // What follows its end is passed over, however much it is.
    EXPECT_EQ(outcomeOf(bench(), whole), Outcome::merged);
    const std::string empty = bench().add("empty.pdf", "");
    std::filesystem::resize_file(empty, kSize);
    EXPECT_EQ(outcomeOf(bench(), empty), Outcome::refused);
}

TEST_F(Hostile, fileCutShortAnywhere) {
    const std::string bytes = test::fixturePDF(onePageWith());
    const int result = inChildProcess([&] {
        ::alarm(100);
        for (std::size_t length = 0; length + 6 < bytes.size(); ++length) {
            static_cast<void>(bench().tryMerge({bench().add("cut.pdf", bytes.substr(0, length))}));
        }
        return 0;
    });
    EXPECT_EQ(result, 0);
    for (const std::size_t length : {std::size_t{0}, std::size_t{5}, bytes.size() / 2}) {
        EXPECT_EQ(outcomeOf(bench(), bench().add("cut.pdf", bytes.substr(0, length))),
                  Outcome::refused);
    }
}

TEST_F(Hostile, anyByteWrong) {
    const std::string classic = test::fixturePDF(onePageWith());
    const std::string packed = test::simplePDF(1, {.objectStreams = true});
    const int result = inChildProcess([&] {
        ::alarm(100);
        for (const std::string& good : {classic, packed}) {
            for (std::size_t at = 0; at < good.size(); ++at) {
                for (const char wrong : {'\0', '9', '>', '('}) {
                    std::string bytes = good;
                    bytes[at] = wrong;
                    static_cast<void>(bench().tryMerge({bench().add("wrong.pdf", bytes)}));
                }
            }
        }
        return 0;
    });
    EXPECT_EQ(result, 0);
}

}  // namespace
}  // namespace quirebind::pdftest
