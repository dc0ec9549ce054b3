// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/StreamBody.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "Platform/PDF/Characters.h"
#include "Platform/PDF/DamagedDocument.h"

namespace quirebind {
namespace {

/// White space that may stand between a body and endstream (we accept more than an end of line).
constexpr std::size_t kGap = 16;

constexpr std::string_view kEndstream = "endstream";

bool endstreamAt(SourceImage& image, std::uint64_t offset) {
    const std::string_view text = image.view(offset, kGap + kEndstream.size());
    std::size_t at = 0;
    while (at < text.size() && at < kGap && isWhite(text[at])) ++at;
    return text.substr(at).starts_with(kEndstream);
}

/// `end` less the end of line before it.
std::uint64_t withoutEndOfLine(SourceImage& image, std::uint64_t begin, std::uint64_t end) {
    std::array<char, 2> last{};
    if (end - begin < last.size()) return end;
    image.copy(end - last.size(), last);
    if (last[1] == '\r') return end - 1;
    if (last[1] == '\n') return end - (last[0] == '\r' ? 2 : 1);
    return end;
}

std::uint64_t searchEnd(SourceImage& image, std::uint64_t begin, WorkBudget& budget) {
    constexpr std::size_t kWindow = std::size_t{64} << 10U;
    std::string window;
    for (std::uint64_t at = begin; at < image.size(); at += kWindow - kEndstream.size()) {
        window.resize(
            static_cast<std::size_t>(std::min<std::uint64_t>(kWindow, image.size() - at)));
        image.copy(at, window);
        budget.spend(window.size());
        const std::size_t found = window.find(kEndstream);
        if (found != std::string::npos) return withoutEndOfLine(image, begin, at + found);
        if (window.size() < kWindow) break;
    }
    throw DamagedDocument("a stream without an end");
}

}  // namespace

std::uint64_t streamBodyLength(SourceImage& image, std::uint64_t offset,
                               std::optional<std::int64_t> declared, WorkBudget& budget) {
    if (declared && *declared >= 0 && offset <= image.size()) {
        const auto length = static_cast<std::uint64_t>(*declared);
        if (length <= image.size() - offset && endstreamAt(image, offset + length)) return length;
    }
    return searchEnd(image, offset, budget);
}

}  // namespace quirebind
