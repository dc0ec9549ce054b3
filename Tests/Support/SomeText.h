// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>

namespace quirebind::test {

/// Text of which no two pages, or other large pieces, are alike.
inline std::string someText(std::size_t size) {
    std::string text;
    while (text.size() < size) text += std::to_string(text.size()) + ' ';
    text.resize(size);
    return text;
}

}  // namespace quirebind::test
