// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Cross-reference streams (ISO 32000-2, 7.5.8) with all the freedom that their dictionaries give.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"

namespace quirebind::pdftest {
namespace {

const std::string kEnd = "\n{{startxref}}\n%%EOF\n";

std::string withStream(const std::string& options, const std::string& entries = "") {
    return "{{header 1.5}}\n" + std::string(kOnePage) + "{{xrefstream 6 0 " + options +
           "}}\n/Root 1 0 R " + entries + "\n{{endxrefstream}}" + kEnd;
}

std::vector<Kind> ordinaryKinds() {
    return {
        {"plain", withStream("")},
        {"withWideFields", withStream("W=2,5,4")},
        {"withFieldsOfEightBytes", withStream("W=1,8,8")},
        {"withoutTypes", withStream("W=0,3,1 zero=no")},
        {"withoutGenerations", withStream("W=1,3,0 zero=no")},
        {"withOnlyOffsets", withStream("W=0,3,0 zero=no")},
        {"inSeveralSubsections", withStream("split=2,3,5")},
        {"withoutIndex", withStream("without=/Index")},
        {"withoutType", withStream("without=/Type")},
        {"withEscapedNames",
         replaced(withStream("filter=/FlateDecode without=/Filter", "/Filter /Fl#61teDecode"),
                  "/Root", "/#52oot")},
        {"withMoreSizeThanRows", withStream("without=/Index", "/Size 100")},
        // What follows the rows that /Index speaks of is no entry.
        {"withEntriesOfUnknownTypes", withStream("", "/Unknown true")},
    };
}

std::vector<Kind> encodedKinds() {
    std::vector<Kind> kinds;
    const auto add = [&kinds](std::string name, const std::string& options,
                              const std::string& entries) {
        std::erase_if(name, [](char c) { return c == '/' || c == ','; });
        kinds.emplace_back(name, withStream(options, entries));
    };
    for (const std::string filter :
         {"/FlateDecode", "/LZWDecode", "/RunLengthDecode", "/ASCIIHexDecode", "/ASCII85Decode",
          "/ASCIIHexDecode,/FlateDecode", "/ASCII85Decode,/RunLengthDecode,/LZWDecode"}) {
        add("through" + filter, "filter=" + filter, "");
    }
    for (const std::string predictor : {"2", "10", "11", "12", "13", "14", "15"}) {
        add("throughFlateWithPredictor" + predictor, "filter=/FlateDecode predictor=" + predictor,
            "");
        add("throughLZWWithPredictor" + predictor,
            "W=1,2,2 filter=/LZWDecode predictor=" + predictor, "");
    }
    add("throughLZWWithoutEarlyChange", "filter=/LZWDecode early=0", "");
    add("throughHexAndFlateWithPredictor", "filter=/ASCIIHexDecode,/FlateDecode predictor=12", "");
    // The abbreviations are meant for inline images (ISO 32000-2, table 92).
    add("throughAnAbbreviatedFilter", "filter=/FlateDecode without=/Filter", "/Filter /Fl");
    add("throughAFilterInAnArray", "filter=/FlateDecode without=/Filter,/DecodeParms",
        "/Filter [/FlateDecode] /DecodeParms [null]");
    add("withParametersThatAreNull", "filter=/FlateDecode", "/DecodeParms null");
    return kinds;
}

INSTANTIATE_TEST_SUITE_P(CrossReferenceStream, ReadableFile, ::testing::ValuesIn(ordinaryKinds()),
                         nameOfKind);
INSTANTIATE_TEST_SUITE_P(EncodedCrossReferenceStream, ReadableFile,
                         ::testing::ValuesIn(encodedKinds()), nameOfKind);

// Object 5, the font, is of a type that does not exist: a reference to it means null
// (ISO 32000-2, 7.5.8.3).
TEST(CrossReferenceStream, listsNothingWhereTheTypeIsUnknown) {
    const Bench bench;
    const std::string text =
        replaced(withStream(""), "{{xrefstream", "{{entry 5 7 1 2}}\n{{xrefstream");
    const std::string merged = bench.mergeFixture(text);
    expectSound(merged, 1);
    EXPECT_EQ(everyObject(merged).find("Helvetica"), std::string::npos);
}

// The offset leads from the header, past the largest number that there is, to the file's beginning.
TEST(CrossReferenceStream, doesNotLeadToWhatIsBeforeTheHeader) {
    const Bench bench;
    const std::string junk =
        "5 0 obj\n<< /Type /Font /Subtype /Type1 /BaseFont /Courier >>\nendobj\n";
    const std::string offset =
        std::to_string(std::numeric_limits<std::uint64_t>::max() - junk.size() + 1);
    const std::string text = replaced(withStream("W=1,8,2"), "{{xrefstream",
                                      "{{entry 5 1 " + offset + " 0}}\n{{xrefstream");
    const std::string merged = bench.mergeFixture(junk + text);
    expectSound(merged, 1);
    const std::string all = everyObject(merged);
    EXPECT_EQ(all.find("Courier"), std::string::npos);
    EXPECT_NE(all.find("Helvetica"), std::string::npos);
}

// Nothing can be learnt from them, but the objects that they should list are all in the file.
INSTANTIATE_TEST_SUITE_P(
    BrokenCrossReferenceStream, ReadableFile,
    ::testing::Values(Kind("withoutWidths", withStream("without=/W")),
                      Kind("withNegativeWidths", withStream("", "/W [1 -4 2]")),
                      Kind("withRowsOfNothing", withStream("", "/W [0 0 0]")),
                      Kind("throughAnUnknownFilter", withStream("", "/Filter /Unknown")),
                      Kind("throughAPictureFilter", withStream("", "/Filter /DCTDecode")),
                      Kind("withNegativeNumbers", withStream("", "/Index [-1 6]"))),
    nameOfKind);

}  // namespace
}  // namespace quirebind::pdftest
