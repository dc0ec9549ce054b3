// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <ostream>

#include <gtest/gtest.h>

#include "Quirebind/Look/Colours.h"
#include "Tests/Quirebind/Views/Rendered.h"

namespace quirebind {
namespace {

using viewtest::contrastOf;

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
        EXPECT_GE(contrastOf(text, ground), kText) << ground.name().toStdString();
        EXPECT_GE(contrastOf(secondary, ground), kText) << ground.name().toStdString();
    }
}

TEST_P(Contrast, OfTheProminentButtonIsEnough) {
    const QPalette p = palette();
    EXPECT_GE(contrastOf(prominentText(), prominentFill(p)), kText);
    EXPECT_GE(contrastOf(p.color(QPalette::HighlightedText), p.color(QPalette::Highlight)), kText);
    EXPECT_GE(contrastOf(prominentFill(p), p.color(QPalette::Window)), kGraphics);
}

TEST_P(Contrast, OfTealIsEnough) {
    const QPalette p = palette();
    for (const QColor& ground : {p.color(QPalette::Window), p.color(QPalette::Base),
                                 selectionFill(p, true), pageBackground(p)})
        EXPECT_GE(contrastOf(accent(p), ground), kGraphics) << ground.name().toStdString();
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
