// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

/// Real PDF files, which are not part of this tree. The environment variable QUIREBIND_CORPUS names
/// the folder they are in. Lists of some of them may stand beside it, in ../measure/lists/NAME.txt,
/// one path per line, relative to the corpus.
namespace quirebind::test {

/// The folder, if the variable is set and not empty. Throws std::runtime_error if it names no
/// folder: who asks for the corpus shall not get fewer tests unawares.
[[nodiscard]] std::optional<std::filesystem::path> corpusFolder();

/// The files of a list, by absolute path, in its order. None without a corpus, and where no lists
/// stand beside it. Throws std::runtime_error if only this list is missing, or a file of it.
[[nodiscard]] std::vector<std::filesystem::path> corpusList(std::string_view name);

/// All files of the corpus whose name ends in .pdf in any case, sorted. None without a corpus.
[[nodiscard]] std::vector<std::filesystem::path> allCorpusFiles();

}  // namespace quirebind::test
