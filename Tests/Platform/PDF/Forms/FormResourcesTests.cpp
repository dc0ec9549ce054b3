// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// What fields use by name: fonts above all, and the defaults of a form.

#include <regex>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Forms/FormTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

std::string font(const std::string& name) {
    return "<< /Type /Font /Subtype /Type1 /BaseFont /" + name + " >>";
}

/// A field whose text is to be drawn by whoever shows it, in a font that the form calls /Helv.
std::string fieldInFont(const std::string& name, const std::string& baseFont) {
    return formDocument(
        "<< /Fields [6 0 R] /NeedAppearances true /DA (/Helv 9 Tf 0 g) "
        "/DR << /Font << /Helv 7 0 R >> >> >>",
        "[6 0 R]",
        textField(6, name, "some text", "/F 4 /DA (0 g /Helv 8 Tf)") + object(7, font(baseFont)));
}

TEST(FormResources, ofTheSameNameAreKeptApart) {
    const Bench bench;
    const std::vector<std::string> sources{bench.fixture("a.pdf", fieldInFont("a", "Helvetica")),
                                           bench.fixture("b.pdf", fieldInFont("b", "Courier")),
                                           bench.fixture("c.pdf", fieldInFont("c", "Times-Roman")),
                                           bench.fixture("d.pdf", fieldInFont("d", "Courier"))};
    const std::string merged = bench.merge(sources);
    expectSound(merged, 4);
    EXPECT_THAT(
        rootsOf(merged),
        ElementsAre(HasSubstr("/DA (0 g /Helv 8 Tf)"), HasSubstr("/DA (0 g /Helv_2 8 Tf)"),
                    HasSubstr("/DA (0 g /Helv_3 8 Tf)"), HasSubstr("/DA (0 g /Helv_2 8 Tf)")));
    EXPECT_THAT(formOf(merged), ContainsRegex("/Font << /Helv [0-9]+ 0 R /Helv_2 [0-9]+ 0 R "
                                              "/Helv_3 [0-9]+ 0 R >>"));
    std::vector<std::string> pictures;
    pictures.reserve(sources.size());
    for (const std::string& source : sources)
        pictures.push_back(test::renderingsByPoppler(source).at(0));
    EXPECT_NE(pictures[0], pictures[1]);
    EXPECT_EQ(test::renderingsByPoppler(merged), pictures);
}

TEST(FormResources, thatAreTheSameAreThereOnce) {
    const Bench bench;
    const std::string source = bench.fixture("a.pdf", fieldInFont("a", "Helvetica"));
    // The same, but with other numbers, spelling and order, and a font that is no object.
    const std::string spelt =
        replaced(replaced(fieldInFont("b", "Courier"), "/Helv 7 0 R",
                          "/H#65lv <</BaseFont 8 0 R/Subtype/Type#31/Type/Font>>"),
                 "{{xref}}", object(8, "/Helvetica") + "{{xref}}");
    const std::string merged = bench.merge({source, source, bench.fixture("c.pdf", spelt)});
    expectSound(merged, 3);
    EXPECT_THAT(formOf(merged), ContainsRegex("/DR << /Font << /Helv [0-9]+ 0 R >> >>"));
    EXPECT_THAT(rootsOf(merged), Each(HasSubstr("/Helv 8 Tf")));
}

TEST(FormResources, thatDifferOnlyInTheirStreamsAreKeptApart) {
    const auto document = [](const std::string& data) {
        return formDocument(
            "<< /Fields [6 0 R] /DR << /XObject << /X 7 0 R >> /Font << /F 9 0 R "
            ">> >> >>",
            "[6 0 R]",
            textField(6, "name", "x", "/DA (/F 8 Tf)") +
                "{{object 7 0}}\n<< /Type /XObject /Subtype /Form /BBox [0 0 9 9] "
                "/Length {{length}} >>\n{{stream}}\n" +
                data + "\n{{endstream}}\nendobj\n" +
                object(9,
                       "<< /Type /Font /Subtype /Type3 /CharProcs << /a 7 0 R "
                       ">> /Self 9 0 R >>"));
    };
    const Bench bench;
    const std::string one = bench.fixture("a.pdf", document("0 0 9 9 re f"));
    const std::string two = bench.fixture("b.pdf", document("0 0 8 8 re f"));
    const std::string merged = bench.merge({one, two, one, two});
    expectSound(merged, 4);
    EXPECT_THAT(formOf(merged),
                AllOf(ContainsRegex("/Font << /F [0-9]+ 0 R /F_2 [0-9]+ 0 R >>"),
                      ContainsRegex("/XObject << /X [0-9]+ 0 R /X_2 [0-9]+ 0 R >>")));
    EXPECT_THAT(rootsOf(merged), ElementsAre(HasSubstr("/F 8 Tf"), HasSubstr("/F_2 8 Tf"),
                                             HasSubstr("/F 8 Tf"), HasSubstr("/F_2 8 Tf")));
}

TEST(FormResources, neverGetANameThatIsInUse) {
    const auto document = [](const std::string& first, const std::string& second) {
        return formDocument("<< /Fields [6 0 R] /DR << /Font << /F << /BaseFont /" + first +
                                " >> /F_2 << /BaseFont /" + second + " >> >> >> >>",
                            "[6 0 R]", textField(6, "name", "x", "/DA (/F 8 Tf /F_2 9 Tf)"));
    };
    const Bench bench;
    const std::string merged = bench.merge(
        {bench.fixture("a.pdf", document("A", "B")), bench.fixture("b.pdf", document("C", "D"))});
    EXPECT_THAT(rootsOf(merged), ElementsAre(HasSubstr("/DA (/F 8 Tf /F_2 9 Tf)"),
                                             HasSubstr("/DA (/F_3 8 Tf /F_2_2 9 Tf)")));
    EXPECT_THAT(
        formOf(merged),
        AllOf(HasSubstr("/F << /BaseFont /A >>"), HasSubstr("/F_2 << /BaseFont /B >>"),
              HasSubstr("/F_3 << /BaseFont /C >>"), HasSubstr("/F_2_2 << /BaseFont /D >>")));
}

TEST(FormResources, areFollowedByAllThatNamesThem) {
    const std::string second = formDocument(
        "<< /Fields [6 0 R] /DR << /Font << /Helv 7 0 R >> >> >>", "[8 0 R 9 0 R]",
        object(6, "<< /FT /Tx /T (b) /DA 10 0 R /Kids [8 0 R] >>") + object(7, font("Courier")) +
            object(8,
                   "<< /Type /Annot /Subtype /Widget /Parent 6 0 R /Rect [0 0 9 9] "
                   "/DA <2F48656C762037205466> >>") +
            object(9,
                   "<< /Type /Annot /Subtype /FreeText /Rect [0 0 9 9] "
                   "/DA (/Other 5 Tf /Helv 6 Tf) /Contents (x) >>") +
            object(10, "(/Helv 8 Tf /Helv gs \\(/Helv 1 Tf\\) Tj)"));
    const Bench bench;
    const std::string merged = bench.merge(
        {bench.fixture("a.pdf", fieldInFont("a", "Helvetica")), bench.fixture("b.pdf", second)});
    expectSound(merged, 2);
    EXPECT_THAT(everyObject(merged),
                AllOf(HasSubstr("(/Helv_2 7 Tf)"), HasSubstr("(/Other 5 Tf /Helv_2 6 Tf)"),
                      HasSubstr("(/Helv_2 8 Tf /Helv gs \\(/Helv 1 Tf\\) Tj)")));
}

TEST(FormResources, haveNamesInWhateverSpelling) {
    const auto document = [](const std::string& baseFont) {
        return formDocument(
            "<< /Fields [6 0 R] /DR << /Font << /A#20B << /BaseFont /" + baseFont + " >> >> >> >>",
            "[6 0 R]", textField(6, "name", "x", "/DA (/A#20B 8 Tf)"));
    };
    const Bench bench;
    const std::string merged =
        bench.merge({bench.fixture("a.pdf", document("A")), bench.fixture("b.pdf", document("B"))});
    EXPECT_THAT(formOf(merged), AllOf(HasSubstr("/A#20B << /BaseFont /A >>"),
                                      HasSubstr("/A#20B_2 << /BaseFont /B >>")));
    EXPECT_THAT(rootsOf(merged),
                ElementsAre(HasSubstr("/DA (/A#20B 8 Tf)"), HasSubstr("/DA (/A#20B_2 8 Tf)")));
}

TEST(FormDefaults, becomeThoseOfTheFieldsThatHaveNone) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(formDocument(
        "<< /Fields [6 0 R 7 0 R 8 0 R 9 0 R] /DA (/Helv 9 Tf) /Q 1 >>", "[6 0 R]",
        textField(6, "a", "x") + textField(7, "b", "x", "/DA (/Own 7 Tf) /Q 0") +
            textField(8, "c", "x", "/DA null /Q 99 0 R") + object(9, "<< /FT /Sig /T (d) >>")));
    expectSound(merged, 1);
    EXPECT_THAT(rootsOf(merged),
                ElementsAre(AllOf(HasSubstr("/DA (/Helv 9 Tf)"), HasSubstr("/Q 1")),
                            AllOf(HasSubstr("/DA (/Own 7 Tf)"), HasSubstr("/Q 0")),
                            AllOf(HasSubstr("/DA (/Helv 9 Tf)"), HasSubstr("/Q 1")),
                            AllOf(Not(HasSubstr("/DA")), Not(HasSubstr("/Q")))));
}

TEST(FormDefaults, becomeThoseOfFieldsThatTheFormDoesNotLeadTo) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(formDocument(
        "<< /Fields [6 0 R] /DA (/Helv 9 Tf) >>", "[6 0 R 7 0 R 9 0 R 10 0 R 11 0 R]",
        textField(6, "a", "x") + textField(7, "stray", "x") +
            object(8, "<< /T (tree) /Kids [9 0 R] >>") +
            object(9, "<< /Subtype /Widget /Rect [0 0 9 9] /FT /Tx /Parent 8 0 R /V (y) >>") +
            object(10, "<< /Subtype /Widget /Rect [0 0 9 9] /FT /Sig /T (signature) >>") +
            object(11, "<< /Subtype /Link /Rect [0 0 9 9] /Contents (a link) >>")));
    const auto textWith = [&](const std::string& part) { return objectTextWith(merged, part); };
    EXPECT_THAT(textWith("(stray)"), HasSubstr("/DA (/Helv 9 Tf)"));
    EXPECT_THAT(textWith("(tree)"), HasSubstr("/DA (/Helv 9 Tf)"));
    for (const char* other : {"(y)", "(signature)", "(a link)"})
        EXPECT_THAT(textWith(other), Not(HasSubstr("/DA"))) << other;
}

TEST(FormDefaults, areSharedWhereTheyAreLong) {
    const std::string appearance = "0 g % " + std::string(300, 'x') + "\n/Helv 9 Tf";
    const Bench bench;
    const std::string merged = bench.mergeFixture(
        formDocument("<< /Fields [6 0 R 7 0 R] /DA (" + appearance + ") >>", "[6 0 R 7 0 R]",
                     textField(6, "a", "x") + textField(7, "b", "x")));
    expectSound(merged, 1);
    EXPECT_EQ(countOf("/Helv 9 Tf", everyObject(merged)), 1U);
    for (const std::string& root : rootsOf(merged)) {
        std::smatch match;
        ASSERT_TRUE(std::regex_search(root, match, std::regex("/DA ([0-9]+) 0 R"))) << root;
        EXPECT_THAT(test::objectText(merged, match.str(1)), HasSubstr("/Helv 9 Tf"));
    }
}

TEST(FormDefaults, nameTheResourcesOfTheirOwnDocument) {
    const auto document = [](const std::string& name, const std::string& baseFont) {
        return replaced(fieldInFont(name, baseFont), "/DA (0 g /Helv 8 Tf)", "");
    };
    const Bench bench;
    const std::string merged = bench.merge({bench.fixture("a.pdf", document("a", "Helvetica")),
                                            bench.fixture("b.pdf", document("b", "Courier"))});
    expectSound(merged, 2);
    EXPECT_THAT(rootsOf(merged), ElementsAre(HasSubstr("/DA (/Helv 9 Tf 0 g)"),
                                             HasSubstr("/DA (/Helv_2 9 Tf 0 g)")));
}

}  // namespace
}  // namespace quirebind::pdftest
