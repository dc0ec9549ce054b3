// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Putting a file together from objects that are there already.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <benchmark/benchmark.h>

#include "Benchmarks/Book.h"
#include "Platform/PDF/Writing/CrossReferenceWriter.h"
#include "Platform/PDF/Writing/DocumentWriter.h"

namespace quirebind::benchmarks {
namespace {

constexpr int kFewest = 10;
constexpr int kMost = 100'000;
constexpr int kStep = 100;
constexpr std::uint64_t kBytesEach = 350;

void writeBook(benchmark::State& state, Layout layout) {
    for ([[maybe_unused]] const auto _ : state) {
        const ByteBuffer book = makeBook(static_cast<std::uint32_t>(state.range(0)), layout);
        benchmark::DoNotOptimize(book.text().data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(writeBook, classic, Layout::classic)
    ->RangeMultiplier(kStep)
    ->Range(kFewest, kMost);
BENCHMARK_CAPTURE(writeBook, packed, Layout::packed)->RangeMultiplier(kStep)->Range(kFewest, kMost);

std::vector<OutputLocation> locations(std::int64_t objects) {
    std::vector<OutputLocation> places(1);
    for (std::int64_t i = 1; i < objects; ++i)
        places.push_back(OutputLocation::inFile(static_cast<std::uint64_t>(i) * kBytesEach));
    return places;
}

void writeTable(benchmark::State& state) {
    const std::vector<OutputLocation> places = locations(state.range(0));
    for ([[maybe_unused]] const auto _ : state) {
        ByteBuffer out;
        writeCrossReferenceTable(out, places, 1);
        benchmark::DoNotOptimize(out.text().data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(writeTable)->RangeMultiplier(kStep)->Range(kFewest, kMost);

void writeTableStream(benchmark::State& state) {
    std::vector<OutputLocation> places = locations(state.range(0) + 1);
    const auto number = static_cast<std::uint32_t>(state.range(0));
    FrugalEncoder encoder;
    for ([[maybe_unused]] const auto _ : state) {
        ByteBuffer out;
        writeCrossReferenceStream(out, places, number, 1, encoder);
        benchmark::DoNotOptimize(out.text().data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(writeTableStream)->RangeMultiplier(kStep)->Range(kFewest, kMost);

/// A body as large as a scanned page.
void writeStream(benchmark::State& state) {
    const std::vector<char> body(static_cast<std::size_t>(state.range(0)), 'x');
    for ([[maybe_unused]] const auto _ : state) {
        DocumentWriter writer;
        writer.beginStream(writer.reserve()).append("<<>>");
        std::ranges::copy(body, writer.streamBody(body.size()).begin());
        writer.endStream();
        benchmark::DoNotOptimize(&writer);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(writeStream)->Arg(1 << 22);

}  // namespace
}  // namespace quirebind::benchmarks
