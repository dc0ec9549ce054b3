// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/StreamBody.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/IndirectObject.h"

namespace quirebind {
namespace {

constexpr std::string_view kEndstream = "endstream";
constexpr std::string_view kEndobj = "endobj";

/// The longest "N G obj" that is looked for.
constexpr std::size_t kHeader = 32;

bool isObjectHeader(std::string_view text) {
    std::size_t at = 0;
    return !text.empty() && isDigit(text[0]) && parseObjectHeader(text.substr(0, kHeader), at);
}

/// Whether this may stand before the "obj", on the same line.
bool isInsideHeader(char c) {
    return isDigit(c) || (isWhite(c) && c != '\n' && c != '\r');
}

/// A text begins a line itself only where it is the `start` of the body.
bool beginsLine(std::string_view text, std::size_t at, bool start) {
    return at == 0 ? start : text[at - 1] == '\n' || text[at - 1] == '\r';
}

/// `body` less the end of line at its end.
std::size_t withoutEndOfLine(std::string_view body) {
    if (body.ends_with("\r\n")) return body.size() - 2;
    if (body.ends_with('\n') || body.ends_with('\r')) return body.size() - 1;
    return body.size();
}

/// The first `word` that begins a line of `text`.
std::size_t findLine(std::string_view text, std::string_view word, bool start) {
    std::size_t at = text.find(word);
    while (at != std::string_view::npos && !beginsLine(text, at, start))
        at = text.find(word, at + 1);
    return at;
}

/// The first line of `text` that begins with "N G obj".
std::size_t findHeader(std::string_view text, bool start) {
    constexpr std::string_view kObj = "obj";
    for (std::size_t at = text.find(kObj); at != std::string_view::npos;
         at = text.find(kObj, at + 1)) {
        const std::size_t from = at - std::min(at, kHeader - kObj.size());
        std::size_t begin = at;
        while (begin > from && isInsideHeader(text[begin - 1])) --begin;
        if (beginsLine(text, begin, start) && isObjectHeader(text.substr(begin))) return begin;
    }
    return std::string_view::npos;
}

/// Where in `text` the body of a stream of unknown length ends: before endstream, or before an
/// endobj or another object that begins a line, where that comes first. npos where the text ends
/// before.
std::size_t findEnd(std::string_view text, bool start) {
    std::string_view body = text.substr(0, text.find(kEndstream));
    body = body.substr(0, findLine(body, kEndobj, start));
    body = body.substr(0, findHeader(body, start));
    return body.size() == text.size() ? std::string_view::npos : body.size();
}

std::uint64_t searchLength(ByteSource& bytes, std::uint64_t begin, WorkBudget& budget) {
    constexpr std::size_t kLargestStep = std::size_t{1} << 20U;
    // Most bodies are small, so that looking far ahead for each would cost more than they are.
    std::size_t window = 512;
    for (std::uint64_t from = begin;;) {
        const std::string_view text = bytes.view(from, window).substr(0, window);
        const std::size_t end = findEnd(text, from == begin);
        budget.spend(std::min(end, text.size()));
        if (end != std::string_view::npos) {
            const std::uint64_t length = from - begin + end;
            const auto tail = static_cast<std::size_t>(std::min<std::uint64_t>(length, 2));
            const std::string_view last = bytes.view(begin + length - tail, tail).substr(0, tail);
            return length - tail + withoutEndOfLine(last);
        }
        if (text.size() < window) throw DamagedDocument("a stream without an end");
        // What ends the body may have begun in this window.
        from += text.size() - kHeader;
        window = std::min(2 * window, kLargestStep);
    }
}

/// What stands at `offset`, behind white space: enough of it to tell what it is.
std::string_view behindGap(ByteSource& bytes, std::uint64_t offset) {
    constexpr std::size_t kGap = limits::kGapBeforeEndstream;
    const std::string_view text = bytes.view(offset, kGap + kHeader).substr(0, kGap + kHeader);
    std::size_t at = 0;
    while (at < text.size() && at < kGap && isWhite(text[at])) ++at;
    return text.substr(at);
}

}  // namespace

bool streamBodyEndsAt(ByteSource& bytes, std::uint64_t offset) {
    constexpr std::array<std::string_view, 5> kEnds{kEndstream, kEndobj, "xref", "trailer",
                                                    "startxref"};
    const std::string_view text = behindGap(bytes, offset);
    const auto stands = [&](std::string_view word) { return text.starts_with(word); };
    return std::ranges::any_of(kEnds, stands) || isObjectHeader(text);
}

std::uint64_t streamBodyLength(ByteSource& bytes, std::uint64_t offset,
                               std::optional<std::int64_t> declared, WorkBudget& budget) {
    const bool isPossible = declared && *declared >= 0 && offset <= bytes.size() &&
                            static_cast<std::uint64_t>(*declared) <= bytes.size() - offset;
    const auto length = isPossible ? static_cast<std::uint64_t>(*declared) : 0;
    if (isPossible && streamBodyEndsAt(bytes, offset + length)) return length;
    try {
        return searchLength(bytes, offset, budget);
    } catch (const DamagedDocument&) {
        if (!isPossible || !kEndstream.starts_with(behindGap(bytes, offset + length))) throw;
        return length;
    }
}

}  // namespace quirebind
