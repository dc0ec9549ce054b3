// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Files that are about the structure as a whole (ISO 32000-2, table 354): how words are said, and
// what the author has joined to it.

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Structure/StructureTestSupport.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// An object of a fixture: a file specification with an embedded file, the next object.
std::string file(int number, const std::string& name) {
    return object(number, "<< /Type /Filespec /F (" + name + ") /UF (" + name + ") /EF << /F " +
                              std::to_string(number + 1) + " 0 R >> >>") +
           "{{object " + std::to_string(number + 1) +
           " 0}}\n<< /Type /EmbeddedFile /Length {{length}} >>\n{{stream}}\nsaid of " + name +
           "\n{{endstream}}\nendobj\n";
}

TEST(StructureFiles, areThoseOfAllSources) {
    const Bench bench;
    const std::string first = bench.fixture(
        "a.pdf", paragraph("", "/PronunciationLexicon [50 0 R 88 0 R 50 0 R] /AF [52 0 R]", "",
                           file(50, "a.pls") + file(52, "a.xml")));
    const std::string second =
        bench.fixture("b.pdf", paragraph("",
                                         "/PronunciationLexicon 54 0 R "
                                         "/AF [<< /Type /Filespec /F (b.xml) >>]",
                                         "", file(50, "b.pls") + object(54, "[50 0 R]")));
    const std::string merged = bench.merge({first, second});
    expectPages(merged, {200, 200}, {"one", "one"});
    const std::string root = rootOf(merged);
    EXPECT_THAT(root, HasSubstr("/PronunciationLexicon [ " + objectWith(merged, "/F (a.pls)") +
                                " 0 R " + objectWith(merged, "/F (b.pls)") + " 0 R ]"));
    EXPECT_THAT(root, HasSubstr("/AF [ " + objectWith(merged, "/F (a.xml)") + " 0 R " +
                                objectWith(merged, "/F (b.xml)") + " 0 R ]"));
    EXPECT_THAT(Bench::read(merged), HasSubstr("said of b.pls"));
}

TEST(StructureFiles, areNoneWhereNoSourceHasAny) {
    const Bench bench;
    const std::string root =
        rootOf(bench.mergeFixture(paragraph("", "/PronunciationLexicon null /AF [88 0 R 7]")));
    EXPECT_THAT(root, Not(HasSubstr("/PronunciationLexicon")));
    EXPECT_THAT(root, Not(HasSubstr("/AF")));
}

}  // namespace
}  // namespace quirebind::pdftest
