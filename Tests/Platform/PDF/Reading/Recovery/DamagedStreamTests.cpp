// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Object streams and cross-reference streams (ISO 32000-2, 7.5.7 and 7.5.8) that are damaged, or
// that are all that is left to read a file by.

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"
#include "Tests/Support/FixturePDF.h"

namespace quirebind::pdftest {
namespace {

const std::string kMembers = R"({{object 1}}
<< /Type /Catalog /Pages 2 0 R >>
{{object 2}}
<< /Type /Pages /Kids [3 0 R] /Count 1 >>
{{object 3}}
<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 4 0 R
   /Resources << /Font << /F1 5 0 R >> >> >>
{{object 5}}
<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>
)";

const std::string kWiderPage =
    "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 400 300] /Contents 4 0 R "
    "/Resources << /Font << /F1 5 0 R >> >> >>\n";

std::string content() {
    const std::size_t begin = kOnePage.find("{{object 4 0}}");
    return std::string(kOnePage.substr(begin, kOnePage.find("{{object 5 0}}") - begin));
}

std::string stream(int number, const std::string& members, const std::string& options = "") {
    return "{{objectstream " + std::to_string(number) + " 0 " + options + "}}\n" + members +
           "{{endobjectstream}}\n";
}

const std::string kSection =
    "{{xrefstream 9 0 filter=/FlateDecode predictor=12}}\n/Root 1 0 R\n{{endxrefstream}}\n";

std::string packed(const std::string& objects, const std::string& end) {
    return "{{header 1.5}}\n" + content() + objects + end;
}

const std::string kPacked = stream(6, kMembers, "filter=/FlateDecode");
const std::string kEnd = "{{startxref}}\n%%EOF\n";

INSTANTIATE_TEST_SUITE_P(
    ObjectStreamWithoutASection, ReadableFile,
    ::testing::Values(
        Kind("atAll", packed(kPacked, "")),  //
        Kind("butATrailer", packed(kPacked, "trailer\n<< /Root 1 0 R >>\n")),
        Kind("thatCanBeFound", packed(kPacked, kSection + "startxref\n3\n%%EOF\n")),
        Kind("thatCanBeDecoded",
             packed(kPacked, replaced(kSection, "/Root", "/Filter /Unknown /Root") + kEnd)),
        Kind("whoseOwnLengthIsInAnother",
             packed(stream(7, "{{object 8}}\n{{length 6}}\n") +
                        replaced(kPacked, "{{object 1}}", "/Length 8 0 R {{object 1}}"),
                    "")),
        Kind("inAFileOfOthers",
             packed(stream(6, kMembers.substr(0, kMembers.find("{{object 3}}"))) +
                        stream(7, kMembers.substr(kMembers.find("{{object 3}}"))),
                    ""))),
    nameOfKind);

// Of an object in a stream and one outside the later one counts, as of any two.
INSTANTIATE_TEST_SUITE_P(
    ObjectInAStream, ReadableFile,
    ::testing::Values(
        Kind("losesToALaterOneOutside",
             packed(kPacked + "{{object 3 0}}\n" + kWiderPage + "endobj\n", ""), {400}),
        Kind("winsOverAnEarlierOneOutside",
             packed("{{object 3 0}}\n" + kWiderPage + "endobj\n" + kPacked, "")),
        Kind("losesToOneInALaterStream",
             packed(kPacked + stream(7, "{{object 3}}\n" + kWiderPage), ""), {400}),
        Kind("isGoneWithItsStream", packed(stream(7, "{{object 3}}\n" + kWiderPage) + kPacked +
                                               stream(7, "{{object 20}}\n1\n"),
                                           ""))),
    nameOfKind);

const std::string kHybrid =
    "{{header 1.5}}\n" + content() + kPacked +
    "{{xrefstream 9 0 hybrid}}\n/Root 1 0 R\n{{endxrefstream}}\n{{xref}}\n"
    "trailer\n<< /Size {{size}} /Root 1 0 R /XRefStm {{offset 9}} >>\n{{startxref}}\n%%EOF\n";

INSTANTIATE_TEST_SUITE_P(
    HybridFile, ReadableFile,
    ::testing::Values(Kind("thatIsSound", kHybrid),
                      Kind("whoseStreamIsElsewhere", replaced(kHybrid, "{{offset 9}}", "77")),
                      Kind("whoseStreamIsNotNamed", replaced(kHybrid, "/XRefStm {{offset 9}}", "")),
                      Kind("whoseTableIsElsewhere",
                           replaced(kHybrid, "{{startxref}}", "startxref\n12"))),
    nameOfKind);

/// The bytes of a document in which those of the stream that begins behind `marker` are changed.
class DamagedBytes : public ::testing::Test {
 protected:
    /// Where the body of the stream behind `marker` begins and ends.
    struct Body {
        std::size_t begin = 0;
        std::size_t end = 0;
    };
    static Body bodyBehind(const std::string& bytes, std::string_view marker) {
        const std::size_t keyword = bytes.find("stream\n", bytes.find(marker));
        const std::size_t end = bytes.find("\nendstream", keyword);
        EXPECT_NE(end, std::string::npos);
        return {keyword + 7, end};
    }
    void expectOnePage(const std::string& bytes) {
        expectPages(bench_.merge({bench_.add("source.pdf", bytes)}), {200}, {"one"});
    }
    void expectRefusal(const std::string& bytes) {
        EXPECT_FALSE(bench_.tryMerge({bench_.add("source.pdf", bytes)}));
    }

 private:
    Bench bench_;
};

using ObjectStreamBytes = DamagedBytes;
using CrossReferenceStreamBytes = DamagedBytes;

// Objects that no page needs fill the stream, so that what is cut off is not missed.
std::string filled(const std::string& end) {
    std::string filling;
    for (int i = 100; i < 200; ++i) {
        const std::string number = std::to_string(i);
        filling += "{{object " + number + "}}\n(" + number + std::string(50, 'x') + ")\n";
    }
    return test::fixturePDF(packed(stream(6, kMembers + filling, "filter=/FlateDecode"), end));
}

TEST_F(ObjectStreamBytes, withAWrongChecksumAreUsed) {
    for (const std::string& end : {std::string(), kSection + kEnd}) {
        std::string bytes = filled(end);
        const Body body = bodyBehind(bytes, "/ObjStm");
        for (std::size_t i = body.end - 4; i < body.end; ++i) bytes[i] = 'x';
        expectOnePage(bytes);
    }
}

TEST_F(ObjectStreamBytes, thatEndEarlyAreUsedUpToTheEnd) {
    for (const std::string& end : {std::string(), kSection + kEnd}) {
        std::string bytes = filled(end);
        const Body body = bodyBehind(bytes, "/ObjStm");
        for (std::size_t i = body.end - 40; i < body.end; ++i) bytes[i] = '\xff';
        expectOnePage(bytes);
    }
}

TEST_F(ObjectStreamBytes, thatEndBeforeThePageAreRefused) {
    for (const std::string& end : {std::string(), kSection + kEnd}) {
        std::string bytes = filled(end);
        const Body body = bodyBehind(bytes, "/ObjStm");
        for (std::size_t i = body.begin; i < body.end; ++i) bytes[i] = '\xff';
        expectRefusal(bytes);
    }
}

TEST_F(CrossReferenceStreamBytes, withAWrongChecksumAreUsed) {
    std::string bytes = test::fixturePDF(packed(kPacked, kSection + kEnd));
    const Body body = bodyBehind(bytes, "/XRef");
    for (std::size_t i = body.end - 4; i < body.end; ++i) bytes[i] = 'x';
    expectOnePage(bytes);
}

TEST_F(CrossReferenceStreamBytes, thatAreGarbageAreDoneWithout) {
    std::string bytes = test::fixturePDF(packed(kPacked, kSection + kEnd));
    const Body body = bodyBehind(bytes, "/XRef");
    for (std::size_t i = body.begin; i < body.end; ++i) bytes[i] = '\xff';
    expectOnePage(bytes);
}

}  // namespace
}  // namespace quirebind::pdftest
