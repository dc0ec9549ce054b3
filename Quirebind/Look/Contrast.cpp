// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/Look/Contrast.h"

#include <algorithm>
#include <cmath>

#include "Quirebind/Look/Colours.h"

namespace quirebind {

namespace {

/// WCAG 2.1, relative luminance.
double luminance(const QColor& colour) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

}  // namespace

double contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor legible(const QColor& colour, const QColor& towards, std::span<const QColor> grounds,
               double least) {
    constexpr int kSteps = 20;
    for (int step = 0; step < kSteps; ++step) {
        const QColor candidate = mix(towards, colour, double(step) / kSteps);
        if (std::ranges::all_of(grounds, [&](const QColor& ground) {
                return contrast(candidate, ground) >= least;
            }))
            return candidate;
    }
    return towards;
}

}  // namespace quirebind
