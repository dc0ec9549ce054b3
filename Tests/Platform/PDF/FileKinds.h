// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace quirebind::pdftest {

/// A document in one of the many forms that a file may have, and the pages that it must keep.
struct Kind {
    Kind(std::string itsName, std::string itsText, std::vector<double> itsWidths = {200},
         std::vector<std::string> itsTexts = {"one"})
        : name(std::move(itsName)),
          text(std::move(itsText)),
          widths(std::move(itsWidths)),
          texts(std::move(itsTexts)) {}

    std::string name;
    std::string text;  ///< Of a fixture.
    std::vector<double> widths;
    std::vector<std::string> texts;
};

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds it by this name.
inline void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}

/// For INSTANTIATE_TEST_SUITE_P.
inline std::string nameOfKind(const ::testing::TestParamInfo<Kind>& info) {
    return info.param.name;
}

/// Every kind is merged, and the result is to have its pages. Instantiated in the files of tests
/// that are about the kinds.
class ReadableFile : public ::testing::TestWithParam<Kind> {};

/// Files that it would be wrong to merge as if nothing were missing.
class RefusedFile : public ::testing::TestWithParam<Kind> {};

}  // namespace quirebind::pdftest
