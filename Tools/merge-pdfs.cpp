// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "QuirebindCore/PDFMerger.h"

namespace {

/// What a terminal can show: the names of files may hold what commands it.
std::string printable(std::string message) {
    const auto isControl = [](char c) { return (c >= '\0' && c < ' ') || c == '\x7f'; };
    std::ranges::replace_if(message, isControl, '?');
    return message;
}

}  // namespace

/// merge-pdfs OUT IN...: exit status 0 when OUT was written, 1 when not, with the reason on
/// standard error.
int main(int argc, char* argv[]) {
    using quirebind::URL;
    if (argc < 2) {
        std::cerr << "usage: merge-pdfs OUT IN...\n";
        return 1;
    }
    try {
        std::vector<URL> sources;
        for (int i = 2; i < argc; ++i) sources.push_back(URL::file(argv[i]));
        quirebind::PDFMerger::merge(sources, URL::file(argv[1]));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << printable(error.what()) << '\n';
        return 1;
    }
}
