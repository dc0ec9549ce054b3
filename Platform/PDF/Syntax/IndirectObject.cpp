// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/IndirectObject.h"

#include <algorithm>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/UnsignedNumber.h"

namespace quirebind {
namespace {

/// As much text as must follow the white space behind a value before we believe that the object is
/// over although no keyword says so: a longer text would show one.
constexpr std::size_t kLongestKeyword = 16;

/// Behind the end of line that follows the keyword stream: CR LF or LF. Real files also have blanks
/// before it, or a lone CR.
std::optional<std::size_t> bodyBegin(std::string_view text, std::size_t at, bool isWhole) {
    std::size_t eol = at;
    while (eol < text.size() && (text[eol] == ' ' || text[eol] == '\t')) ++eol;
    if (eol + 2 > text.size()) {
        if (!isWhole) return std::nullopt;
        return eol < text.size() ? eol + 1 : eol;
    }
    if (text[eol] == '\r') return text[eol + 1] == '\n' ? eol + 2 : eol + 1;
    if (text[eol] == '\n') return eol + 1;
    return at;
}

/// Whether `extent` is no whole value: a number or a word at the end of the text may have gone on,
/// and a number may belong to the next object, as in "1 0 obj 2 0 obj".
bool isCutOff(std::string_view text, const Extent& extent) {
    const std::string_view value = extent.in(text);
    if (value.empty()) return !text.substr(skipWhite(text, extent.end)).starts_with("endobj");
    if (extent.end == text.size() && isRegular(value.back())) return true;
    std::size_t at = extent.begin;
    return isDigit(value[0]) && parseObjectHeader(text, at);
}

}  // namespace

std::optional<Reference> parseObjectHeader(std::string_view text, std::size_t& at) {
    std::uint64_t number = 0;
    std::uint64_t generation = 0;
    at = skipWhite(text, at);
    if (!readUnsigned(text, at, number)) return std::nullopt;
    constexpr std::string_view kUsualRest = " 0 obj";
    if (text.substr(at).starts_with(kUsualRest)) {
        at += kUsualRest.size();
    } else {
        at = skipWhite(text, at);
        if (!readUnsigned(text, at, generation)) return std::nullopt;
        at = skipWhite(text, at);
        if (!text.substr(at).starts_with("obj")) return std::nullopt;
        at += 3;
    }
    if (number > limits::kObjectNumber || generation > 65535) return std::nullopt;
    return Reference{static_cast<std::uint32_t>(number), static_cast<std::uint32_t>(generation)};
}

std::optional<IndirectObject> parseIndirectObject(std::string_view text, bool isWhole,
                                                  FoundParts* parts) {
    IndirectObject object;
    std::size_t at = 0;
    const auto id = parseObjectHeader(text, at);
    if (!id) return std::nullopt;
    object.id = *id;

    const Extent extent = scanValue(text, at, parts);
    if (!extent.isValue() || isCutOff(text, extent)) return std::nullopt;
    object.value = Value(extent.in(text));
    object.end = extent.end;
    const std::size_t keyword = skipWhite(text, extent.end);
    object.looked = std::max(extent.looked, keyword);
    const std::string_view rest = text.substr(keyword);
    if (rest.starts_with("endobj")) return object;
    if (rest.starts_with("stream") && object.value.isDictionary()) {
        const auto body = bodyBegin(text, keyword + 6, isWhole);
        if (!body) return std::nullopt;
        object.isStream = true;
        object.end = *body;
        return object;
    }
    // A missing endobj: the value is complete all the same, unless it is half of a stream.
    if (!object.value.find("Length").isNull()) return std::nullopt;
    if (isWhole || rest.size() >= kLongestKeyword) return object;
    return std::nullopt;
}

}  // namespace quirebind
