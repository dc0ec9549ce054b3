// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Forms that are broken or hostile: the pages arrive all the same.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Forms/FormTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

/// The document twice, so that names clash; its page must be there twice.
std::string mergeTwice(const Bench& bench, const std::string& source) {
    const std::string file = bench.fixture("source.pdf", source);
    std::string merged = bench.merge({file, file});
    EXPECT_THAT(test::pageTexts(merged), ElementsAre(HasSubstr("one"), HasSubstr("one")));
    return merged;
}

TEST(HostileForm, isNoneWhereItIsNoForm) {
    const Bench bench;
    for (const std::string form :
         {"(form)", "99 0 R", "[6 0 R]", "6 0 R", "1 0 R", "3 0 R", "4 0 R", "<< /Fields 6 0 R >>",
          "<< /Fields (x) /DR [1] /CO 3 /DA 4 >>",
          "<< /Fields [null 99 0 R 1 (x) /x [6 0 R]] >>"}) {
        const std::string merged =
            mergeTwice(bench, formDocument(form, "[6 0 R]", textField(6, "name", "x")));
        expectSound(merged, 2);
    }
}

TEST(HostileForm, hasNoFieldsThatAreSomethingElse) {
    const Bench bench;
    const std::string merged =
        mergeTwice(bench, formDocument("<< /Fields [1 0 R 2 0 R 3 0 R 4 0 R 7 0 R 6 0 R 6 0 R] >>",
                                       "[6 0 R]", textField(6, "name", "x") + object(7, "7 0 R")));
    expectSound(merged, 2);
    EXPECT_THAT(fieldsOf(merged),
                ElementsAre(Field{"name", "/Tx", "x"}, Field{"name_2", "/Tx", "x"}));
    EXPECT_THAT(rootsOf(merged), SizeIs(2));
}

TEST(HostileForm, endsWhereKidsLoop) {
    const Bench bench;
    const std::string merged = mergeTwice(
        bench, formDocument("<< /Fields [6 0 R 8 0 R] >>", "[7 0 R]",
                            object(6,
                                   "<< /Kids [6 0 R 7 0 R 7 0 R null 99 0 R 3 0 R 2 0 R 4 0 R "
                                   "6 0 R (x)] >>") +
                                textField(7, "name", "x", "/Parent 6 0 R /Kids [6 0 R]") +
                                object(8, "<< /Kids 9 0 R >>") + object(9, "[8 0 R]")));
    expectSound(merged, 2);
    EXPECT_THAT(fieldsOf(merged),
                ElementsAre(Field{"name", "/Tx", "x"}, Field{"name_2", "/Tx", "x"}));
}

TEST(HostileForm, endsWhereParentsLoop) {
    const Bench bench;
    const std::string merged = mergeTwice(
        bench, formDocument("<< /Fields [6 0 R] >>", "[6 0 R]",
                            object(6,
                                   "<< /Subtype /Widget /Rect [0 0 9 9] /T (a) /V (x) /Parent "
                                   "7 0 R >>") +
                                object(7,
                                       "<< /T (b) /V << /ByteRange [] /LEFT 1 >> /Parent 6 0 R "
                                       ">>")));
    EXPECT_TRUE(test::pageCounts(merged).allAre(2));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("LEFT")));
}

/// Chains of fields that deep, in which every field lists the next one twice: some readers would
/// walk them for ever.
TEST(HostileForm, doesNotLeadOtherReadersAstray) {
    std::string objects;
    constexpr int kDepth = 20'000;
    for (int i = 6; i < 6 + kDepth; ++i) {
        const std::string kid = std::to_string(i + 1) + " 0 R ";
        std::string field = "<< /Kids [";
        field.append(kid).append(kid).append("] /V (x) /Parent ");
        field.append(std::to_string(i - 1)).append(" 0 R >>");
        objects += object(i, field);
    }
    objects += object(6 + kDepth, "<< /T (name) /FT /Tx /V (deep) >>");
    const Bench bench;
    const std::string merged =
        mergeTwice(bench, formDocument("<< /Fields [6 0 R] >>", "[]", objects));
    EXPECT_TRUE(test::pageCounts(merged).allAre(2));
    EXPECT_EQ(test::renderingsByPoppler(merged).size(), 2);
    EXPECT_EQ(test::renderingsByMuPDF(merged).size(), 2);
}

TEST(HostileForm, listsEachFieldOnceAndBelowItsParent) {
    const Bench bench;
    const std::string merged = mergeTwice(
        bench, formDocument("<< /Fields [7 0 R 6 0 R 8 0 R 7 0 R] >>", "[7 0 R 8 0 R]",
                            object(6, "<< /T (a) /Kids 9 0 R >>") + object(9, "[7 0 R]") +
                                object(10, "<< /T (unlisted) >>") +
                                textField(7, "b", "x", "/Parent 6 0 R /Kids 9 0 R") +
                                textField(8, "c", "y", "/Parent 10 0 R")));
    expectSound(merged, 2);
    EXPECT_THAT(rootsOf(merged), ElementsAre(HasSubstr("(a)"), HasSubstr("(c)"), HasSubstr("(a_2)"),
                                             HasSubstr("(c_2)")));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("(b_2)")));
}

TEST(HostileForm, mayHaveDirectFieldsInOneAnother) {
    const auto nested = [](int depth) {
        std::string field = "<< /T (leaf) /FT /Tx /DA (/F 9 Tf) >>";
        for (int i = 0; i < depth; ++i) field.insert(0, "<< /Kids [").append("] /T (x) >>");
        return field;
    };
    const Bench bench;
    const std::string merged = mergeTwice(bench, formDocument("<< /Fields [" + nested(100) +
                                                                  " 6 0 R] /DR << /Font << /F << "
                                                                  "/BaseFont /A >> >> >> >>",
                                                              "[6 0 R]", object(6, nested(100))));
    expectSound(merged, 2);
    EXPECT_THAT(rootsOf(merged), ElementsAre(HasSubstr("(x) >>"), HasSubstr("(x) >>"),
                                             HasSubstr("(x_2) >>"), HasSubstr("(x_2) >>")));
    EXPECT_THAT(
        bench.tryMerge({bench.fixture(
            "deep.pdf", formDocument("<< /Fields [6 0 R] >>", "[]", object(6, nested(500))))}),
        Not(::testing::Eq(std::nullopt)));
}

TEST(HostileForm, mayHaveManyFields) {
    constexpr int kFields = 20'000;
    std::string objects;
    std::string references;
    for (int i = 6; i < 6 + kFields; ++i) {
        objects += object(i, "<< /FT /Tx /T (f" + std::to_string(i) + ") /V (x) >>");
        references += std::to_string(i) + " 0 R ";
    }
    const Bench bench;
    const std::string merged = mergeTwice(
        bench,
        formDocument("<< /Fields [" + references + "] /DA (/F 9 Tf) /CO [" + references + "] >>",
                     "[]", objects));
    const std::string bytes = Bench::read(merged);
    EXPECT_THAT(bytes, HasSubstr("(f20005_2)"));
    EXPECT_EQ(test::pageCounts(merged).qpdf, 2);
}

TEST(HostileForm, doesNotMultiplyItsDefaults) {
    std::string objects;
    std::string references;
    for (int i = 6; i < 1006; ++i) {
        objects += object(i, "<< /FT /Tx >>");
        references += std::to_string(i) + " 0 R ";
    }
    const Bench bench;
    const std::string file = bench.fixture(
        "source.pdf",
        formDocument("<< /Fields [" + references + "] /DA (" + std::string(100'000, 'x') + ") >>",
                     "[]", objects));
    EXPECT_LT(Bench::read(bench.merge({file})).size(), 1'000'000);
}

TEST(HostileForm, doesNotMultiplyTheNameThatItsFieldsShare) {
    std::string objects = object(7, "(" + std::string(5000, 'x') + ")");
    std::string references;
    for (int i = 10; i < 1010; ++i) {
        objects += object(i, "<< /FT /Tx /T 7 0 R >>");
        references += std::to_string(i) + " 0 R ";
    }
    const Bench bench;
    const std::string file = bench.fixture(
        "source.pdf", formDocument("<< /Fields [" + references + "] >>", "[]", objects));
    EXPECT_LT(Bench::read(bench.merge({file, file})).size(), 1'000'000);
}

TEST(HostileForm, doesNotMultiplyItsResources) {
    std::string fonts;
    std::string categories;
    for (int i = 0; i < 2000; ++i) {
        fonts.append("/F").append(std::to_string(i)).append(" << /BaseFont /A >> ");
        categories.append("/C").append(std::to_string(i)).append(" 7 0 R ");
    }
    const Bench bench;
    const std::string merged = mergeTwice(
        bench,
        formDocument("<< /Fields [6 0 R] /DR << /Font 7 0 R " + categories + " >> >>", "[6 0 R]",
                     textField(6, "name", "x") + object(7, "<< " + fonts + " >>")));
    EXPECT_THAT(fieldsOf(merged), SizeIs(2));
    EXPECT_LT(Bench::read(merged).size(), 20'000'000);
}

TEST(HostileForm, hasResourcesThatLeadAnywhere) {
    const Bench bench;
    const std::string merged = mergeTwice(
        bench,
        formDocument("<< /Fields [6 0 R] /DR << /Font << /A 1 0 R /B 2 0 R /C 3 0 R /D 7 0 R "
                     "/E null /F 99 0 R /G 4 0 R /A 5 0 R >> /Font 3 0 R /ProcSet [/PDF] "
                     "/XObject 7 0 R >> >>",
                     "[6 0 R]",
                     textField(6, "name", "x", "/DA (/A 1 Tf /D 2 Tf /B 3 Tf)") +
                         object(7, "<< /Me 7 0 R /Page 3 0 R /Array [7 0 R [7 0 R]] >>")));
    expectSound(merged, 2);
    EXPECT_THAT(fieldsOf(merged), SizeIs(2));
}

TEST(HostileForm, mayHaveScriptsThatAreDamaged) {
    const Bench bench;
    const std::string merged = mergeTwice(
        bench, formDocument("<< /Fields [6 0 R] >>", "[6 0 R]",
                            textField(6, "name", "x",
                                      "/A << /S /JavaScript /JS 7 0 R >> /AA << /K << /S "
                                      "/JavaScript /JS 8 0 R >> /F << /S /JavaScript /JS 3 0 R >> "
                                      "/C << /S /JavaScript /JS [(getField\\('name'\\))] >> >>") +
                                "{{object 7 0}}\n<< /Length {{length}} /Filter /FlateDecode >>\n"
                                "{{stream}}\ngetField('name')\n{{endstream}}\nendobj\n"
                                "{{object 8 0}}\n<< /Length {{length}} /Filter /Unknown >>\n"
                                "{{stream}}\ngetField('name')\n{{endstream}}\nendobj\n"));
    EXPECT_THAT(fieldsOf(merged), SizeIs(2));
}

}  // namespace
}  // namespace quirebind::pdftest
