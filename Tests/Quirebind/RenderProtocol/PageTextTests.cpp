// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <cstddef>
#include <limits>
#include <span>

#include <gtest/gtest.h>

#include "Quirebind/RenderProtocol/PageText.h"

namespace quirebind {
namespace {

std::span<const std::byte> bytes(const QByteArray& array) {
    return std::as_bytes(std::span(array.constData(), static_cast<std::size_t>(array.size())));
}

TEST(PageText, SurvivesTheWay) {
    const PageText text{QString::fromUtf8("Gr\u00fc\u00dfe, \U0001F600"),
                        {QRectF(1, 2, 3, 4), QRectF(-0.5, 0, 100, 12.25)}};
    const auto decoded = decodePageText(bytes(encode(text)));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->text, text.text);
    EXPECT_EQ(decoded->areas, text.areas);
}

TEST(PageText, MayBeEmpty) {
    const auto decoded = decodePageText(bytes(encode({})));
    ASSERT_TRUE(decoded);
    EXPECT_TRUE(decoded->text.isEmpty());
    EXPECT_TRUE(decoded->areas.isEmpty());
}

TEST(PageText, IsRefusedWhereverItIsCutOffOrGoesOn) {
    const QByteArray whole = encode({QStringLiteral("abc"), {QRectF(1, 2, 3, 4)}});
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(decodePageText(bytes(whole.left(length)))) << length;
    EXPECT_FALSE(decodePageText(bytes(whole + '\0')));
}

TEST(PageText, IsRefusedWithCountsThatLie) {
    EXPECT_FALSE(decodePageText(bytes(QByteArray(4, '\xff'))));
    EXPECT_FALSE(decodePageText(bytes(QByteArray(4, '\0') + QByteArray(4, '\xff'))));
}

TEST(PageText, IsRefusedWithPlacesThatAreNoNumbers) {
    const double infinite = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(decodePageText(bytes(encode({{}, {QRectF(0, infinite, 1, 1)}}))));
}

}  // namespace
}  // namespace quirebind
