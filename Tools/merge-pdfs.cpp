// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <exception>
#include <iostream>
#include <vector>

#include "QuirebindCore/PDFMerger.h"

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
        std::cerr << error.what() << '\n';
        return 1;
    }
}
