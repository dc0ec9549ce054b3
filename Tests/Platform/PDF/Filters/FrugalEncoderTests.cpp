// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <cstddef>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Filters/Flate.h"
#include "Platform/PDF/Filters/FrugalEncoder.h"

namespace quirebind {
namespace {

/// What the objects of a document look like.
std::string objects(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "<</Type/Annot/Rect[" + std::to_string(i * 7919 % 612) + " " +
                std::to_string(i * 104729 % 792) + " 10 20]/P " + std::to_string(i) + " 0 R>>\n";
    }
    return text;
}

std::size_t encodedSize(FrugalEncoder& encoder, std::string_view plain) {
    ByteBuffer out;
    out.append("before");
    encoder.encode(plain, out);
    const std::string_view encoded = out.text().substr(6);
    EXPECT_EQ(out.text().substr(0, 6), "before");
    EXPECT_EQ(decodeFlate(encoded, plain.size() + 1).bytes, plain);
    return encoded.size();
}

TEST(FrugalEncoder, compressesThoroughlyWhereNothingIsAllowed) {
    FrugalEncoder thorough;
    FrugalEncoder quick;
    quick.allow(1e9);
    EXPECT_LT(encodedSize(thorough, objects(2000)), encodedSize(quick, objects(2000)));
}

TEST(FrugalEncoder, staysBelowWhatIsAllowedWhereThatIsPossible) {
    const std::string plain = objects(200);
    FrugalEncoder unlimited;
    unlimited.allow(1e9);
    const std::size_t quick = encodedSize(unlimited, plain);
    FrugalEncoder none;
    const std::size_t thorough = encodedSize(none, plain);
    ASSERT_LT(thorough, quick);

    // What a source took whose compression was between the two.
    constexpr int kTimes = 100;
    const auto each = static_cast<double>(thorough + quick) / 2;
    FrugalEncoder encoder;
    std::size_t quickOnes = 0;
    double written = 0;
    for (int i = 0; i < kTimes; ++i) {
        encoder.allow(each);
        const std::size_t size = encodedSize(encoder, plain);
        written += static_cast<double>(size);
        if (size == quick) ++quickOnes;
    }
    EXPECT_LE(written, kTimes * each);
    EXPECT_GT(quickOnes, 0U);
}

TEST(FrugalEncoder, makesUpForWhatTakesMore) {
    FrugalEncoder encoder;
    encoder.allow(10'000);
    encoder.allow(-10'000);
    FrugalEncoder thorough;
    EXPECT_EQ(encodedSize(encoder, objects(100)), encodedSize(thorough, objects(100)));
}

TEST(FrugalEncoder, encodesNothing) {
    FrugalEncoder encoder;
    encoder.allow(1e6);
    EXPECT_GT(encodedSize(encoder, ""), 0U);
    EXPECT_GT(encodedSize(encoder, "x"), 0U);
}

}  // namespace
}  // namespace quirebind
