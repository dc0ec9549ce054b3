// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Objects that end before their dictionaries do (ISO 32000-2, 7.3.7).

#include <string>

#include <gtest/gtest.h>

#include "Tests/Platform/PDF/DocumentTestSupport.h"
#include "Tests/Platform/PDF/FileKinds.h"
#include "Tests/Support/FixturePDF.h"

namespace quirebind::pdftest {
namespace {

std::string respelt(const std::string& what, const std::string& with) {
    return replaced(onePageWith(), what, with);
}

INSTANTIATE_TEST_SUITE_P(
    Unclosed, ReadableFile,
    ::testing::Values(
        Kind("page", respelt(">> >> >>\nendobj", ">> >>\nendobj")),
        Kind("pageWithItsResources", respelt(">> >> >>\nendobj", ">>\nendobj")),
        Kind("streamsDictionary", respelt("<< /Length {{length}} >>", "<< /Length {{length}}")),
        Kind("streamsDictionaryWithParameters",
             respelt("<< /Length {{length}} >>",
                     "<< /DecodeParms << /Predictor 1 >> /Length {{length}}")),
        Kind("font", respelt("/WinAnsiEncoding >>\nendobj", "/WinAnsiEncoding\nendobj")),
        Kind("catalog", respelt("/Pages 2 0 R >>\nendobj", "/Pages 2 0 R endobj")),
        Kind("pageBehindAWrongTable", replaced(respelt(">> >> >>\nendobj", ">> >>\nendobj"),
                                               "{{startxref}}", "startxref\n0\n%%EOF\n"))),
    nameOfKind);

INSTANTIATE_TEST_SUITE_P(
    Unclosed, RefusedFile,
    ::testing::Values(Kind("arrayOfContents", respelt("/Contents 4 0 R", "/Contents [ 4 0 R")),
                      Kind("pageWithoutAnEnd", respelt(">> >> >>\nendobj", ">> >>"))),
    nameOfKind);

}  // namespace
}  // namespace quirebind::pdftest
