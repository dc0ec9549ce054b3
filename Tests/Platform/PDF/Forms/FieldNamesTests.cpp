// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Fields of the same name in several documents: each keeps its own value.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Forms/FormTestSupport.h"

namespace quirebind::pdftest {
namespace {

using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(FieldNames, ofSeveralDocumentsKeepTheirValues) {
    const Bench bench;
    const std::string merged = bench.merge({bench.fixture("a.pdf", oneField("name", "one")),
                                            bench.fixture("b.pdf", oneField("name", "two")),
                                            bench.fixture("c.pdf", oneField("other", "three")),
                                            bench.fixture("d.pdf", oneField("name", "four"))});
    expectSound(merged, 4);
    EXPECT_THAT(fieldsOf(merged),
                ElementsAre(Field{"name", "/Tx", "one"}, Field{"name_2", "/Tx", "two"},
                            Field{"other", "/Tx", "three"}, Field{"name_3", "/Tx", "four"}));
}

TEST(FieldNames, ofAFileListedTwiceAreThoseOfTwoDocuments) {
    const Bench bench;
    const std::string source = bench.fixture("a.pdf", oneField("name", "one"));
    const std::string merged = bench.merge({source, source});
    expectSound(merged, 2);
    EXPECT_THAT(fieldsOf(merged),
                ElementsAre(Field{"name", "/Tx", "one"}, Field{"name_2", "/Tx", "one"}));
}

TEST(FieldNames, staysWhereNothingClashes) {
    const Bench bench;
    const std::string merged = bench.merge({bench.fixture("a.pdf", oneField("one", "1")),
                                            bench.fixture("b.pdf", oneField("two", "2"))});
    EXPECT_THAT(fieldsOf(merged), ElementsAre(Field{"one", "/Tx", "1"}, Field{"two", "/Tx", "2"}));
}

TEST(FieldNames, areNeverThoseThatAnyOtherFieldHas) {
    const auto twoFields = [](const std::string& second) {
        return formDocument("<< /Fields [6 0 R 7 0 R] >>", "[6 0 R 7 0 R]",
                            textField(6, "name", "x") + textField(7, second, "y"));
    };
    const Bench bench;
    const std::string merged = bench.merge(
        {bench.fixture("a.pdf", twoFields("name_2")), bench.fixture("b.pdf", twoFields("name_3"))});
    EXPECT_THAT(fieldsOf(merged),
                ElementsAre(Field{"name", "/Tx", "x"}, Field{"name_2", "/Tx", "y"},
                            Field{"name_4", "/Tx", "x"}, Field{"name_3", "/Tx", "y"}));
}

TEST(FieldNames, areTheSameInWhateverEncoding) {
    const auto named = [](const std::string& name) {
        return replaced(oneField("NAME", "x"), "(NAME)", name);
    };
    const Bench bench;
    const std::string merged = bench.merge({bench.fixture("a.pdf", named("(caf\\351)")),
                                            bench.fixture("b.pdf", named("<FEFF00630061006600E9>")),
                                            bench.fixture("c.pdf", named("<EFBBBF636166C3A9>"))});
    EXPECT_THAT(fieldsOf(merged),
                ElementsAre(Field{"caf\xC3\xA9", "/Tx", "x"}, Field{"caf\xC3\xA9_2", "/Tx", "x"},
                            Field{"caf\xC3\xA9_3", "/Tx", "x"}));
}

TEST(FieldNames, ofTwoFieldsThatAreOneStayOne) {
    const std::string twins = formDocument("<< /Fields [6 0 R 7 0 R] >>", "[6 0 R 7 0 R]",
                                           textField(6, "name", "x") + textField(7, "name", "x"));
    const Bench bench;
    const std::string merged =
        bench.merge({bench.fixture("a.pdf", twins), bench.fixture("b.pdf", twins)});
    EXPECT_THAT(fieldsOf(merged),
                ElementsAre(Field{"name", "/Tx", "x"}, Field{"name", "/Tx", "x"},
                            Field{"name_2", "/Tx", "x"}, Field{"name_2", "/Tx", "x"}));
}

TEST(FieldNames, changeAtTheRootOfATree) {
    const std::string tree = formDocument("<< /Fields [6 0 R] >>", "[7 0 R 8 0 R]",
                                          object(6, "<< /T (person) /Kids [7 0 R 8 0 R] >>") +
                                              textField(7, "first", "x", "/Parent 6 0 R") +
                                              textField(8, "last", "y", "/Parent 6 0 R"));
    const Bench bench;
    const std::string source = bench.fixture("a.pdf", tree);
    EXPECT_THAT(
        fieldsOf(bench.merge({source, source})),
        ElementsAre(Field{"person.first", "/Tx", "x"}, Field{"person.last", "/Tx", "y"},
                    Field{"person_2.first", "/Tx", "x"}, Field{"person_2.last", "/Tx", "y"}));
}

TEST(FieldNames, ofARootWithoutOneAreThoseBelowIt) {
    const std::string tree = formDocument("<< /Fields [6 0 R] >>", "[8 0 R 9 0 R]",
                                          object(6, "<< /Kids [7 0 R] >>") +
                                              object(7, "<< /Parent 6 0 R /Kids [8 0 R 9 0 R] >>") +
                                              textField(8, "name", "x", "/Parent 7 0 R") +
                                              textField(9, "other", "y", "/Parent 7 0 R"));
    const Bench bench;
    const std::string merged =
        bench.merge({bench.fixture("a.pdf", oneField("name", "1")), bench.fixture("b.pdf", tree)});
    EXPECT_THAT(fieldsOf(merged),
                ElementsAre(Field{"name", "/Tx", "1"}, Field{"name_2", "/Tx", "x"},
                            Field{"other", "/Tx", "y"}));
}

TEST(FieldNames, withAPeriodInThemCountForTheTreeThatTheySpell) {
    const std::string tree = formDocument(
        "<< /Fields [6 0 R] >>", "[7 0 R]",
        object(6, "<< /T (person) /Kids [7 0 R] >>") + textField(7, "name", "x", "/Parent 6 0 R"));
    const Bench bench;
    const std::string merged = bench.merge({bench.fixture("a.pdf", oneField("person.name", "1")),
                                            bench.fixture("b.pdf", tree),
                                            bench.fixture("c.pdf", oneField("person.name", "2"))});
    EXPECT_THAT(fieldsOf(merged),
                ElementsAre(Field{"person.name", "/Tx", "1"}, Field{"person_2.name", "/Tx", "x"},
                            Field{"person_3.name", "/Tx", "2"}));
}

TEST(FieldNames, mayBeObjectsOfTheirOwn) {
    const std::string indirect = replaced(oneField("name", "x"), "/T (name)", "/T 7 0 R");
    const std::string source = replaced(indirect, "{{xref}}", object(7, "(name)") + "{{xref}}");
    const Bench bench;
    const std::string merged =
        bench.merge({bench.fixture("a.pdf", source), bench.fixture("b.pdf", source)});
    EXPECT_THAT(fieldsOf(merged),
                ElementsAre(Field{"name", "/Tx", "x"}, Field{"name_2", "/Tx", "x"}));
}

TEST(FieldNames, ofManyCopiesAreAllDifferent) {
    const Bench bench;
    const std::string source = bench.fixture("a.pdf", oneField("name", "x"));
    constexpr int kCopies = 40;
    const auto fields = fieldsOf(bench.merge(std::vector<std::string>(kCopies, source)));
    ASSERT_EQ(fields.size(), kCopies);
    for (int i = 1; i < kCopies; ++i)
        EXPECT_EQ(fields[static_cast<std::size_t>(i)].name, "name_" + std::to_string(i + 1));
}

TEST(FieldNames, keepWhatStandsForBracketsInThem) {
    const Bench bench;
    const std::string source = bench.fixture("a.pdf", oneField("total \\(net\\)", "x"));
    EXPECT_THAT(fieldsOf(bench.merge({source, source})),
                ElementsAre(Field{"total (net)", "/Tx", "x"}, Field{"total (net)_2", "/Tx", "x"}));
}

/// An action on the page's link, in the first and in the second copy of the document.
std::string actionOfTheSecondCopy(const std::string& action, const std::string& objects = "") {
    const std::string source =
        formDocument("<< /Fields [6 0 R 7 0 R] >>", "[6 0 R 7 0 R 8 0 R]",
                     textField(6, "name", "x") + textField(7, "group.sub", "y") +
                         object(8, "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /A " + action +
                                       " /Contents (the link) >>") +
                         objects);
    const Bench bench;
    const std::string file = bench.fixture("a.pdf", source);
    const std::string merged = bench.merge({file, file});
    expectSound(merged, 2);
    const std::string all = everyObject(merged);
    return all;
}

TEST(FieldNames, inActionsFollowTheFields) {
    EXPECT_THAT(actionOfTheSecondCopy("<< /S /Hide /T (name) >>"),
                AllOf(HasSubstr("/S /Hide /T (name) >>"), HasSubstr("/S /Hide /T (name_2) >>")));
    EXPECT_THAT(actionOfTheSecondCopy("<< /S /ResetForm /Fields [(name) (group.sub) 6 0 R] >>"),
                ContainsRegex(R"(/Fields \[ \(name_2\) \(group_2\.sub\) [0-9]+ 0 R \])"));
    EXPECT_THAT(actionOfTheSecondCopy("<< /S /SubmitForm /F (x) /Fields [(none) (group.sub)] >>"),
                HasSubstr("/Fields [ (none) (group_2.sub) ]"));
}

TEST(FieldNames, inWhatASignatureLocksFollowTheFields) {
    const std::string lock = "<< /Type /SigFieldLock /Action /Include /Fields [(name)] >>";
    for (const std::string& way : {lock, std::string("9 0 R")}) {
        const std::string source = formDocument(
            "<< /Fields [6 0 R 7 0 R] >>", "[6 0 R 7 0 R]",
            textField(6, "name", "x") +
                object(7,
                       "<< /Type /Annot /Subtype /Widget /Rect [0 0 9 9] /FT /Sig /T (s) /Lock " +
                           way + " >>") +
                object(9, lock));
        const Bench bench;
        const std::string file = bench.fixture("a.pdf", source);
        const std::string all = everyObject(bench.merge({file, file}));
        EXPECT_EQ(countOf("/Fields [ (name) ]", all), 1U) << way;
        EXPECT_EQ(countOf("/Fields [ (name_2) ]", all), 1U) << way;
    }
}

TEST(FieldNames, inActionsFollowTheFieldsThroughReferences) {
    const std::string all = actionOfTheSecondCopy(
        "9 0 R", object(9, "<< /S /ResetForm /Fields 10 0 R >>") + object(10, "[11 0 R (name)]") +
                     object(11, "(group.sub)"));
    EXPECT_THAT(all, ContainsRegex(R"(\[ [0-9]+ 0 R \(name_2\) \])"));
    EXPECT_THAT(all, HasSubstr("\n(group_2.sub)\n"));
}

TEST(FieldNames, inActionsMayBeTheFieldsThemselves) {
    const std::string all = actionOfTheSecondCopy("<< /S /Hide /T 6 0 R >>");
    EXPECT_THAT(all, ContainsRegex("/S /Hide /T [0-9]+ 0 R"));
    EXPECT_THAT(all, HasSubstr("/T (name_2)"));
}

TEST(FieldNames, inScriptsFollowTheFields) {
    EXPECT_THAT(
        actionOfTheSecondCopy("<< /S /JavaScript /JS (getField\\('group.sub'\\).value) >>"),
        AllOf(HasSubstr("getField\\('group.sub'\\)"), HasSubstr("getField\\('group_2.sub'\\)")));
}

TEST(FieldNames, inScriptsFollowTheFieldsThatAreStreams) {
    const std::string all = actionOfTheSecondCopy(
        "<< /S /JavaScript /JS 9 0 R >>",
        "{{object 9 0}}\n<< /Length {{length}} /Filter /FlateDecode >>\n"
        "{{stream filter=/FlateDecode}}\nthis.getField(\"name\").value = 1;\n{{endstream}}\n"
        "endobj\n");
    EXPECT_THAT(all, HasSubstr("(this.getField\\(\"name_2\"\\).value = 1;)"));
}

}  // namespace
}  // namespace quirebind::pdftest
