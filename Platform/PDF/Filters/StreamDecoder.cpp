// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Filters/StreamDecoder.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>
#include <vector>

#include "Platform/PDF/Filters/ASCII85.h"
#include "Platform/PDF/Filters/ASCIIHex.h"
#include "Platform/PDF/Filters/Flate.h"
#include "Platform/PDF/Filters/LZW.h"
#include "Platform/PDF/Filters/Predictor.h"
#include "Platform/PDF/Filters/RunLength.h"
#include "Platform/PDF/Guards/Limits.h"

namespace quirebind {
namespace {

enum class Filter : std::uint8_t { flate, lzw, asciiHex, ascii85, runLength, unknown };

/// The names of ISO 32000-2, table 6, and the abbreviations of inline images (table 92), which real
/// files use here too.
Filter filterNamed(Value value) {
    struct Name {
        std::string_view name;
        Filter filter;
    };
    static constexpr std::array<Name, 10> kNames{{{"FlateDecode", Filter::flate},
                                                  {"Fl", Filter::flate},
                                                  {"LZWDecode", Filter::lzw},
                                                  {"LZW", Filter::lzw},
                                                  {"ASCIIHexDecode", Filter::asciiHex},
                                                  {"AHx", Filter::asciiHex},
                                                  {"ASCII85Decode", Filter::ascii85},
                                                  {"A85", Filter::ascii85},
                                                  {"RunLengthDecode", Filter::runLength},
                                                  {"RL", Filter::runLength}}};
    for (const Name& candidate : kNames)
        if (value.isName(candidate.name)) return candidate.filter;
    return Filter::unknown;
}

int intUnder(Value dictionary, std::string_view key, int fallback, const Resolve& resolve) {
    const auto value = resolve(dictionary.find(key)).integer();
    if (!value) return fallback;
    if (*value < 0 || *value > std::numeric_limits<int>::max()) return -1;
    return static_cast<int>(*value);
}

PredictorParameters predictorParameters(Value parameters, const Resolve& resolve) {
    PredictorParameters result;
    result.predictor = intUnder(parameters, "Predictor", result.predictor, resolve);
    result.colors = intUnder(parameters, "Colors", result.colors, resolve);
    result.bitsPerComponent =
        intUnder(parameters, "BitsPerComponent", result.bitsPerComponent, resolve);
    result.columns = intUnder(parameters, "Columns", result.columns, resolve);
    return result;
}

Decoded decodeOnce(Filter filter, Value parameters, std::string_view encoded, std::size_t limit,
                   const Resolve& resolve) {
    switch (filter) {
        case Filter::flate:
            return decodeFlate(encoded, limit);
        case Filter::lzw:
            return decodeLZW(encoded, intUnder(parameters, "EarlyChange", 1, resolve) != 0, limit);
        case Filter::asciiHex:
            return decodeASCIIHex(encoded, limit);
        case Filter::ascii85:
            return decodeASCII85(encoded, limit);
        case Filter::runLength:
            return decodeRunLength(encoded, limit);
        case Filter::unknown:
            break;
    }
    return {{}, DecodeStatus::damaged};
}

}  // namespace

Decoded decodeStream(Value dictionary, std::string_view body, const Resolve& resolve,
                     WorkBudget& budget) {
    const StreamFilters all(dictionary, resolve);
    const auto& filters = all.others();  // what is encrypted has been decrypted before
    if (filters.size() > limits::kFilters) return {{}, DecodeStatus::damaged};

    Decoded result;
    if (filters.empty()) {
        if (body.size() > limits::kDecodedStream) return {{}, DecodeStatus::tooLarge};
        budget.spend(body.size());
        result.bytes = body;
        return result;
    }
    const std::uint64_t most = std::min<std::uint64_t>(
        limits::kDecodedStream,
        limits::kDecodedFrom.fixed + limits::kDecodedFrom.perByte * body.size());
    bool damaged = false;
    for (std::size_t i = 0; i < filters.size(); ++i) {
        const Filter filter = filterNamed(resolve(filters[i].name));
        const Value parameters = resolve(filters[i].parameters);
        const std::string encoded = std::move(result.bytes);
        const auto limit = static_cast<std::size_t>(std::min(most, budget.left()));
        result = decodeOnce(filter, parameters, i == 0 ? body : std::string_view(encoded), limit,
                            resolve);
        // A stage that went too far did the work up to there.
        const bool tooLarge = result.status == DecodeStatus::tooLarge;
        budget.spend(tooLarge ? limit : result.bytes.size());
        if (tooLarge) return result;
        damaged = damaged || result.status == DecodeStatus::damaged;
        if (filter == Filter::flate || filter == Filter::lzw) {
            result =
                undoPredictor(std::move(result.bytes), predictorParameters(parameters, resolve));
            damaged = damaged || result.status == DecodeStatus::damaged;
        }
    }
    if (damaged) result.status = DecodeStatus::damaged;
    return result;
}

}  // namespace quirebind
