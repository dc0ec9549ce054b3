// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/PDF/Filters/Predictor.h"
#include "Tests/Platform/PDF/Filters/FilterTestSupport.h"

namespace quirebind {
namespace {

using namespace filtertest;

constexpr int kTIFF = 2;
constexpr int kPNG = 12;
constexpr int kAnyTag = 5;

unsigned byteAt(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

std::size_t rowSizeOf(const PredictorParameters& parameters) {
    return (static_cast<std::size_t>(parameters.columns) *
                static_cast<std::size_t>(parameters.colors) *
                static_cast<std::size_t>(parameters.bitsPerComponent) +
            7) /
           8;
}

unsigned paethOf(unsigned left, unsigned above, unsigned aboveLeft) {
    const int a = static_cast<int>(left);
    const int b = static_cast<int>(above);
    const int c = static_cast<int>(aboveLeft);
    const int p = a + b - c;
    const int pa = std::abs(p - a);
    const int pb = std::abs(p - b);
    const int pc = std::abs(p - c);
    if (pa <= pb && pa <= pc) return left;
    return pb <= pc ? above : aboveLeft;
}

unsigned pngPrediction(unsigned tag, unsigned left, unsigned above, unsigned aboveLeft) {
    switch (tag) {
        case 1:
            return left;
        case 2:
            return above;
        case 3:
            return (left + above) / 2;
        case 4:
            return paethOf(left, above, aboveLeft);
        default:
            return 0;
    }
}

/// Predicts every row with `tag`, or, for kAnyTag, each row with another one.
std::string pngOf(const std::string& text, const PredictorParameters& parameters, int tag) {
    const std::size_t rowSize = rowSizeOf(parameters);
    const auto pixel =
        static_cast<std::size_t>((parameters.colors * parameters.bitsPerComponent + 7) / 8);
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t column = at % rowSize;
        const std::size_t row = at / rowSize;
        const auto rowTag =
            tag == kAnyTag ? static_cast<unsigned>(row * 7 + 4) % 5 : static_cast<unsigned>(tag);
        if (column == 0) result.push_back(static_cast<char>(rowTag));
        const bool hasLeft = column >= pixel;
        const unsigned left = hasLeft ? byteAt(text, at - pixel) : 0;
        const unsigned above = row > 0 ? byteAt(text, at - rowSize) : 0;
        const unsigned aboveLeft = row > 0 && hasLeft ? byteAt(text, at - rowSize - pixel) : 0;
        result.push_back(
            static_cast<char>(byteAt(text, at) - pngPrediction(rowTag, left, above, aboveLeft)));
    }
    return result;
}

/// Predicts sample by sample, on rows taken apart into samples.
std::string tiffOf(std::string text, const PredictorParameters& parameters) {
    const std::size_t rowSize = rowSizeOf(parameters);
    const auto bits = static_cast<std::size_t>(parameters.bitsPerComponent);
    const auto colors = static_cast<std::size_t>(parameters.colors);
    const std::size_t samples = colors * static_cast<std::size_t>(parameters.columns);
    for (std::size_t row = 0; row + rowSize <= text.size(); row += rowSize) {
        const auto bitAt = [&](std::size_t bit) -> unsigned {
            return (byteAt(text, row + bit / 8) >> (7 - bit % 8)) & 1U;
        };
        std::vector<unsigned> values(samples);
        for (std::size_t bit = 0; bit < samples * bits; ++bit) {
            values[bit / bits] = values[bit / bits] * 2 + bitAt(bit);
        }
        for (std::size_t i = samples; i-- > colors;) values[i] -= values[i - colors];
        for (std::size_t bit = 0; bit < samples * bits; ++bit) {
            const unsigned value = (values[bit / bits] >> (bits - 1 - bit % bits)) & 1U;
            const unsigned place = 7U - static_cast<unsigned>(bit % 8);
            char& byte = text[row + bit / 8];
            const unsigned others = static_cast<unsigned char>(byte) & ~(1U << place);
            byte = static_cast<char>(others | (value << place));
        }
    }
    return text;
}

std::vector<PredictorParameters> manyParameters(int predictor) {
    std::vector<PredictorParameters> result;
    for (const int bits : {1, 2, 4, 8, 16}) {
        for (const int colors : {1, 2, 3, 4, 5, 32}) {
            for (const int columns : {1, 2, 3, 7, 8, 13}) {
                result.push_back({.predictor = predictor,
                                  .colors = colors,
                                  .bitsPerComponent = bits,
                                  .columns = columns});
            }
        }
    }
    return result;
}

std::string describe(const PredictorParameters& parameters) {
    return "predictor " + std::to_string(parameters.predictor) + ", colors " +
           std::to_string(parameters.colors) + ", bits " +
           std::to_string(parameters.bitsPerComponent) + ", columns " +
           std::to_string(parameters.columns);
}

TEST(Predictor, LeavesDataWithoutPredictorAlone) {
    const std::string text = randomBytes(1, 100);
    EXPECT_THAT(undoPredictor(text, {}), isComplete(text));
    // The other parameters mean nothing then.
    EXPECT_THAT(
        undoPredictor(text, {.predictor = 1, .colors = -1, .bitsPerComponent = 7, .columns = 0}),
        isComplete(text));
}

TEST(Predictor, UndoesPNGUpAsCrossReferenceStreamsUseIt) {
    const std::string predicted = bytes({2, 1, 0, 0x10, 0,  //
                                         2, 0, 0, 0x20, 0,  //
                                         2, 1, 1, 0xD5, 1});
    const std::string entries = bytes({1, 0, 0x10, 0,  //
                                       1, 0, 0x30, 0,  //
                                       2, 1, 0x05, 1});
    EXPECT_THAT(undoPredictor(predicted, {.predictor = 12, .columns = 4}), isComplete(entries));
}

TEST(Predictor, UndoesEachPNGTagByHand) {
    const std::string predicted = bytes({0, 10, 20, 30,   //
                                         1, 10, 5,  255,  // left: 10, 15, 14
                                         2, 1,  1,  1,    // above: 11, 16, 15
                                         3, 5,  1,  2,    // average: 10, 14, 16
                                         4, 2,  3,  1});  // Paeth: 12, 17, 18
    const std::string decoded = bytes({10, 20, 30, 10, 15, 14, 11, 16, 15, 10, 14, 16, 12, 17, 18});
    EXPECT_THAT(undoPredictor(predicted, {.predictor = 15, .columns = 3}), isComplete(decoded));
}

TEST(Predictor, UndoesEveryPNGTagOnEveryKindOfRow) {
    for (const PredictorParameters& parameters : manyParameters(kPNG)) {
        const std::string text = randomBytes(2, rowSizeOf(parameters) * 7);
        for (int tag = 0; tag <= kAnyTag; ++tag) {
            EXPECT_THAT(undoPredictor(pngOf(text, parameters, tag), parameters), isComplete(text))
                << describe(parameters) << ", tag " << tag;
        }
    }
}

TEST(Predictor, TakesThePNGTagFromTheRowWhateverThePredictorSays) {
    for (int predictor = 10; predictor <= 15; ++predictor) {
        const PredictorParameters parameters{.predictor = predictor, .columns = 5};
        const std::string text = randomBytes(3, 50);
        EXPECT_THAT(undoPredictor(pngOf(text, parameters, kAnyTag), parameters), isComplete(text));
    }
}

TEST(Predictor, KeepsTheRowsBeforeAWrongPNGTag) {
    const PredictorParameters parameters{.predictor = kPNG, .columns = 4};
    EXPECT_THAT(undoPredictor(bytes({0, 1, 2, 3, 4, 5, 1, 2, 3, 4, 0, 1, 2, 3, 4}), parameters),
                isDamagedAfter(bytes({1, 2, 3, 4})));
    EXPECT_THAT(undoPredictor(bytes({255, 1, 2, 3, 4}), parameters), isDamagedAfter(""));
}

TEST(Predictor, DecodesAShortLastPNGRow) {
    const PredictorParameters parameters{.predictor = kPNG, .colors = 3, .columns = 4};
    const std::string text = randomBytes(4, 72);
    for (int tag = 0; tag <= kAnyTag; ++tag) {
        for (std::size_t size = 12; size <= text.size(); ++size) {
            const std::string start = text.substr(0, size);
            EXPECT_THAT(undoPredictor(pngOf(start, parameters, tag), parameters),
                        isComplete(start));
        }
    }
}

TEST(Predictor, IgnoresALineEndBehindTheLastPNGRow) {
    EXPECT_THAT(undoPredictor(bytes({2, 1, 2, 2, 1, 2, '\n'}), {.predictor = 12, .columns = 2}),
                isComplete(bytes({1, 2, 2, 4})));
}

TEST(Predictor, UndoesTIFFByHand) {
    EXPECT_THAT(undoPredictor(bytes({1, 1, 255, 10, 10, 10}), {.predictor = 2, .columns = 3}),
                isComplete(bytes({1, 2, 1, 10, 20, 30})));
    // Red, green, blue.
    EXPECT_THAT(undoPredictor(bytes({1, 2, 3, 1, 1, 1, 1, 0, 255}),
                              {.predictor = 2, .colors = 3, .columns = 3}),
                isComplete(bytes({1, 2, 3, 2, 3, 4, 3, 3, 3})));
    // 00FF + 0002 = 0101.
    EXPECT_THAT(undoPredictor(bytes({0x00, 0xFF, 0x00, 0x02, 0xFF, 0xFF}),
                              {.predictor = 2, .bitsPerComponent = 16, .columns = 3}),
                isComplete(bytes({0x00, 0xFF, 0x01, 0x01, 0x01, 0x00})));
    // 3, +1, +15, and four bits that belong to no sample.
    EXPECT_THAT(
        undoPredictor(bytes({0x31, 0xF9}), {.predictor = 2, .bitsPerComponent = 4, .columns = 3}),
        isComplete(bytes({0x34, 0x39})));
}

TEST(Predictor, UndoesTIFFOnEveryKindOfRow) {
    for (const PredictorParameters& parameters : manyParameters(kTIFF)) {
        const std::string text = randomBytes(5, rowSizeOf(parameters) * 7);
        EXPECT_THAT(undoPredictor(tiffOf(text, parameters), parameters), isComplete(text))
            << describe(parameters);
    }
}

TEST(Predictor, DecodesAShortLastTIFFRow) {
    for (const int bits : {1, 2, 4, 8, 16}) {
        const PredictorParameters parameters{
            .predictor = kTIFF, .colors = 3, .bitsPerComponent = bits, .columns = 16};
        const std::size_t rowSize = rowSizeOf(parameters);
        const std::string text = randomBytes(6, rowSize * 3);
        const std::string predicted = tiffOf(text, parameters);
        for (std::size_t size = rowSize; size <= text.size(); ++size) {
            // Half a sample of 16 bits is dropped.
            const std::size_t whole = bits == 16 ? size / 2 * 2 : size;
            EXPECT_THAT(undoPredictor(predicted.substr(0, size), parameters),
                        isComplete(text.substr(0, whole)))
                << describe(parameters) << ", size " << size;
        }
    }
}

TEST(Predictor, ReportsDataShorterThanARow) {
    EXPECT_THAT(undoPredictor(bytes({1, 1, 1}), {.predictor = 12, .columns = 3}),
                isDamagedAfter(bytes({1, 2})));
    EXPECT_THAT(undoPredictor(bytes({1, 1}), {.predictor = 2, .columns = 3}),
                isDamagedAfter(bytes({1, 2})));
}

TEST(Predictor, DecodesNothingToNothing) {
    EXPECT_THAT(undoPredictor("", {.predictor = 2, .columns = 3}), isComplete(""));
    EXPECT_THAT(undoPredictor("", {.predictor = 12, .columns = 3}), isComplete(""));
}

constexpr int kLargest = std::numeric_limits<int>::max();
constexpr int kSmallest = std::numeric_limits<int>::min();

class PredictorParameterLimits : public testing::TestWithParam<int> {
 protected:
    void expectRefused(const PredictorParameters& parameters) {
        EXPECT_THAT(undoPredictor(text_, parameters), isDamagedAfter("")) << describe(parameters);
    }
    void expectAccepted(const PredictorParameters& parameters) {
        EXPECT_FALSE(undoPredictor(text_, parameters).bytes.empty()) << describe(parameters);
    }

 private:
    std::string text_ = std::string(100, '\1');
};

TEST_P(PredictorParameterLimits, HoldForColumns) {
    for (const int columns : {0, -1, (1 << 24) + 1, 1'000'000'000, kLargest, kSmallest}) {
        expectRefused({.predictor = GetParam(), .columns = columns});
    }
    expectAccepted({.predictor = GetParam(), .columns = 1 << 24});
}

TEST_P(PredictorParameterLimits, HoldForColors) {
    for (const int colors : {0, -1, 33, kLargest, kSmallest}) {
        expectRefused({.predictor = GetParam(), .colors = colors});
    }
    expectAccepted({.predictor = GetParam(), .colors = 32});
}

TEST_P(PredictorParameterLimits, HoldForBitsPerComponent) {
    for (const int bits : {0, -1, 3, 5, 6, 7, 9, 12, 17, 24, 32, kLargest, kSmallest}) {
        expectRefused({.predictor = GetParam(), .bitsPerComponent = bits});
    }
    expectAccepted({.predictor = GetParam(), .bitsPerComponent = 16});
}

TEST_P(PredictorParameterLimits, HoldForAllAtOnce) {
    expectRefused({.predictor = GetParam(),
                   .colors = kLargest,
                   .bitsPerComponent = kLargest,
                   .columns = kLargest});
    expectRefused({.predictor = GetParam(),
                   .colors = kSmallest,
                   .bitsPerComponent = kSmallest,
                   .columns = kSmallest});
    expectAccepted(
        {.predictor = GetParam(), .colors = 32, .bitsPerComponent = 16, .columns = 1 << 24});
}

INSTANTIATE_TEST_SUITE_P(Predictors, PredictorParameterLimits, testing::Values(kTIFF, kPNG));

TEST(Predictor, RefusesAnUnknownPredictor) {
    for (const int predictor : {0, -1, 3, 9, 16, kLargest, kSmallest}) {
        EXPECT_THAT(undoPredictor("text", {.predictor = predictor}), isDamagedAfter(""));
    }
}

// The row size is within the limits, but memory is taken for the data only.
TEST(Predictor, DecodesWhatIsThereOfARowFarLongerThanTheData) {
    EXPECT_THAT(undoPredictor(
                    bytes({1, 1, 1, 1}),
                    {.predictor = 12, .colors = 32, .bitsPerComponent = 16, .columns = 10'000'000}),
                isDamagedAfter(bytes({1, 1, 1})));
    EXPECT_THAT(undoPredictor(
                    bytes({1, 1, 1, 1}),
                    {.predictor = 2, .colors = 32, .bitsPerComponent = 16, .columns = 10'000'000}),
                isDamagedAfter(bytes({1, 1, 1, 1})));
}

TEST(Predictor, NeverGivesMoreThanItGotForRandomParametersAndBytes) {
    std::seed_seq seeds{8};
    std::mt19937 random(seeds);
    const std::vector<int> values = {-1, 0,  1,  2,  3,  4,  5,   8,
                                     9,  10, 12, 15, 16, 32, 100, std::numeric_limits<int>::max()};
    const auto any = [&] { return values[random() % values.size()]; };
    for (std::uint32_t seed = 0; seed < 20'000; ++seed) {
        std::string data = randomBytes(seed, seed % 100);
        // Random bytes are seldom tags.
        for (char& c : data) c = seed % 2 == 0 ? static_cast<char>(byteAt({&c, 1}, 0) % 6) : c;
        const PredictorParameters parameters{
            .predictor = any(), .colors = any(), .bitsPerComponent = any(), .columns = any()};
        const Decoded decoded = undoPredictor(data, parameters);
        ASSERT_LE(decoded.bytes.size(), data.size()) << describe(parameters);
        ASSERT_NE(decoded.status, DecodeStatus::tooLarge) << describe(parameters);
    }
}

}  // namespace
}  // namespace quirebind
