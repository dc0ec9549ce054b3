// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Files without a usable table that are made to exhaust whoever looks for their objects: each piece
// asks for a look at what many others ask for, too. What becomes of them does not matter as long as
// it becomes so soon, in an address space of a gigabyte.

#include <functional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <unistd.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/FixtureEncoding.h"
#include "Tests/Support/MemoryLimit.h"

namespace quirebind::pdftest {
namespace {

constexpr std::size_t kSize = 10'000'000;

std::string repeated(std::string_view piece) {
    std::string text = "%PDF-1.7\n";
    while (text.size() < kSize) text += piece;
    return text;
}

std::string numbered(const std::function<std::string(const std::string&)>& object) {
    std::string text = "%PDF-1.7\n";
    for (int i = 10; text.size() < kSize; ++i) text += object(std::to_string(i));
    return text;
}

/// Expects that a process that merges the file ends of itself.
void expectAnEnd(const std::string& bytes) {
    constexpr unsigned kSeconds = 100;
    const Bench bench;
    const std::string path = bench.add("hostile.pdf", bytes);
    const int result = inChildProcess([&] {
        if (test::kMemoryLimitsWork) test::limit(RLIMIT_AS, rlim_t{1} << 30U);
        ::alarm(kSeconds);
        static_cast<void>(bench.tryMerge({path}));
        return 0;
    });
    EXPECT_EQ(result, 0);
}

/// Streams of that type, all with that body.
std::string streams(const std::string& entries, const std::string& decoded) {
    const std::string body = test::encodeFlate(decoded);
    return numbered([&](const std::string& number) {
        return number + " 0 obj<<" + entries + "/Filter/FlateDecode/Length " +
               std::to_string(body.size()) + ">>stream\n" + body + "\nendstream endobj\n";
    });
}

TEST(HostileRecovery, ofObjectsThatAreNotClosed) {
    for (const std::string_view piece :
         {"1 0 obj ", "1 0 obj (", "1 0 obj <", "1 0 obj <<", "1 0 obj [", "1 0 obj <</A("}) {
        expectAnEnd(repeated(piece));
    }
}

TEST(HostileRecovery, ofStreamsThatAreNotClosed) {
    for (const std::string end : {"\n", " "}) {
        for (const std::string length : {"", "/Length 5000000", "/Length 7 0 R"}) {
            expectAnEnd(numbered([&](const std::string& number) {
                return number + " 0 obj<<" + length + ">>stream" + end;
            }));
        }
    }
    expectAnEnd("1 0 obj<<>>stream\n" + repeated("xendobj "));
    expectAnEnd("1 0 obj<<>>stream\n" + repeated("x1 0 obj "));
}

TEST(HostileRecovery, ofTrailersAndTables) {
    const std::string page =
        "1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj 2 0 obj<</Type/Pages/Count 1/Kids[3 0 "
        "R]>>endobj "
        "3 0 obj<</Type/Page/X 99 0 R>>endobj ";
    for (const std::string_view piece :
         {"trailer ", "trailer(", "trailer<<", "trailer<</Root 1 0 R>>", "xref ",
          "xref\n0 99999999\n", "0 0 f xref\n"}) {
        expectAnEnd(page + repeated(piece) + "trailer<</Root 1 0 R/Size 200>>");
    }
}

TEST(HostileRecovery, ofCatalogsAndPages) {
    const std::string large = "2 0 obj(" + std::string(3'000'000, 'x') + ")endobj\n";
    for (const std::string entries :
         {"/Type/Catalog/Pages 2 0 R", "/Type/Pages/Parent 2 0 R/Kids[]", "/Type/Page/Parent 2 0 R",
          "/Type/Page", "/Type/Pages/Kids[2 0 R]"}) {
        expectAnEnd(large + numbered([&](const std::string& number) {
                        return number + " 0 obj<<" + entries + ">>endobj\n";
                    }));
    }
}

TEST(HostileRecovery, ofKidsThatLeadBack) {
    std::string kids;
    while (kids.size() < kSize) kids += "3 0 R ";
    expectAnEnd("trailer<</Root<</Pages 2 0 R>>>>2 0 obj<</Type/Pages/Kids[" + kids +
                "]>>endobj 3 0 obj<</Type/Pages/Kids[2 0 R]>>endobj");
}

TEST(HostileRecovery, ofObjectStreams) {
    std::string pairs;
    for (int i = 0; i < 1'000'000; ++i) pairs += std::to_string(900'000 + i) + " 0 ";
    expectAnEnd(streams("/Type/ObjStm/N 1000000/First 9999999", pairs));
    expectAnEnd(streams("/Type/ObjStm/N 1/First 10", std::string(std::size_t{50} << 20U, ' ')));
}

TEST(HostileRecovery, ofCrossReferenceStreams) {
    expectAnEnd(
        "1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj 2 0 obj<</Type/Pages/Kids[3 0 R]>>endobj "
        "3 0 obj<</Type/Page/X 999999999 0 R>>endobj " +
        streams("/Type/XRef/W[1 2 1]/Root 1 0 R/Size 99999",
                std::string(std::size_t{30} << 20U, '\0')));
}

}  // namespace
}  // namespace quirebind::pdftest
