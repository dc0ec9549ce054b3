// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/StreamBody.h"

#include <algorithm>
#include <string_view>

#include "Platform/PDF/Characters.h"
#include "Platform/PDF/DamagedDocument.h"

namespace quirebind {
namespace {

/// White space that may stand between a body and endstream (we accept more than an end of line).
constexpr std::size_t kGap = 16;

constexpr std::string_view kEndstream = "endstream";
constexpr std::string_view kEndobj = "endobj";

/// Whether one of the keywords that end a stream stands at `offset`, behind white space. Where
/// endstream is missing, endobj will do.
bool endsAt(SourceImage& image, std::uint64_t offset) {
    const std::string_view text = image.view(offset, kGap + kEndstream.size());
    std::size_t at = 0;
    while (at < text.size() && at < kGap && isWhite(text[at])) ++at;
    const std::string_view keyword = text.substr(at);
    return keyword.starts_with(kEndstream) || keyword.starts_with(kEndobj);
}

/// `body` less the end of line at its end.
std::size_t withoutEndOfLine(std::string_view body) {
    if (body.ends_with("\r\n")) return body.size() - 2;
    if (body.ends_with('\n') || body.ends_with('\r')) return body.size() - 1;
    return body.size();
}

/// Where in `text` the body of a stream of unknown length ends: before endstream, or before an
/// endobj that begins a line, where that comes first. npos where the text ends before.
std::size_t findEnd(std::string_view text) {
    const std::size_t end = text.find(kEndstream);
    const std::string_view body = text.substr(0, end);
    for (std::size_t at = body.find(kEndobj); at != std::string_view::npos;
         at = body.find(kEndobj, at + 1))
        if (at == 0 || body[at - 1] == '\n' || body[at - 1] == '\r') return at;
    return end;
}

std::uint64_t searchLength(SourceImage& image, std::uint64_t begin, WorkBudget& budget) {
    // Most bodies are small, so that looking far ahead for each would cost more than they are.
    for (std::size_t window = 512;; window *= 2) {
        const std::string_view text = image.view(begin, window).substr(0, window);
        const std::size_t end = findEnd(text);
        budget.spend(std::min(end, text.size()));
        if (end != std::string_view::npos) return withoutEndOfLine(text.substr(0, end));
        if (text.size() < window) throw DamagedDocument("a stream without an end");
    }
}

}  // namespace

std::uint64_t streamBodyLength(SourceImage& image, std::uint64_t offset,
                               std::optional<std::int64_t> declared, WorkBudget& budget) {
    if (declared && *declared >= 0 && offset <= image.size()) {
        const auto length = static_cast<std::uint64_t>(*declared);
        if (length <= image.size() - offset && endsAt(image, offset + length)) return length;
    }
    return searchLength(image, offset, budget);
}

}  // namespace quirebind
