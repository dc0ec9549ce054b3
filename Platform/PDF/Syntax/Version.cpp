// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/Version.h"

#include <algorithm>

#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {

std::optional<Version> parseVersion(std::string_view text) {
    constexpr int kLastMinorOfFirst = 7;
    if (text.size() < 3 || !isDigit(text[0]) || text[1] != '.' || !isDigit(text[2]))
        return std::nullopt;
    const int major = text[0] - '0';
    const int minor = text[2] - '0';
    if (major >= 2) return Version{2, 0};
    if (major < 1) return Version{1, 0};
    return Version{1, std::min(minor, kLastMinorOfFirst)};
}

}  // namespace quirebind
