// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/UnclosedObject.h"

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/IndirectObject.h"
#include "Platform/PDF/Syntax/ValueScanner.h"

namespace quirebind {
namespace {

/// `text` with what closes as many dictionaries before the keyword at `end`.
ClosedObject closedAt(std::string_view text, std::size_t end, std::size_t dictionaries) {
    // The keyword, and the end of line behind it.
    constexpr std::size_t kBehind = 16;
    ClosedObject closed{.text = std::string(text.substr(0, end))};
    for (std::size_t i = 0; i < dictionaries; ++i) closed.text += ">>";
    closed.text += ' ';
    closed.added = closed.text.size() - end;
    closed.text += text.substr(end, kBehind);
    return closed;
}

}  // namespace

std::optional<ClosedObject> closeDictionaries(std::string_view text) {
    std::size_t at = 0;
    if (!parseObjectHeader(text, at)) return std::nullopt;
    std::size_t open = 0;
    while ((at = skipWhite(text, at)) < text.size()) {
        const std::string_view rest = text.substr(at);
        if (rest.starts_with("endobj") || rest.starts_with("stream")) {
            if (open == 0) return std::nullopt;
            return closedAt(text, at, open);
        }
        if (rest.starts_with(">>")) {
            if (open == 0) return std::nullopt;
            --open;
            at += 2;
        } else if (rest.starts_with("<<")) {
            if (++open == limits::kNesting) return std::nullopt;
            at += 2;
        } else if (rest.starts_with("obj")) {
            return std::nullopt;  // the next one has begun
        } else {
            const Extent token = scanValue(text, at);
            if (open == 0 || !token.isValue() || token.end == at) return std::nullopt;
            at = token.end;
        }
    }
    return std::nullopt;
}

}  // namespace quirebind
