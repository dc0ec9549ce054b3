// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Filters/Predictor.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "Platform/PDF/Guards/Limits.h"

// Predictor functions (ISO 32000-2, 7.4.4.4). A row has columns * colors samples, packed from the
// high-order bit down, and is filled up to whole bytes.
//
//     TIFF (2)           row ...              each sample is a difference to the one on its left
//     PNG (10 to 15)     tag byte, row ...    the tag says how this row was predicted; the number,
//                                             10 to 15, says nothing about any row
//
// Rows are undone in place: an undone row never lies behind the bytes it is made of.

namespace quirebind {

namespace {

constexpr int kNoPredictor = 1;
constexpr int kTIFFPredictor = 2;
constexpr int kFirstPNGPredictor = 10;
constexpr int kLastPNGPredictor = 15;

// RFC 2083, 6: the tag bytes.
constexpr unsigned kPNGNone = 0;
constexpr unsigned kPNGSub = 1;
constexpr unsigned kPNGUp = 2;
constexpr unsigned kPNGAverage = 3;
constexpr unsigned kPNGPaeth = 4;

using Bytes = std::span<unsigned char>;

struct Layout {
    std::size_t bitsPerSample = 0;
    std::size_t samplesPerPixel = 0;
    std::size_t samplesPerRow = 0;
    std::size_t bytesPerPixel = 0;  // at least 1, as PNG counts
    std::size_t bytesPerRow = 0;
};

std::optional<Layout> layoutOf(const PredictorParameters& parameters) {
    const int bits = parameters.bitsPerComponent;
    if (bits != 1 && bits != 2 && bits != 4 && bits != 8 && bits != 16) return std::nullopt;
    if (parameters.colors < 1 || parameters.colors > limits::kPredictorColours) return std::nullopt;
    if (parameters.columns < 1 || parameters.columns > limits::kPredictorColumns)
        return std::nullopt;

    const auto bitsPerSample = static_cast<std::uint64_t>(bits);
    const auto colors = static_cast<std::uint64_t>(parameters.colors);
    const std::uint64_t samples = colors * static_cast<std::uint64_t>(parameters.columns);
    return Layout{
        .bitsPerSample = static_cast<std::size_t>(bitsPerSample),
        .samplesPerPixel = static_cast<std::size_t>(colors),
        .samplesPerRow = static_cast<std::size_t>(samples),
        .bytesPerPixel = static_cast<std::size_t>((colors * bitsPerSample + 7) / 8),
        .bytesPerRow = static_cast<std::size_t>((samples * bitsPerSample + 7) / 8),
    };
}

Bytes bytesOf(std::string& text) {
    void* const data = text.data();
    return {static_cast<unsigned char*>(data), text.size()};
}

unsigned char sum(unsigned a, unsigned b) {
    return static_cast<unsigned char>(a + b);
}

unsigned char paeth(int left, int above, int aboveLeft) {
    const int estimate = left + above - aboveLeft;
    const int toLeft = std::abs(estimate - left);
    const int toAbove = std::abs(estimate - above);
    const int toAboveLeft = std::abs(estimate - aboveLeft);
    if (toLeft <= toAbove && toLeft <= toAboveLeft) return static_cast<unsigned char>(left);
    return static_cast<unsigned char>(toAbove <= toAboveLeft ? above : aboveLeft);
}

// Writes the row that `source` stands for to the start of `target`, which may overlap `source` from
// below. Gives false for a tag that does not exist.
bool undoPNGRow(unsigned tag, std::span<const unsigned char> source,
                std::span<const unsigned char> above, Bytes target, std::size_t bytesPerPixel) {
    // The first pixel has no left neighbour: zeros stand there.
    const std::size_t first = std::min(bytesPerPixel, source.size());
    const auto left = [&](std::size_t i) -> unsigned { return target[i - bytesPerPixel]; };
    const std::size_t size = source.size();
    std::size_t i = 0;
    switch (tag) {
        case kPNGNone:
            std::ranges::copy(source, target.begin());
            return true;
        case kPNGSub:
            for (; i < first; ++i) target[i] = source[i];
            for (; i < size; ++i) target[i] = sum(source[i], left(i));
            return true;
        case kPNGUp:
            for (; i < size; ++i) target[i] = sum(source[i], above[i]);
            return true;
        case kPNGAverage:
            for (; i < first; ++i) target[i] = sum(source[i], above[i] / 2U);
            for (; i < size; ++i) target[i] = sum(source[i], (left(i) + above[i]) / 2U);
            return true;
        case kPNGPaeth:
            for (; i < first; ++i) target[i] = sum(source[i], above[i]);
            for (; i < size; ++i) {
                target[i] = sum(source[i], paeth(static_cast<int>(left(i)), above[i],
                                                 above[i - bytesPerPixel]));
            }
            return true;
        default:
            return false;
    }
}

DecodeStatus undoPNG(std::string& data, const Layout& layout) {
    const Bytes bytes = bytesOf(data);
    // What stands above the first row. Never longer than the data, whatever the row size.
    const std::vector<unsigned char> zeros(std::min(layout.bytesPerRow, bytes.size()));
    std::span<const unsigned char> above = zeros;
    DecodeStatus status = DecodeStatus::complete;
    std::size_t read = 0;
    std::size_t written = 0;
    // A tag without a row is no row; writers put a line end there.
    while (bytes.size() - read > 1) {
        const unsigned tag = bytes[read];
        const std::size_t size = std::min(layout.bytesPerRow, bytes.size() - read - 1);
        const Bytes target = bytes.subspan(written, size);
        if (!undoPNGRow(tag, bytes.subspan(read + 1, size), above, target, layout.bytesPerPixel)) {
            status = DecodeStatus::damaged;
            break;
        }
        above = target;
        read += size + 1;
        written += size;
    }
    data.resize(written);
    return status;
}

// Samples of 1, 2 or 4 bits.
void undoTIFFSmallSamples(Bytes row, const Layout& layout) {
    const std::size_t bits = layout.bitsPerSample;
    const unsigned mask = (1U << bits) - 1U;
    const auto shiftOf = [&](std::size_t sample) { return 8 - bits - sample * bits % 8; };
    const std::size_t samples = std::min(layout.samplesPerRow, row.size() * 8 / bits);
    for (std::size_t i = layout.samplesPerPixel; i < samples; ++i) {
        const std::size_t before = i - layout.samplesPerPixel;
        const unsigned left = row[before * bits / 8] >> shiftOf(before);
        unsigned char& byte = row[i * bits / 8];
        const unsigned value = ((byte >> shiftOf(i)) + left) & mask;
        byte = static_cast<unsigned char>((byte & ~(mask << shiftOf(i))) | (value << shiftOf(i)));
    }
}

void undoTIFFRow(Bytes row, const Layout& layout) {
    const std::size_t bytesPerPixel = layout.bytesPerPixel;
    if (layout.bitsPerSample < 8) {
        undoTIFFSmallSamples(row, layout);
    } else if (layout.bitsPerSample == 8) {
        for (std::size_t i = bytesPerPixel; i < row.size(); ++i) {
            row[i] = sum(row[i], row[i - bytesPerPixel]);
        }
    } else {
        for (std::size_t i = bytesPerPixel; i + 1 < row.size(); i += 2) {
            const std::size_t before = i - bytesPerPixel;
            const unsigned low = unsigned{row[i + 1]} + row[before + 1];
            row[i + 1] = static_cast<unsigned char>(low);
            row[i] = sum(unsigned{row[i]} + (low >> 8U), row[before]);
        }
    }
}

DecodeStatus undoTIFF(std::string& data, const Layout& layout) {
    // Half a sample of 16 bits at the end means nothing.
    if (layout.bitsPerSample == 16 && data.size() % 2 != 0) data.pop_back();
    const Bytes bytes = bytesOf(data);
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t size = std::min(layout.bytesPerRow, bytes.size() - at);
        undoTIFFRow(bytes.subspan(at, size), layout);
        at += size;
    }
    return DecodeStatus::complete;
}

}  // namespace

Decoded undoPredictor(std::string decoded, const PredictorParameters& parameters) {
    const int predictor = parameters.predictor;
    if (predictor == kNoPredictor)
        return {.bytes = std::move(decoded), .status = DecodeStatus::complete};
    const bool png = predictor >= kFirstPNGPredictor && predictor <= kLastPNGPredictor;
    const std::optional<Layout> layout = layoutOf(parameters);
    if ((!png && predictor != kTIFFPredictor) || !layout)
        return {.bytes = {}, .status = DecodeStatus::damaged};
    if (decoded.empty()) return {};

    // Data may end within its last row; but where not even one row is whole, the parameters or the
    // data must be wrong.
    const bool wholeRow = decoded.size() >= layout->bytesPerRow + (png ? 1 : 0);
    DecodeStatus status = png ? undoPNG(decoded, *layout) : undoTIFF(decoded, *layout);
    if (!wholeRow) status = DecodeStatus::damaged;
    return {.bytes = std::move(decoded), .status = status};
}

}  // namespace quirebind
