// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// A mistake in a fixture must not pass for a deliberate defect.

#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Support/FixturePDF.h"

namespace quirebind::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

struct Mistake {
    Mistake(std::string itsName, std::string itsText, int itsLine, std::string whatIsSaid)
        : name(std::move(itsName)),
          text(std::move(itsText)),
          line(itsLine),
          said(std::move(whatIsSaid)) {}

    std::string name;
    std::string text;
    int line;
    std::string said;
};

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds it by this name.
void PrintTo(const Mistake& mistake, std::ostream* out) {
    *out << mistake.name;
}

class FixtureMistake : public ::testing::TestWithParam<Mistake> {};

TEST_P(FixtureMistake, isReportedWithItsLine) {
    try {
        const std::string bytes = fixturePDF(GetParam().text);
        FAIL() << "it was accepted: " << bytes;
    } catch (const std::invalid_argument& error) {
        EXPECT_THAT(error.what(), StartsWith("line " + std::to_string(GetParam().line) + ": "));
        EXPECT_THAT(error.what(), HasSubstr(GetParam().said));
    }
}

const std::vector<Mistake>& mistakes() {
    static const std::vector<Mistake> all{
        {"empty", "", 1, "empty"},
        {"unknownDirective", "a\n{{objekt 1 0}}", 2, "unknown directive 'objekt'"},
        {"noName", "{{}}", 1, "without a name"},
        {"notClosed", "a\n\n{{object 1 0\n}}", 3, "does not end"},
        {"lineCountsFromTheTextsBegin", "\n\n{{x}}", 3, "unknown directive"},
        {"tooFewArguments", "{{object 1}}", 1, "arguments"},
        {"tooManyArguments", "{{object 1 0 0}}", 1, "arguments"},
        {"notANumber", "{{object one 0}}", 1, "'one' is not a number"},
        {"negativeNumber", "{{object -1 0}}", 1, "'-1' is not a number"},
        {"unknownOption", "{{xref splat=1}}", 1, "no option splat"},
        {"optionTwice", "{{xref split=1 split=2}}", 1, "twice"},
        {"optionNotANumber", "{{xref shift=x}}", 1, "'x' is not a number"},
        {"unknownObject", "a\n{{offset 3}}", 2, "'3' is not known"},
        {"unknownLabel", "a\n{{offset here}}", 2, "'here' is not known"},
        {"negativeOffset", "{{label x}}{{offset x-1}}", 1, "negative"},
        {"badLabel", "{{label 1x}}", 1, "not a name"},
        {"labelTwice", "{{label x}}\n{{label x}}\na", 2, "there already"},
        {"badByte", "{{hex 0}}", 1, "'0' is not a byte"},
        {"badHexDigit", "{{hex 0g}}", 1, "'0g' is not a byte"},
        {"badLineEnd", "{{eol lfcr}}\na", 1, "lf, cr or crlf"},
        {"twoHeaders", "{{header 1.1}}\n{{header 1.2}}", 2, "once and first"},
        {"headerAfterObject", "{{object 1 0}}\n{{header 1.2}}", 2, "once and first"},
        {"badOrigin", "{{header 1.1 origin=here}}", 1, "origin="},
        {"lengthOutsideObject", "{{length}}", 1, "before any object"},
        {"lengthWithoutStream", "{{object 1 0}}\n{{length}}", 2, "no stream"},
        {"lengthOfUnknownObject", "{{object 1 0}}\n{{length 2}}", 2, "no stream"},
        {"streamOutsideObject", "{{stream}}\n{{endstream}}", 1, "before any object"},
        {"streamNotEnded", "{{object 1 0}}\n{{stream}}\na", 2, "not ended"},
        {"streamNotOpened", "a\n{{endstream}}", 2, "cannot stand here"},
        {"dataBesideStream", "{{object 1 0}}\n{{stream}} a\n{{endstream}}", 2, "end its line"},
        {"objectInStream", "{{object 1 0}}\n{{stream}}\n{{object 2 0}}\n{{endstream}}", 3,
         "cannot stand here"},
        {"unknownFilter", "{{object 1 0}}\n{{stream filter=/Flate}}\n{{endstream}}", 2,
         "unknown filter '/Flate'"},
        {"unknownPredictor",
         "{{object 1 0}}\n{{stream filter=/FlateDecode predictor=9}}\n{{endstream}}", 2,
         "unknown predictor 9"},
        {"predictorWithoutFilter", "{{object 1 0}}\n{{stream predictor=12}}\n{{endstream}}", 2,
         "needs /FlateDecode"},
        {"noColumns",
         "{{object 1 0}}\n{{stream filter=/FlateDecode predictor=2 columns=0}}\n{{endstream}}", 2,
         "columns"},
        {"generationInObjectStream", "{{objectstream 1 0}}\n{{object 2 0}}\n{{endobjectstream}}", 2,
         "arguments"},
        {"objectStreamNotEnded", "{{objectstream 1 0}}\n{{object 2}}", 1, "not ended"},
        {"sectionInObjectStream", "{{objectstream 1 0}}\n{{xref}}\n{{endobjectstream}}", 2,
         "cannot stand here"},
        {"shortEntriesWithLongLineEnds", "{{eol crlf}}\n{{xref entry=19}}", 2, "one byte"},
        {"unknownEntrySize", "{{xref entry=21}}", 1, "19 or 20"},
        {"typeThatTablesLack", "{{entry 1 3 0 0}}\n{{xref}}", 2, "type 3"},
        {"offsetTooLargeForTable", "{{entry 1 1 12345678901 0}}\n{{xref}}", 2, "too large"},
        {"badZero", "{{xref zero=maybe}}", 1, "zero="},
        {"prevInFirstSection", "{{xref}}\n{{prev}}", 2, "no section before"},
        {"startxrefWithoutSection", "{{startxref}}", 1, "no section above"},
        {"twoWidths", "{{xrefstream 1 0 W=1,2}}\n{{endxrefstream}}", 1, "three widths"},
        {"widthTooSmall", "{{xrefstream 1 0 W=1,2,1}}\n{{endxrefstream}}", 1, "does not fit"},
        {"noTypeField", "{{xrefstream 1 0 W=0,2,2}}\n{{endxrefstream}}", 1, "needs a type field"},
        {"hybridMisspelt", "{{xrefstream 1 0 hybird}}\n{{endxrefstream}}", 1, "hybrid"},
    };
    return all;
}

INSTANTIATE_TEST_SUITE_P(All, FixtureMistake, ::testing::ValuesIn(mistakes()),
                         [](const auto& one) { return one.param.name; });

TEST(SimplePDF, refusesLabelsThatAreNoPlainText) {
    EXPECT_THROW(static_cast<void>(simplePDF(1, {.label = "a)b"})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(simplePDF(-1)), std::invalid_argument);
}

}  // namespace
}  // namespace quirebind::test
