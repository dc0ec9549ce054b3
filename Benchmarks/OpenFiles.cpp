// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <cstddef>
#include <exception>
#include <iostream>

#include "QuirebindCore/PDFMerger.h"

// Opens every file as the application does when it is added, and prints the number of all pages.
//
//     open-files FILE...

int main(int argc, char* argv[]) {
    try {
        std::size_t pages = 0;
        for (int i = 1; i < argc; ++i) {
            pages += quirebind::PDFMerger::open(quirebind::URL::file(argv[i])).pageCount();
        }
        std::cout << pages << '\n';
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
