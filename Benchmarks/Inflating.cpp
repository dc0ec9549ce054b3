// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Decoding and encoding object streams and cross-reference streams.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <benchmark/benchmark.h>

#include "Benchmarks/Book.h"
#include "Platform/PDF/Filters/Flate.h"
#include "Platform/PDF/Filters/FlateEncoder.h"
#include "Platform/PDF/Filters/Predictor.h"

namespace quirebind::benchmarks {
namespace {

constexpr int kFewest = 1;
constexpr int kMost = 10'000;
constexpr int kStep = 100;
constexpr std::size_t kLimit = std::size_t{64} << 20U;
constexpr int kRows = 100'000;
constexpr int kColumns = 7;
constexpr int kUp = 12;

/// So many page dictionaries, as they stand in object streams.
std::string objects(std::int64_t count) {
    std::string text;
    for (std::int64_t i = 0; i < count; ++i) {
        const auto number = static_cast<std::uint32_t>(i);
        text += pageDictionary(number / 16 + 1, 5, 2 * number + 100) + '\n';
    }
    return text;
}

std::string encoded(std::string_view plain) {
    ByteBuffer out;
    FlateEncoder(FlateEncoder::Effort::thorough).encode(plain, out);
    return std::string(out.text());
}

/// Bytes of the plain text, since that is what is wanted.
void countBytes(benchmark::State& state, std::size_t plain) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(plain));
}

void inflateObjects(benchmark::State& state) {
    const std::string plain = objects(state.range(0));
    const std::string data = encoded(plain);
    for ([[maybe_unused]] const auto _ : state)
        benchmark::DoNotOptimize(decodeFlate(data, kLimit).bytes.data());
    countBytes(state, plain.size());
}
BENCHMARK(inflateObjects)->RangeMultiplier(kStep)->Range(kFewest, kMost);

/// Data whose end is missing takes another decoder.
void inflateCutOff(benchmark::State& state) {
    const std::string plain = objects(state.range(0));
    std::string data = encoded(plain);
    data.resize(data.size() - data.size() / 10);
    for ([[maybe_unused]] const auto _ : state)
        benchmark::DoNotOptimize(decodeFlate(data, kLimit).bytes.data());
    countBytes(state, plain.size());
}
BENCHMARK(inflateCutOff)->Arg(kMost);

/// The predictor that nearly every cross-reference stream has.
void undoUp(benchmark::State& state) {
    std::string rows;
    for (int row = 0; row < kRows; ++row) {
        rows += '\2';
        for (int column = 0; column < kColumns; ++column)
            rows += static_cast<char>(row * column & 127);
    }
    for ([[maybe_unused]] const auto _ : state) {
        state.PauseTiming();
        std::string input = rows;
        state.ResumeTiming();
        const Decoded decoded = undoPredictor(
            std::move(input), {.predictor = kUp, .bitsPerComponent = 8, .columns = kColumns});
        benchmark::DoNotOptimize(decoded.bytes.data());
    }
    countBytes(state, rows.size());
}
BENCHMARK(undoUp);

void deflateObjects(benchmark::State& state) {
    const std::string plain = objects(state.range(0));
    FlateEncoder encoder(FlateEncoder::Effort::quick);
    for ([[maybe_unused]] const auto _ : state) {
        ByteBuffer out;
        encoder.encode(plain, out);
        benchmark::DoNotOptimize(out.text().data());
    }
    countBytes(state, plain.size());
}
BENCHMARK(deflateObjects)->RangeMultiplier(kStep)->Range(kFewest, kMost);

}  // namespace
}  // namespace quirebind::benchmarks
