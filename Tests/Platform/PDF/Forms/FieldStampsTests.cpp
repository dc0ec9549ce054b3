// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The update that turns fields into stamps, by its text; the renderer's tests see it drawn.

#include <cstddef>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Platform/Files/FileSystem.h"
#include "Platform/Files/URL.h"
#include "Platform/PDF/Forms/FieldStamps.h"
#include "Platform/PDF/Reading/SourceDocument.h"
#include "Tests/Platform/PDF/Forms/FormTestSupport.h"
#include "Tests/Support/FixturePDF.h"
#include "Tests/Support/TemporaryFolder.h"

namespace quirebind::pdftest {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

/// A document with a field that has an appearance, and a classic table.
std::string documentWithTable() {
    return test::fixturePDF(
        formDocument("<< /Fields [6 0 R] >>", "[6 0 R]",
                     textField(6, "a", "b", "/AP << /N 7 0 R >>") +
                         "{{object 7 0}}\n<< /Subtype /Form /BBox [0 0 9 9] /Length {{length}} >>\n"
                         "{{stream}}\n0 0 9 9 re f\n{{endstream}}\nendobj\n"));
}

std::string stampsFor(const std::string& pdf) {
    const TemporaryFolder folder;
    folder.write("form.pdf", pdf);
    SourceDocument document(URL::file(folder / "form.pdf"), FileSystem::native(),
                            Recovery::refused);
    return stampsForFields(document);
}

TEST(FieldStamps, areListedInASectionOfTheKindThatTheFileHas) {
    const std::string pdf = documentWithTable();
    EXPECT_THAT(stampsFor(pdf),
                AllOf(HasSubstr("/Subtype/Stamp"), HasSubstr("\nxref\n"), Not(HasSubstr("/XRef"))));
}

TEST(FieldStamps, areListedInATableWhereTheFilesOneIsBehindWhiteSpace) {
    std::string pdf = documentWithTable();
    const std::size_t table = pdf.rfind("\nxref\n") + 1;
    const std::size_t offset = pdf.rfind("startxref\n") + 10;
    pdf.replace(offset, std::string::npos, std::to_string(table - 1) + "\n%%EOF\n");
    EXPECT_THAT(stampsFor(pdf), AllOf(HasSubstr("\nxref\n"), Not(HasSubstr("/XRef")),
                                      HasSubstr("/Prev " + std::to_string(table) + "/")));
}

}  // namespace
}  // namespace quirebind::pdftest
