// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Runs a target once for each file in the folders given, without a fuzzer.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "Fuzzing/Support/Target.h"

namespace {

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace

int main(int argc, char* argv[]) {
    std::vector<std::filesystem::path> files;
    for (const char* const folder : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
        if (!std::filesystem::is_directory(folder)) continue;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::ranges::sort(files);
    for (const std::filesystem::path& file : files) {
        std::cout << file.filename().string() << std::endl;  // before what may end the program
        const std::string bytes = contentOf(file);
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are bytes
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    if (files.empty()) std::cerr << "nothing to replay\n";
    return files.empty() ? 1 : 0;
}
