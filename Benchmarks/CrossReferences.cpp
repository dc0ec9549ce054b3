// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Reading the cross-reference sections of a file, which is most of what it takes to open one.

#include <cstdint>

#include <benchmark/benchmark.h>

#include "Benchmarks/Book.h"
#include "Fuzzing/Support/MemoryFileSystem.h"
#include "Platform/PDF/PDFDocument.h"
#include "Platform/PDF/Reading/CrossReferenceReader.h"

namespace quirebind::benchmarks {
namespace {

constexpr int kFewest = 10;
constexpr int kMost = 100'000;
constexpr int kStep = 100;

void readSections(benchmark::State& state, Layout layout) {
    const ByteBuffer book = makeBook(static_cast<std::uint32_t>(state.range(0)), layout);
    fuzzing::MemoryFileSystem files(book.text());
    for ([[maybe_unused]] const auto _ : state) {
        auto image = SourceImage::open(URL::file("book.pdf"), files);
        if (!image) {
            state.SkipWithError("the book cannot be opened");
            break;
        }
        benchmark::DoNotOptimize(CrossReferenceReader(*image).read().table.flatLimit());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(readSections, table, Layout::classic)
    ->RangeMultiplier(kStep)
    ->Range(kFewest, kMost);
BENCHMARK_CAPTURE(readSections, stream, Layout::packed)
    ->RangeMultiplier(kStep)
    ->Range(kFewest, kMost);

/// The same and the page tree.
void openDocument(benchmark::State& state, Layout layout) {
    const ByteBuffer book = makeBook(static_cast<std::uint32_t>(state.range(0)), layout);
    fuzzing::MemoryFileSystem files(book.text());
    for ([[maybe_unused]] const auto _ : state) {
        const auto document = PDFDocument::open(URL::file("book.pdf"), files);
        if (!document) {
            state.SkipWithError("the book cannot be opened");
            break;
        }
        benchmark::DoNotOptimize(document->pageCount());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(openDocument, table, Layout::classic)
    ->RangeMultiplier(kStep)
    ->Range(kFewest, kMost);
BENCHMARK_CAPTURE(openDocument, stream, Layout::packed)
    ->RangeMultiplier(kStep)
    ->Range(kFewest, kMost);

}  // namespace
}  // namespace quirebind::benchmarks
