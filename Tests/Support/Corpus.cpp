// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Support/Corpus.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace quirebind::test {

namespace {

bool isPDF(const std::filesystem::path& file) {
    std::string extension = file.extension().string();
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ".pdf";
}

}  // namespace

std::optional<std::filesystem::path> corpusFolder() {
    // The tests never change the environment.
    const char* const name = std::getenv("QUIREBIND_CORPUS");  // NOLINT(concurrency-mt-unsafe)
    if (name == nullptr || *name == '\0') return std::nullopt;
    if (!std::filesystem::is_directory(name)) {
        throw std::runtime_error(std::string("QUIREBIND_CORPUS is no folder: ") + name);
    }
    return std::filesystem::canonical(name);
}

std::vector<std::filesystem::path> corpusList(std::string_view name) {
    const auto folder = corpusFolder();
    if (!folder) return {};
    const auto lists = folder->parent_path() / "measure" / "lists";
    if (!std::filesystem::exists(lists)) return {};
    const auto list = lists / (std::string(name) + ".txt");
    std::ifstream in(list);
    if (!in) throw std::runtime_error("there is no list " + list.string());
    std::vector<std::filesystem::path> files;
    for (std::string line; std::getline(in, line);) {
        if (line.empty()) continue;
        files.push_back(*folder / line);
        if (!std::filesystem::is_regular_file(files.back())) {
            throw std::runtime_error(list.string() + " names a missing file: " + line);
        }
    }
    return files;
}

std::vector<std::filesystem::path> allCorpusFiles() {
    const auto folder = corpusFolder();
    if (!folder) return {};
    std::vector<std::filesystem::path> files;
    for (const auto& item : std::filesystem::recursive_directory_iterator(*folder)) {
        if (item.is_regular_file() && isPDF(item.path())) files.push_back(item.path());
    }
    std::ranges::sort(files);
    return files;
}

}  // namespace quirebind::test
