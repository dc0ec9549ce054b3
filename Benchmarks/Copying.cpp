// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Copying the pages of one document into another, all in memory.

#include <cstddef>
#include <cstdint>
#include <utility>

#include <benchmark/benchmark.h>

#include "Benchmarks/Book.h"
#include "Fuzzing/Support/MemoryFileSystem.h"
#include "Platform/PDF/PDFDocument.h"

namespace quirebind::benchmarks {
namespace {

constexpr int kFewest = 1;
constexpr int kMost = 10'000;
constexpr int kStep = 100;

bool appendAll(const PDFDocument& source, PDFDocument& output) {
    for (std::size_t i = 0; i < source.pageCount(); ++i) {
        const auto page = source.pageAtIndex(i);
        if (!page || !output.insertPage(*page, output.pageCount())) return false;
    }
    return true;
}

void copyPages(benchmark::State& state, Layout layout) {
    const ByteBuffer book = makeBook(static_cast<std::uint32_t>(state.range(0)), layout);
    fuzzing::MemoryFileSystem files(book.text());
    for ([[maybe_unused]] const auto _ : state) {
        // Opened anew each time: a document may only be made to cause so much work.
        state.PauseTiming();
        const auto source = PDFDocument::open(URL::file("book.pdf"), files);
        state.ResumeTiming();
        PDFDocument output;
        if (!source || !appendAll(*source, output)) {
            state.SkipWithError("the pages cannot be copied");
            break;
        }
        benchmark::DoNotOptimize(output.pageCount());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(copyPages, fromObjects, Layout::classic)
    ->RangeMultiplier(kStep)
    ->Range(kFewest, kMost);
BENCHMARK_CAPTURE(copyPages, fromObjectStreams, Layout::packed)
    ->RangeMultiplier(kStep)
    ->Range(kFewest, kMost);

/// From the file's bytes to those of the new file.
void mergeInMemory(benchmark::State& state, Layout layout) {
    const ByteBuffer book = makeBook(static_cast<std::uint32_t>(state.range(0)), layout);
    fuzzing::MemoryFileSystem files(book.text());
    for ([[maybe_unused]] const auto _ : state) {
        PDFDocument output;
        {
            const auto source = PDFDocument::open(URL::file("book.pdf"), files);
            if (!source || !appendAll(*source, output)) {
                state.SkipWithError("the pages cannot be copied");
                break;
            }
        }
        const auto data = std::move(output).dataRepresentation();
        if (!data) {
            state.SkipWithError("nothing was written");
            break;
        }
        benchmark::DoNotOptimize(data->text().data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(mergeInMemory, classic, Layout::classic)
    ->RangeMultiplier(kStep)
    ->Range(kFewest, kMost);
BENCHMARK_CAPTURE(mergeInMemory, packed, Layout::packed)
    ->RangeMultiplier(kStep)
    ->Range(kFewest, kMost);

}  // namespace
}  // namespace quirebind::benchmarks
