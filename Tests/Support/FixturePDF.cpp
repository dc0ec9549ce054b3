// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Support/FixturePDF.h"

#include <stdexcept>

#include "Tests/Support/FixtureExpander.h"
#include "Tests/Support/FixtureLexer.h"

namespace quirebind::test {

Fixture expandFixture(std::string_view text) {
    // A pass more than the digits that a number can grow by would do; wrong lengths of compressed
    // cross-reference streams can take a few more.
    constexpr int kMaxPasses = 32;
    const auto pieces = lexFixture(text);
    FixtureSymbols known;
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        FixtureExpander expander(pieces, known);
        expander.run();
        if (expander.symbols() != known) {
            known = expander.symbols();
            continue;
        }
        expander.requireResolved();
        Fixture fixture{.bytes = expander.bytes(), .offsets = known.labels};
        for (const auto& [number, definitions] : known.objects) {
            fixture.offsets.emplace(std::to_string(number), definitions.back().offset);
        }
        return fixture;
    }
    throw std::invalid_argument("line 1: the numbers of the fixture do not settle");
}

std::string fixturePDF(std::string_view text) {
    return expandFixture(text).bytes;
}

}  // namespace quirebind::test
