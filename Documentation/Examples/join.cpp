// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <exception>
#include <iostream>
#include <vector>

#include <QuirebindCore/PDFMerger.h>

/// join OUTPUT INPUT...: joins PDF documents into one; says why where that cannot be.
int main(int argc, char* argv[]) {
    using quirebind::URL;
    if (argc < 3) {
        std::cerr << "usage: join OUTPUT INPUT...\n";
        return 2;
    }
    try {
        std::vector<URL> sources;
        for (int i = 2; i < argc; ++i) sources.push_back(URL::file(argv[i]));
        quirebind::PDFMerger::merge(sources, URL::file(argv[1]));
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
