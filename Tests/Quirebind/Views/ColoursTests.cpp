// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cmath>
#include <ostream>

#include <gtest/gtest.h>

#include "Quirebind/Views/Colours.h"

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

double contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

constexpr double kText = 4.5;
constexpr double kGraphics = 3.0;

class Contrast : public testing::TestWithParam<bool> {
 protected:
    [[nodiscard]] static QPalette palette() {
        return accented(GetParam() ? darkPalette() : lightPalette());
    }
};

TEST_P(Contrast, OfTextIsEnoughOnEveryGround) {
    const QPalette p = palette();
    const QColor text = p.color(QPalette::WindowText);
    const QColor secondary = p.color(kSecondaryText);
    for (const QColor& ground :
         {p.color(QPalette::Window), p.color(QPalette::Base), p.color(QPalette::Button),
          selectionFill(p, true), selectionFill(p, false)}) {
        EXPECT_GE(contrast(text, ground), kText) << ground.name().toStdString();
        EXPECT_GE(contrast(secondary, ground), kText) << ground.name().toStdString();
    }
}

TEST_P(Contrast, OfTheProminentButtonIsEnough) {
    const QPalette p = palette();
    EXPECT_GE(contrast(prominentText(), prominentFill(p)), kText);
    EXPECT_GE(contrast(p.color(QPalette::HighlightedText), p.color(QPalette::Highlight)), kText);
    EXPECT_GE(contrast(prominentFill(p), p.color(QPalette::Window)), kGraphics);
}

TEST_P(Contrast, OfTealIsEnough) {
    const QPalette p = palette();
    for (const QColor& ground : {p.color(QPalette::Window), p.color(QPalette::Base),
                                 selectionFill(p, true), pageBackground(p)})
        EXPECT_GE(contrast(accent(p), ground), kGraphics) << ground.name().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Palettes, Contrast, testing::Bool(), [](const auto& dark) {
    return dark.param ? std::string("Dark") : std::string("Light");
});

TEST(Colours, TellDarkFromLight) {
    EXPECT_TRUE(isDark(darkPalette()));
    EXPECT_FALSE(isDark(lightPalette()));
}

}  // namespace
}  // namespace quirebind
