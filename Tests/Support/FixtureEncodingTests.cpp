// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The encoders against qpdf's decoders.

#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Tests/Support/FixtureEncoding.h"
#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/Oracle.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::test {
namespace {

/// Bytes with runs, repetitions and noise, the same in every run.
std::string sampleData(std::size_t size) {
    std::string data;
    unsigned state = 12345;
    while (data.size() < size) {
        state = state * 1103515245U + 12345U;
        const auto byte = static_cast<char>(static_cast<unsigned char>((state >> 16U) & 0xFFU));
        const std::size_t kind = (state >> 8U) & 3U;
        data.append(kind == 0 ? (state >> 24U) + 1U : 1U, byte);
        if (kind == 1) data += "the same words again";
        if (kind == 2) data.append(4, '\0');
    }
    data.resize(size);
    return data;
}

/// A document without pages whose object 3 is a stream of that data.
std::string fileWithStream(const std::string& entries, const std::string& options,
                           const std::string& data) {
    std::string hex;
    for (const char c : data) hex += encodeASCIIHex({&c, 1}).substr(0, 2) + " ";
    if (!hex.empty()) hex = "{{hex " + hex + "}}";
    return fixturePDF(
        "{{header 1.7}}\n"
        "{{object 1 0}} << /Type /Catalog /Pages 2 0 R >> endobj\n"
        "{{object 2 0}} << /Type /Pages /Kids [] /Count 0 >> endobj\n"
        "{{object 3 0}}\n<< /Length {{length}} " +
        entries + " >>\n{{stream " + options + "}}\n" + hex +
        "{{endstream}}\nendobj\n"
        "{{xref}}\ntrailer << /Size {{size}} /Root 1 0 R >>\n"
        "{{startxref}}\n%%EOF\n");
}

struct Chain {
    Chain(std::string itsName, std::string itsOptions, std::string itsEntries)
        : name(std::move(itsName)),
          options(std::move(itsOptions)),
          entries(std::move(itsEntries)) {}

    std::string name;
    std::string options;  ///< Of the directive.
    std::string entries;  ///< Of the dictionary.
};

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds it by this name.
void PrintTo(const Chain& chain, std::ostream* out) {
    *out << chain.name;
}

class EncodedStream : public ::testing::TestWithParam<Chain> {};

TEST_P(EncodedStream, isDecodedToItsDataByAnotherReader) {
    for (const std::size_t size : {0U, 1U, 2U, 3U, 4U, 5U, 127U, 128U, 129U, 300U, 90000U}) {
        const std::string data = sampleData(size);
        const TemporaryFolder folder;
        folder.write("a.pdf", fileWithStream(GetParam().entries, GetParam().options, data));
        EXPECT_EQ(streamData(folder / "a.pdf", 3), data) << size;
    }
}

std::vector<Chain> chains() {
    return {
        {"plain", "", ""},
        {"flate", "filter=/FlateDecode", "/Filter /FlateDecode"},
        {"lzw", "filter=/LZWDecode", "/Filter /LZWDecode"},
        {"lzwLate", "filter=/LZWDecode early=0",
         "/Filter /LZWDecode /DecodeParms << /EarlyChange 0 >>"},
        {"runLength", "filter=/RunLengthDecode", "/Filter /RunLengthDecode"},
        {"hex", "filter=/ASCIIHexDecode", "/Filter /ASCIIHexDecode"},
        {"base85", "filter=/ASCII85Decode", "/Filter /ASCII85Decode"},
        {"chain", "filter=/ASCII85Decode,/LZWDecode,/RunLengthDecode",
         "/Filter [/ASCII85Decode /LZWDecode /RunLengthDecode]"},
    };
}

INSTANTIATE_TEST_SUITE_P(Filters, EncodedStream, ::testing::ValuesIn(chains()),
                         [](const auto& one) { return one.param.name; });

/// With data of whole rows only: readers disagree about a last row that is cut short.
TEST(Predictor, isUndoneByAnotherReader) {
    const std::string data = sampleData(std::size_t{5} * 400);
    for (const int predictor : {2, 10, 11, 12, 13, 14, 15}) {
        const std::string number = std::to_string(predictor);
        const TemporaryFolder folder;
        folder.write("a.pdf",
                     fileWithStream("/Filter /FlateDecode /DecodeParms << /Predictor " + number +
                                        " /Columns 5 >>",
                                    "filter=/FlateDecode columns=5 predictor=" + number, data));
        EXPECT_EQ(streamData(folder / "a.pdf", 3), data) << predictor;
    }
}

TEST(Predictor, leavesTheTagOfItsFunctionOnEachRow) {
    EXPECT_EQ(applyPredictor("\1\2\3\5\6\7", 12, 3), std::string("\2\1\2\3\2\4\4\4", 8));
    EXPECT_EQ(applyPredictor("\1\2\4\1\2\4", 2, 3), "\1\1\2\1\1\2");
    EXPECT_EQ(applyPredictor("abcde", 15, 1)[8], '\4');
}

TEST(Predictor, refusesUnknownOnes) {
    EXPECT_THROW(static_cast<void>(applyPredictor("a", 3, 1)), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(applyPredictor("a", 12, 0)), std::invalid_argument);
}

}  // namespace
}  // namespace quirebind::test
