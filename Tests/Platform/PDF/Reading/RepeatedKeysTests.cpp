// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Dictionaries in which a key is repeated. What that means is not defined (ISO 32000-2, 7.3.7), but
// other readers take the last one, so that is what the source shows.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/Forms/FormTestSupport.h"
#include "Tests/Platform/PDF/Structure/StructureTestSupport.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

/// Expects the readable text and the boxes of the fixture's page to be the same after a merge.
void expectSameView(const std::string& text) {
    const Bench bench;
    const std::string source = bench.fixture("source.pdf", text);
    const std::string merged = bench.merge({source, source});
    const std::vector<test::PageView> views = test::pagesByPoppler(source);
    ASSERT_EQ(views.size(), 1U);
    EXPECT_THAT(test::pagesByPoppler(merged), ElementsAre(views[0], views[0]));
    EXPECT_THAT(test::pagesByMuPDF(merged), ElementsAre(views[0], views[0]));
    EXPECT_THAT(test::pageTexts(merged), ElementsAre("one", "one"));
    EXPECT_EQ(test::renderingsByMuPDF(merged).at(0), test::renderingsByMuPDF(source).at(0));
}

/// The only page without entries of its own, below a node with these.
std::string inheriting(const std::string& node) {
    const std::string page = replaced(onePageWith(), "/MediaBox [0 0 200 300]", "");
    return replaced(replaced(page, "/Resources << /Font << /F1 5 0 R >> >>", ""), "/Type /Pages",
                    "/Type /Pages " + node);
}

TEST(RepeatedKey, ofATreeIsInheritedAsTheLastSays) {
    expectSameView(
        inheriting("/Resources << >> /MediaBox [0 0 100 100] /Rotate 90 "
                   "/Resources << /Font << /F1 5 0 R >> >> /MediaBox [0 0 200 300] /Rotate 0"));
}

TEST(RepeatedKey, ofATreeIsTheLastListOfPages) {
    expectSameView(replaced(onePageWith(), "/Kids [3 0 R]", "/Kids [] /Kids [3 0 R]"));
}

TEST(RepeatedKey, ofAPageLetsItInheritIfTheLastSaysNothing) {
    const std::string text =
        replaced(onePageWith(), "/Type /Pages", "/Type /Pages /MediaBox [0 0 400 300] /Rotate 90");
    expectSameView(replaced(text, "/MediaBox [0 0 200 300]",
                            "/MediaBox [0 0 200 300] /Rotate 180 /MediaBox null /Rotate null"));
}

TEST(RepeatedKey, ofTheCatalogHidesWhatTheLastHides) {
    const std::string text =
        replaced(onePageWith("{{object 7 0}}\n<< /OCGs [6 0 R] /D << >> >>\nendobj\n"
                             "{{object 8 0}}\n<< /OCGs [6 0 R] /D << /OFF [6 0 R] >> >>\nendobj\n"
                             "{{object 6 0}}\n<< /Type /OCG /Name (hidden) >>\nendobj\n"),
                 "/Type /Catalog", "/Type /Catalog /OCProperties 7 0 R /OCProperties 8 0 R");
    expectSameView(replaced(replaced(text, "BT /F1", "/OC /L BDC 0 0 50 50 re f EMC BT /F1"),
                            "/Resources << ", "/Resources << /Properties << /L 6 0 R >> "));
}

TEST(RepeatedKey, ofAFormHasTheLastFields) {
    const Bench bench;
    const std::string merged = bench.mergeFixture(formDocument(
        "<< /Fields [] /DA (/Helv 0 Tf) /Fields [6 0 R] >>", "[6 0 R]", textField(6, "name", "x")));
    expectSound(merged, 1);
    EXPECT_THAT(fieldsOf(merged), ElementsAre(Field{.name = "name", .type = "/Tx", .value = "x"}));
}

// Otherwise two documents would fill in each other's fields.
TEST(RepeatedKey, ofAFieldIsTheNameThatIsKeptApart) {
    const Bench bench;
    const std::string source = bench.fixture(
        "a.pdf", formDocument("<< /Fields [6 0 R] >>", "[6 0 R]",
                              replaced(textField(6, "name", "x"), "/T ", "/T (other) /T ")));
    const std::string merged = bench.merge({bench.fixture("b.pdf", oneField("name", "1")), source});
    EXPECT_THAT(Bench::read(merged), HasSubstr("/T (other) /T (name_2)"));
}

TEST(RepeatedKey, ofAnElementIsItsLastContent) {
    const Bench bench;
    const std::string source = bench.fixture(
        "a.pdf", taggedPage("/K 41 0 R /ParentTree << /Nums [0 [42 0 R]] >>",
                            element(41, "/S /Sect /P 40 0 R /K [42 0 R] /K [42 0 R]") +
                                element(42, "/S /P /P 41 0 R /Pg 99 0 R /Pg 3 0 R /K 9 /K 0")));
    const std::string merged = bench.merge({source});
    EXPECT_THAT(structureOf(merged), HasSubstr("\"one\""));
    EXPECT_EQ(structureOf(merged), structureOf(source));
    EXPECT_THAT(everyObject(merged), AllOf(HasSubstr("/K 0"), Not(HasSubstr("/K 9"))));
}

}  // namespace
}  // namespace quirebind::pdftest
