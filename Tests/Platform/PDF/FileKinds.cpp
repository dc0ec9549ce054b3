// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Platform/PDF/FileKinds.h"

#include "Tests/Platform/PDF/DocumentTestSupport.h"

namespace quirebind::pdftest {

TEST_P(ReadableFile, keepsItsPagesWhenMerged) {
    const Bench bench;
    expectPages(bench.mergeFixture(GetParam().text), GetParam().widths, GetParam().texts);
}

TEST_P(RefusedFile, isNotMerged) {
    const Bench bench;
    EXPECT_FALSE(bench.tryMerge({bench.fixture("source.pdf", GetParam().text)}));
}

}  // namespace quirebind::pdftest
