// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "Platform/PDF/Filters/Decoded.h"

namespace quirebind {

/// The parameters of a predictor function (ISO 32000-2, table 8), with their defaults. As read from
/// the file: any value may be wrong.
struct PredictorParameters {
    int predictor = 1;
    int colors = 1;
    int bitsPerComponent = 8;
    int columns = 1;
};

/// Undoes the PNG or TIFF predictor that `decoded` was made with. Never larger than its input.
[[nodiscard]] Decoded undoPredictor(std::string decoded, const PredictorParameters& parameters);

}  // namespace quirebind
