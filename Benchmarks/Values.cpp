// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Scanning the text of objects, which a merge does to every byte that is no stream's body.

#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Benchmarks/Book.h"
#include "Platform/PDF/Syntax/Value.h"
#include "Platform/PDF/Syntax/ValueScanner.h"

namespace quirebind::benchmarks {
namespace {

constexpr int kElements = 1000;

std::string arrayOf(const std::string& element) {
    std::string text = "[";
    for (int i = 0; i < kElements; ++i) text += element + ' ';
    return text + ']';
}

void scan(benchmark::State& state, const std::string& text) {
    FoundParts parts;
    for ([[maybe_unused]] const auto _ : state) {
        benchmark::DoNotOptimize(scanValue(text, 0, &parts).end);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void scanPage(benchmark::State& state) {
    scan(state, pageDictionary(17, 12345, 123456));
}
BENCHMARK(scanPage);

void scanReferences(benchmark::State& state) {
    scan(state, arrayOf("123456 0 R"));
}
BENCHMARK(scanReferences);

void scanNumbers(benchmark::State& state) {
    scan(state, arrayOf("595.276"));
}
BENCHMARK(scanNumbers);

void scanNames(benchmark::State& state) {
    scan(state, arrayOf("/DeviceRGB"));
}
BENCHMARK(scanNames);

void scanStrings(benchmark::State& state) {
    scan(state, arrayOf("(some words \\(and more\\) of text) <feff0041>"));
}
BENCHMARK(scanStrings);

void scanNestedDictionaries(benchmark::State& state) {
    scan(state, arrayOf("<< /A << /B [ << /C 1 >> ] >> >>"));
}
BENCHMARK(scanNestedDictionaries);

/// The last entry of a dictionary, behind all others.
void findEntry(benchmark::State& state) {
    const std::string page = pageDictionary(17, 12345, 123456);
    for ([[maybe_unused]] const auto _ : state)
        benchmark::DoNotOptimize(Value(page).find("Group").text().data());
}
BENCHMARK(findEntry);

}  // namespace
}  // namespace quirebind::benchmarks
