// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Object streams (ISO 32000-2, 7.5.7).

#include <algorithm>
#include <string>
#include <vector>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"

namespace quirebind::pdftest {
namespace {

const std::string kMembers = R"({{object 1}}
<< /Type /Catalog /Pages 2 0 R >>
{{object 2}}
<< /Type /Pages /Kids [3 0 R] /Count 1 >>
{{object 3}}
<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 4 0 R
   /Resources << /Font << /F1 5 0 R >> >> >>
)";

const std::string kFontMember = R"({{object 5}}
<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>
)";

std::string content() {
    const std::size_t begin = kOnePage.find("{{object 4 0}}");
    return std::string(kOnePage.substr(begin, kOnePage.find("{{object 5 0}}") - begin));
}

const std::string kEnd =
    "{{xrefstream 9 0}}\n/Root 1 0 R\n{{endxrefstream}}\n{{startxref}}\n%%EOF\n";

std::string packed(const std::string& options, const std::string& entries = "",
                   const std::string& more = "") {
    return "{{header 1.5}}\n" + content() + "{{objectstream 6 0 " + options + "}}\n" + entries +
           "\n" + kMembers + kFontMember + "{{endobjectstream}}\n" + more + kEnd;
}

std::vector<Kind> encodedKinds() {
    std::vector<Kind> kinds;
    for (const std::string filter :
         {"/FlateDecode", "/LZWDecode", "/RunLengthDecode", "/ASCIIHexDecode", "/ASCII85Decode",
          "/ASCIIHexDecode,/FlateDecode", "/ASCII85Decode,/RunLengthDecode,/LZWDecode"}) {
        std::string name = "through" + filter;
        std::erase_if(name, [](char c) { return c == '/' || c == ','; });
        kinds.emplace_back(name, packed("filter=" + filter));
    }
    kinds.emplace_back("throughLZWWithoutEarlyChange", packed("filter=/LZWDecode early=0"));
    kinds.emplace_back("throughFlateWithPredictor",
                       packed("filter=/FlateDecode predictor=15 columns=7"));
    // The abbreviations are meant for inline images (ISO 32000-2, table 91).
    kinds.emplace_back("throughAnAbbreviatedEntry",
                       packed("filter=/FlateDecode without=/Filter", "/F /FlateDecode"));
    kinds.emplace_back("withAbbreviatedParameters",
                       packed("filter=/FlateDecode predictor=15 columns=7 without=/DecodeParms",
                              "/DP << /Predictor 15 /Columns 7 >>"));
    kinds.emplace_back("throughLZWWithPredictor",
                       packed("filter=/LZWDecode predictor=2 columns=5"));
    return kinds;
}

INSTANTIATE_TEST_SUITE_P(EncodedObjectStream, ReadableFile, ::testing::ValuesIn(encodedKinds()),
                         nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    ObjectStream, ReadableFile,
    ::testing::Values(
        Kind("plain", packed("")),
        Kind("withIndirectLength", packed("filter=/FlateDecode", "/Length 8 0 R",
                                          "{{object 8 0}}\n{{length 6}}\nendobj\n")),
        Kind("withIndirectCountAndFirst", packed("", "/N 8 0 R", "{{object 8 0}}\n4\nendobj\n")),
        Kind("withIndirectFilter", packed("filter=/FlateDecode", "/Filter 8 0 R",
                                          "{{object 8 0}}\n/FlateDecode\nendobj\n")),
        Kind("withWrongLength", packed("filter=/FlateDecode", "/Length {{length+3}}")),
        Kind("withWrongIndexes",
             packed("", "", "{{entry 3 2 6 0}}\n{{entry 5 2 6 77}}\n{{entry 1 2 6 2}}\n")),
        Kind("thatPromisesMoreObjects", packed("", "/N 99")),
        Kind("thatIsNotListed", packed("", "", "{{free 6 1}}\n")),
        Kind("thatExtendsAnother",
             "{{header 1.5}}\n" + content() + "{{objectstream 6 0}}\n" + kFontMember +
                 "{{endobjectstream}}\n{{objectstream 7 0}}\n/Extends 6 0 R\n" + kMembers +
                 "{{endobjectstream}}\n" + kEnd),
        Kind("amongOthers", "{{header 1.5}}\n" + content() + "{{objectstream 6 0}}\n" +
                                kFontMember +
                                "{{endobjectstream}}\n{{objectstream 7 0 filter=/FlateDecode}}\n" +
                                kMembers + "{{endobjectstream}}\n" + kEnd)),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    BrokenObjectStream, RefusedFile,
    ::testing::Values(Kind("thatIsNoStream",
                           replaced(packed(""), "{{xrefstream",
                                    "{{object 6 0}}\n<< /N 4 /First 20 >>\nendobj\n{{xrefstream")),
                      Kind("withoutFirst", packed("without=/First")),
                      Kind("withNegativeFirst", packed("", "/First -5")),
                      Kind("withFirstBehindItsEnd", packed("", "/First 99999")),
                      Kind("withoutCount", packed("without=/N")),
                      Kind("thatLacksThePage", packed("", "/N 2")),
                      Kind("throughAnUnknownFilter", packed("", "/Filter /Unknown"))),
    nameOfKind);

}  // namespace
}  // namespace quirebind::pdftest
