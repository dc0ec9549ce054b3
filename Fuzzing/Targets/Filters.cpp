// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Each filter and predictor, one after another as a chain of bytes says.

#include <string>
#include <utility>

#include "Fuzzing/Support/Target.h"
#include "Platform/PDF/Filters/ASCII85.h"
#include "Platform/PDF/Filters/ASCIIHex.h"
#include "Platform/PDF/Filters/Flate.h"
#include "Platform/PDF/Filters/LZW.h"
#include "Platform/PDF/Filters/Predictor.h"
#include "Platform/PDF/Filters/RunLength.h"

namespace {

using namespace quirebind;  // NOLINT(google-build-using-namespace): a program of its own

constexpr std::size_t kLimit = std::size_t{1} << 20U;

Decoded decode(unsigned filter, std::string_view encoded, fuzzing::Choices& choices) {
    switch (filter) {
        case 0:
            return decodeFlate(encoded, kLimit);
        case 1:
            return decodeLZW(encoded, choices.byte() % 2 == 0, kLimit);
        case 2:
            return decodeASCIIHex(encoded, kLimit);
        case 3:
            return decodeASCII85(encoded, kLimit);
        default:
            return decodeRunLength(encoded, kLimit);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Choices choices(fuzzing::textOf(data, size));
    constexpr unsigned kFilters = 5;
    const unsigned filter = choices.byte() % kFilters;
    PredictorParameters parameters;
    parameters.predictor = static_cast<int>(choices.below(20));
    parameters.colors = static_cast<int>(choices.byte());
    parameters.bitsPerComponent = static_cast<int>(choices.below(40));
    parameters.columns = static_cast<int>(choices.byte() << choices.below(24));
    const std::string encoded(choices.rest());
    Decoded decoded = decode(filter, encoded, choices);
    fuzzing::require(decoded.bytes.size() <= kLimit, "no more is decoded than the limit");
    fuzzing::require(decoded.status != DecodeStatus::tooLarge || decoded.bytes.empty(),
                     "of what is too large nothing is given");
    const std::size_t before = decoded.bytes.size();
    const Decoded undone = undoPredictor(std::move(decoded.bytes), parameters);
    fuzzing::require(undone.bytes.size() <= before, "no predictor makes data longer");
    return 0;
}
