// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Merging documents whose syntax is right and whose objects are anything. With QUIREBIND_SHOW_GRAPH
// set the document goes to standard output, for looking at a finding.

#include <cstdlib>
#include <iostream>

#include "Fuzzing/Support/GraphDocument.h"
#include "Fuzzing/Support/MergeChecks.h"
#include "Fuzzing/Support/Target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quirebind;  // NOLINT(google-build-using-namespace): a program of its own
    const std::string document = fuzzing::graphDocument(fuzzing::textOf(data, size));
    // NOLINTNEXTLINE(concurrency-mt-unsafe): there is one thread
    if (std::getenv("QUIREBIND_SHOW_GRAPH") != nullptr) std::cout << document << std::flush;
    fuzzing::mergeAndCheck(document);
    return 0;
}
