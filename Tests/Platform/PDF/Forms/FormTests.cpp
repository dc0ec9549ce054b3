// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The forms of several documents are one form that works.

#include <array>
#include <regex>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Forms/FormTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;

TEST(Form, isNoneWhereNoDocumentHasOne) {
    const Bench bench;
    EXPECT_EQ(formOf(bench.mergeFixture(onePageWith())), "");
}

TEST(Form, hasTheFieldsOfAllDocumentsInTheirOrder) {
    const std::string two = formDocument("<< /Fields [7 0 R 6 0 R] >>", "[6 0 R 7 0 R]",
                                         textField(6, "first", "1") + textField(7, "second", "2"));
    const Bench bench;
    const std::string merged =
        bench.merge({bench.fixture("a.pdf", two), bench.fixture("b.pdf", onePageWith()),
                     bench.fixture("c.pdf", oneField("third", "3"))});
    expectSound(merged, 3);
    EXPECT_THAT(rootsOf(merged),
                ElementsAre(HasSubstr("(second)"), HasSubstr("(first)"), HasSubstr("(third)")));
}

TEST(Form, hasFieldsThatAreOnNoPage) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        formDocument("<< /Fields [6 0 R 7 0 R] >>", "[6 0 R]",
                     textField(6, "shown", "1") +
                         object(7, "<< /FT /Tx /T (hidden) /V (kept) /Kids [8 0 R] >>") +
                         object(8, "<< /T (below) /Parent 7 0 R /V (kept, too) >>")));
    expectSound(merged, 1);
    EXPECT_THAT(rootsOf(merged), ElementsAre(HasSubstr("(shown)"), HasSubstr("(kept)")));
    EXPECT_THAT(everyObject(merged), HasSubstr("(kept, too)"));
}

TEST(Form, leavesAloneWidgetsThatItDoesNotLeadTo) {
    const Bench bench;
    const std::string stray = bench.fixture(
        "a.pdf", formDocument("<< /Fields [] >>", "[6 0 R]", textField(6, "name", "stray")));
    const std::string merged =
        bench.merge({bench.fixture("b.pdf", oneField("name", "1")), stray, stray});
    expectSound(merged, 3);
    EXPECT_THAT(rootsOf(merged), SizeIs(1));
    EXPECT_THAT(everyObject(merged), AllOf(HasSubstr("(stray)"), Not(HasSubstr("name_2"))));
}

TEST(Form, isTheOnlyOneThatItsActionsAreOn) {
    const std::string two = formDocument(
        "<< /Fields [6 0 R 7 0 R] >>", "[6 0 R 7 0 R 8 0 R]",
        textField(6, "first", "1") + textField(7, "second", "2") +
            object(8,
                   "<< /Subtype /Link /Rect [0 0 9 9] /A << /S /ResetForm /Flags 1 /Next "
                   "<< /S /SubmitForm /F (mailto:x) /Flags 5 /Fields null >> >> >>"));
    const Bench bench;
    const std::string merged =
        bench.merge({bench.fixture("a.pdf", oneField("other", "3")), bench.fixture("b.pdf", two)});
    expectSound(merged, 2);
    const std::string link = objectTextWith(merged, "/ResetForm");
    std::smatch match;
    ASSERT_TRUE(std::regex_search(link, match, std::regex("/Fields ([0-9]+) 0 R"))) << link;
    EXPECT_EQ(countOf("/Fields " + match.str(1) + " 0 R", link), 2U) << link;
    EXPECT_THAT(link, AllOf(HasSubstr("/Flags 0"), HasSubstr("/Flags 4"), Not(HasSubstr("null"))));
    const std::string list = test::objectText(merged, match.str(1));
    ASSERT_TRUE(std::regex_match(list, match, std::regex("\\[ ([0-9]+) 0 R ([0-9]+) 0 R \\]")))
        << list;
    EXPECT_THAT(test::objectText(merged, match.str(1)), HasSubstr("(first)"));
    EXPECT_THAT(test::objectText(merged, match.str(2)), HasSubstr("(second)"));
}

TEST(Form, mayHaveThousandsOfFieldsBelowFewParents) {
    constexpr int kFields = 8000;
    constexpr int kFirst = 100;
    std::string fields;
    std::array<std::string, 2> kids;
    for (int i = kFirst; i < kFirst + kFields; ++i) {
        const std::string number = std::to_string(i);
        const auto parent = static_cast<std::size_t>(i % 2);
        fields += object(
            i, "<< /T (f" + number + ") /V (x) /Parent " + std::to_string(6 + parent) + " 0 R >>");
        kids.at(parent) += number + " 0 R ";
    }
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        formDocument("<< /Fields [6 0 R 7 0 R] /DA (/Helv 9 Tf) >>", "[]",
                     object(6, "<< /T (a) /FT /Tx /Kids [" + kids[0] + "] >>") +
                         object(7, "<< /T (b) /FT /Tx /Kids [" + kids[1] + "] >>") + fields));
    EXPECT_EQ(countOf("/V (x)", Bench::read(merged)), static_cast<std::size_t>(kFields));
}

TEST(Form, keepsWhatAFieldIs) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(formDocument(
        "<< /Fields [6 0 R] >>", "[6 0 R]",
        object(6,
               "<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] /FT /Ch /Ff 131072 /T (pick) "
               "/TU (Pick one) /Opt [(a) [(b) (Bee)]] /V (b) /DV (a) /MaxLen 7 >>")));
    EXPECT_THAT(fieldsOf(merged), ElementsAre(Field{"pick", "/Ch", "b"}));
    EXPECT_THAT(everyObject(merged),
                AllOf(HasSubstr("/Ff 131072"), HasSubstr("/Opt [ (a) [ (b) (Bee) ] ]"),
                      HasSubstr("/DV (a)"), HasSubstr("/TU (Pick one)"), HasSubstr("/MaxLen 7")));
}

TEST(Form, keepsRadioGroupsWhole) {
    const auto button = [](int number, const std::string& state) {
        return object(
            number, "<< /Type /Annot /Subtype /Widget /Parent 6 0 R /Rect [0 0 9 9] /AS /" + state +
                        " /AP << /N << /" + state + " 4 0 R /Off 4 0 R >> >> >>");
    };
    const std::string group =
        formDocument("<< /Fields [6 0 R] >>", "[7 0 R 8 0 R]",
                     object(6, "<< /FT /Btn /Ff 49152 /T (choice) /V /yes /Kids [7 0 R 8 0 R] >>") +
                         button(7, "yes") + button(8, "no"));
    const Bench bench;
    const std::string source = bench.fixture("a.pdf", group);
    const std::string merged = bench.merge({source, source});
    expectSound(merged, 2);
    EXPECT_THAT(fieldsOf(merged),
                ElementsAre(Field{"choice", "/Btn", "/yes"}, Field{"choice", "/Btn", "/yes"},
                            Field{"choice_2", "/Btn", "/yes"}, Field{"choice_2", "/Btn", "/yes"}));
    EXPECT_THAT(rootsOf(merged), SizeIs(2));
}

TEST(Form, mayBeMadeOfReferencesThroughout) {
    const std::string source =
        formDocument("10 0 R", "11 0 R",
                     object(6, "<< /T 16 0 R /FT 17 0 R /V 18 0 R /Kids 13 0 R >>") +
                         object(7,
                                "<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] /Parent 6 0 R "
                                "/P 3 0 R >>") +
                         object(10,
                                "<< /Fields 12 0 R /DR 14 0 R /NeedAppearances 20 0 R "
                                "/DA 21 0 R /Q 22 0 R >>") +
                         object(11, "[7 0 R]") + object(12, "[6 0 R]") + object(13, "[7 0 R]") +
                         object(14, "<< /Font 15 0 R >>") + object(15, "<< /Helv 5 0 R >>") +
                         object(16, "(name)") + object(17, "/Tx") + object(18, "(value)") +
                         object(20, "true") + object(21, "(/Helv 9 Tf)") + object(22, "2"));
    const Bench bench;
    const std::string file = bench.fixture("a.pdf", source);
    const std::string merged = bench.merge({file, file});
    expectSound(merged, 2);
    EXPECT_THAT(fieldsOf(merged), ElementsAre(::testing::Field(&Field::name, "name"),
                                              ::testing::Field(&Field::name, "name_2")));
    EXPECT_THAT(everyObject(merged), HasSubstr("\n(value)\n"));
    EXPECT_THAT(formOf(merged), AllOf(HasSubstr("/NeedAppearances true"),
                                      ContainsRegex("/Font << /Helv [0-9]+ 0 R >>")));
    EXPECT_THAT(rootsOf(merged), Each(AllOf(HasSubstr("/DA (/Helv 9 Tf)"), HasSubstr("/Q 2"))));
}

TEST(Form, mayHoldFieldsThatAreNoObjects) {
    const Bench bench;
    const std::string source = bench.fixture(
        "a.pdf",
        formDocument("<< /Fields [<< /FT /Tx /T (name) /V (direct) /Kids [6 0 R] >>] "
                     "/DA (/F1 9 Tf) >>",
                     "[6 0 R]", object(6, "<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] >>")));
    const std::string merged = bench.merge({source, source});
    expectSound(merged, 2);
    EXPECT_THAT(rootsOf(merged),
                ElementsAre(AllOf(HasSubstr("/T (name) "), HasSubstr("/V (direct)"),
                                  HasSubstr("/DA (/F1 9 Tf)")),
                            AllOf(HasSubstr("/T (name_2) "), HasSubstr("/V (direct)"))));
}

TEST(Form, calculatesInTheOrderOfItsDocuments) {
    const std::string source =
        formDocument("<< /Fields [6 0 R 7 0 R] /CO [7 0 R 6 0 R 3 0 R 99 0 R (x)] >>",
                     "[6 0 R 7 0 R]", textField(6, "sum", "1") + textField(7, "part", "2"));
    const Bench bench;
    const std::string file = bench.fixture("a.pdf", source);
    const std::string merged = bench.merge({file, file});
    // The roots are in the order of /Fields, what is calculated in that of /CO.
    EXPECT_THAT(formOf(merged),
                ContainsRegex(R"(/CO \[ [0-9]+ 0 R [0-9]+ 0 R [0-9]+ 0 R [0-9]+ 0 R \])"));
    const std::string form = formOf(merged);
    const std::string fields = form.substr(form.find("/Fields"));
    const auto second = [](const std::string& text) {
        const std::size_t begin = text.find("0 R") + 4;
        return text.substr(begin, text.find(" 0 R", begin) - begin);
    };
    const std::string calculated = form.substr(form.find("/CO [ ") + 6);
    EXPECT_EQ(calculated.substr(0, calculated.find(' ')), second(fields));
}

TEST(Form, asksForAppearancesWhereOneDocumentDoes) {
    const auto asking = [](const std::string& answer) {
        return formDocument("<< /Fields [6 0 R] /NeedAppearances " + answer + " >>", "[6 0 R]",
                            textField(6, "name", "x"));
    };
    const Bench bench;
    const std::string no = bench.fixture("no.pdf", asking("false"));
    const std::string yes = bench.fixture("yes.pdf", asking("true"));
    EXPECT_THAT(formOf(bench.merge({no, no}, "1.pdf")), Not(HasSubstr("NeedAppearances")));
    EXPECT_THAT(formOf(bench.merge({no, yes, no}, "2.pdf")), HasSubstr("/NeedAppearances true"));
}

TEST(Form, leavesBehindWhatBelongsToTheDocument) {
    const std::string source = replaced(
        formDocument("<< /Fields [6 0 R] /XFA (LEFT) /SigFlags 3 >>", "[6 0 R]",
                     textField(6, "name", "x")),
        "/AcroForm",
        "/Perms << /DocMDP << /LEFT 1 >> >> /OpenAction << /S /JavaScript /JS (LEFT) >> "
        "/Names << /JavaScript << /Names [(a) << /S /JavaScript /JS (LEFT) >>] >> >> /AcroForm");
    const Bench bench;
    EXPECT_THAT(everyObject(bench.mergeFixture(source)),
                AllOf(Not(HasSubstr("LEFT")), Not(HasSubstr("SigFlags"))));
}

TEST(Form, showsAWidgetOnEveryPageThatListsIt) {
    const std::string source = replaced(
        formDocument("<< /Fields [6 0 R] >>", "[6 0 R]",
                     textField(6, "name", "x") + pageObjects(7, 200, "two", "/Annots [6 0 R]")),
        "/Kids [3 0 R] /Count 1", "/Kids [3 0 R 7 0 R] /Count 2");
    const Bench bench;
    const std::string merged = bench.mergeFixture(source);
    expectSound(merged, 2);
    EXPECT_THAT(rootsOf(merged), SizeIs(1));
    const auto pages = test::pageDictionaries(merged);
    ASSERT_THAT(pages, SizeIs(2));
    const auto annotations = [](const std::string& page) {
        const std::size_t begin = page.find("/Annots");
        return page.substr(begin, page.find(']', begin) - begin);
    };
    EXPECT_EQ(annotations(pages[0]), annotations(pages[1]));
}

/// A signature and what it looks like.
std::string signedDocument(const std::string& field, const std::string& objects = "") {
    return formDocument(
        "<< /Fields [6 0 R] /SigFlags 3 >>", "[7 0 R]",
        object(6, field) +
            object(7,
                   "<< /Type /Annot /Subtype /Widget /Parent 6 0 R /Rect [0 0 9 9] "
                   "/AP << /N 8 0 R >> >>") +
            "{{object 8 0}}\n<< /Type /XObject /Subtype /Form /BBox [0 0 9 9] "
            "/Length {{length}} >>\n{{stream}}\n0 0 9 9 re f\n{{endstream}}\n"
            "endobj\n" +
            object(9, "<< /Type /Sig /ByteRange [0 1 2 3] /Contents <00> /LEFT 1 >>") + objects);
}

TEST(Form, keepsTheLooksOfASignatureButNotTheSignature) {
    const Bench bench;
    const std::string source =
        bench.fixture("a.pdf", signedDocument("<< /FT /Sig /T (sign) /V 9 0 R /Kids [7 0 R] >>"));
    const std::string merged = bench.merge({source});
    expectSound(merged, 1);
    EXPECT_THAT(fieldsOf(merged), ElementsAre(Field{"sign", "/Sig", ""}));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("LEFT")));
    EXPECT_EQ(test::renderingsByPoppler(merged), test::renderingsByPoppler(source));
}

TEST(Form, keepsNoSignatureWhoseFieldInheritsItsType) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        replaced(signedDocument("<< /FT /Sig /T (all) /Kids [10 0 R] >>",
                                object(10, "<< /T (one) /Parent 6 0 R /V 9 0 R /Kids [7 0 R] >>")),
                 "/Parent 6 0 R /Rect", "/Parent 10 0 R /Rect"));
    expectSound(merged, 1);
    EXPECT_THAT(everyObject(merged), AllOf(Not(HasSubstr("LEFT")), HasSubstr("(one)")));
}

TEST(Form, keepsTheValuesOfAllOtherFields) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        formDocument("<< /Fields [6 0 R 7 0 R] >>", "[]",
                     object(6, "<< /T (sign) /FT /Btn /V /Sig >>") +
                         object(7, "<< /T (rich) /FT /Tx /V 8 0 R >>") +
                         "{{object 8 0}}\n<< /Length {{length}} /Mark (long) >>\n{{stream}}\ntext\n"
                         "{{endstream}}\nendobj\n"));
    EXPECT_THAT(rootsOf(merged), ElementsAre(HasSubstr("/V /Sig"), ContainsRegex("/V [0-9]+ 0 R")));
    EXPECT_THAT(everyObject(merged), HasSubstr("(long)"));
}

}  // namespace
}  // namespace quirebind::pdftest
