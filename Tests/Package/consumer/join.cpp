// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <array>
#include <iostream>

#include <QuirebindCore/PDFMerger.h>

/// join OUT FIRST SECOND, with nothing but what the library offers to others.
int main(int argc, char* argv[]) {
    using quirebind::URL;
    if (argc != 4) return 2;
    try {
        const std::array sources{URL::file(argv[2]), URL::file(argv[3])};
        for (const URL& source : sources)
            std::cout << source.lastPathComponent() << ": "
                      << quirebind::PDFMerger::open(source).pageCount() << " pages\n";
        quirebind::PDFMerger::merge(sources, URL::file(argv[1]));
    } catch (const quirebind::PDFMerger::Failure& failure) {
        std::cerr << failure.errorDescription() << '\n';
        return 1;
    }
    return 0;
}
