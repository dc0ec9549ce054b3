// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/PDFString.h"

#include <cstddef>

#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {
namespace {

std::string hexadecimalBytes(std::string_view digits) {
    std::string result;
    int high = -1;
    for (const char c : digits) {
        const int digit = hexValue(c);
        if (digit < 0) continue;
        if (high < 0) {
            high = digit;
        } else {
            result += static_cast<char>(high * 16 + digit);
            high = -1;
        }
    }
    if (high >= 0) result += static_cast<char>(high * 16);
    return result;
}

/// What follows a reverse solidus at `at`; moves `at` behind it.
void appendEscaped(std::string_view text, std::size_t& at, std::string& result) {
    constexpr std::string_view kLetters = "nrtbf";
    constexpr std::string_view kMeanings = "\n\r\t\b\f";
    const auto isOctal = [&] { return at < text.size() && text[at] >= '0' && text[at] <= '7'; };
    const char c = text[at];
    if (isOctal()) {
        unsigned value = 0;
        for (int i = 0; i < 3 && isOctal(); ++i, ++at)
            value = value * 8 + static_cast<unsigned>(text[at] - '0');
        result += static_cast<char>(value & 0xffU);
        return;
    }
    ++at;
    if (c == '\r' && at < text.size() && text[at] == '\n') ++at;
    if (c == '\r' || c == '\n') return;
    const std::size_t letter = kLetters.find(c);
    result += letter == std::string_view::npos ? c : kMeanings[letter];
}

std::string literalBytes(std::string_view text, LineEnds lineEnds) {
    std::string result;
    result.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        const char c = text[at++];
        if (c == '\\') {
            if (at < text.size()) appendEscaped(text, at, result);
        } else if (c == '\r' && lineEnds == LineEnds::lineFeed) {
            if (at < text.size() && text[at] == '\n') ++at;
            result += '\n';
        } else {
            result += c;
        }
    }
    return result;
}

}  // namespace

bool isString(Value value) {
    const std::string_view text = value.text();
    return text.starts_with('(') || (text.starts_with('<') && !value.isDictionary());
}

std::string stringBytes(Value value, LineEnds lineEnds) {
    const std::string_view text = value.text();
    if (!isString(value) || text.size() < 2) return {};
    const std::string_view inside = text.substr(1, text.size() - 2);
    return text.front() == '<' ? hexadecimalBytes(inside) : literalBytes(inside, lineEnds);
}

void appendLiteralString(std::string_view bytes, std::string& text) {
    text += '(';
    for (const char c : bytes) {
        if (c == '(' || c == ')' || c == '\\') text += '\\';
        if (c == '\r')
            text += "\\r";
        else
            text += c;
    }
    text += ')';
}

void appendLiteralString(std::string_view bytes, ByteBuffer& out) {
    std::string text;
    appendLiteralString(bytes, text);
    out.append(text);
}

}  // namespace quirebind
