// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Object streams, decoded already: two bytes are /First, one is /N.

#include <string>
#include <vector>

#include "Fuzzing/Support/Target.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Reading/ObjectStream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quirebind;  // NOLINT(google-build-using-namespace): a program of its own
    fuzzing::Choices choices(fuzzing::textOf(data, size));
    const std::size_t first = choices.byte() + 256 * choices.below(4);
    const std::size_t count = choices.byte();
    const bool whole = choices.byte() % 2 == 0;
    constexpr std::uint64_t kWork = std::uint64_t{1} << 24U;
    WorkBudget budget(kWork);
    try {
        const std::string decoded(choices.rest());
        ObjectStream stream(decoded, decoded.size(), first, count, whole);
        FoundParts parts;
        for (std::size_t i = 0; i < stream.size(); ++i) {
            const std::uint32_t number = stream.numberAt(i);
            (void)stream.find(number, static_cast<std::uint32_t>(i), budget, &parts);
            (void)stream.find(number, static_cast<std::uint32_t>(i + 1), budget, nullptr);
        }
    } catch (const DamagedDocument&) {
        return 0;
    }
    return 0;
}
