// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Tests/Support/FixtureLexer.h"

/// Plain encoders for the standard filters, written for tests and apart from the decoders that
/// they test: what both understand alike is likely to be right.
namespace quirebind::test {

[[nodiscard]] std::string encodeFlate(std::string_view data);
[[nodiscard]] std::string encodeLZW(std::string_view data, bool earlyChange = true);
[[nodiscard]] std::string encodeRunLength(std::string_view data);
[[nodiscard]] std::string encodeASCIIHex(std::string_view data);
[[nodiscard]] std::string encodeASCII85(std::string_view data);

/// Applies a predictor function (ISO 32000-2, 7.4.4.4) to rows of `columns` bytes, one byte being
/// one sample: 2, 10 to 14, or 15, which takes the PNG functions in turn. The last row may be
/// shorter. Throws std::invalid_argument for other predictors and for no columns.
[[nodiscard]] std::string applyPredictor(std::string_view data, int predictor, std::size_t columns);

/// How a stream's data is encoded.
struct StreamEncoding {
    std::vector<std::string> filters;  ///< With their solidus, as in a /Filter array.
    int predictor = 1;
    std::size_t columns = 1;
    bool earlyChange = true;

    /// From a directive's options. Throws std::invalid_argument with its line.
    static StreamEncoding fromDirective(const FixtureDirective& directive,
                                        std::size_t defaultColumns);

    [[nodiscard]] std::string encode(std::string_view data) const;
    /// The value of /Filter; empty if there is none.
    [[nodiscard]] std::string filterValue() const;
    /// The value of /DecodeParms; empty if there is none.
    [[nodiscard]] std::string parametersValue() const;
};

}  // namespace quirebind::test
