// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/Value.h"

#include <limits>

#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/UnsignedNumber.h"

namespace quirebind {
namespace {

/// The text between an opening bracket of `width` bytes and its closing one.
std::string_view inside(std::string_view text, std::size_t width) {
    return text.size() < 2 * width ? std::string_view()
                                   : text.substr(width, text.size() - 2 * width);
}

/// The next value in `text`, which holds several; absent at the end or where something else stands.
std::optional<Value> nextValue(std::string_view text, std::size_t& at) {
    at = skipWhite(text, at);
    if (at >= text.size()) return std::nullopt;
    // Most values are a name, a number or a reference: what scanValue would find, in fewer steps.
    const std::size_t begin = at;
    if (text[begin] == '/') {
        at = skipRegular(text, begin + 1);
        return Value(text.substr(begin, at - begin));
    }
    if (isDigit(text[begin])) {
        Reference reference;
        std::size_t looked = 0;
        if (!readReference(text, at, reference, looked)) at = skipRegular(text, begin);
        return Value(text.substr(begin, at - begin));
    }
    const Extent extent = scanValue(text, at);
    if (!extent.isValue() || extent.end == at) {
        at = text.size();
        return std::nullopt;
    }
    at = extent.end;
    return Value(extent.in(text));
}

}  // namespace

std::optional<std::int64_t> Value::integer() const {
    std::size_t at = text_.starts_with('-') || text_.starts_with('+') ? 1 : 0;
    std::uint64_t magnitude = 0;
    if (!readUnsigned(text_, at, magnitude)) return std::nullopt;
    if (magnitude > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        return std::nullopt;
    if (at < text_.size() && text_[at] == '.') {
        ++at;
        while (at < text_.size() && text_[at] == '0') ++at;
    }
    if (at != text_.size()) return std::nullopt;
    const auto value = static_cast<std::int64_t>(magnitude);
    return text_.starts_with('-') ? -value : value;
}

std::optional<bool> Value::boolean() const {
    if (text_ == "true") return true;
    if (text_ == "false") return false;
    return std::nullopt;
}

/// The reference that is all of the text.
std::optional<Reference> Value::readWhole() const {
    std::size_t at = 0;
    std::size_t looked = 0;
    Reference result;
    if (!readReference(text_, at, result, looked) || at != text_.size()) return std::nullopt;
    return result;
}

std::string Value::name() const {
    std::string result;
    if (!isName()) return result;
    for (std::size_t i = 1; i < text_.size(); ++i) {
        const int high = text_[i] == '#' && i + 2 < text_.size() ? hexValue(text_[i + 1]) : -1;
        const int low = high >= 0 ? hexValue(text_[i + 2]) : -1;
        if (low >= 0) {
            result += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            result += text_[i];
        }
    }
    return result;
}

Value Value::find(std::string_view key) const {
    // Most keys that are asked for are absent, and hardly any is spelt with escapes or repeated.
    const auto mayBeIn = [key](std::string_view text) {
        return text.find(key) != std::string_view::npos || text.find('#') != std::string_view::npos;
    };
    if (!mayBeIn(text_)) return {};
    DictionaryReader entries(*this);
    while (const auto entry = entries.next()) {
        if (!entry->key.isName(key)) continue;
        const std::string_view value = entry->value.text();
        if (value.empty()) return {};  // nothing stands behind it
        const auto end = static_cast<std::size_t>(value.data() - text_.data()) + value.size();
        Value last = entry->value;
        if (mayBeIn(text_.substr(end))) takeLast(last, findEntry(entries, key));
        return last;
    }
    return {};
}

DictionaryReader::DictionaryReader(Value dictionary)
    : text_(dictionary.isDictionary() ? inside(dictionary.text(), 2) : std::string_view()) {}

std::optional<DictionaryEntry> DictionaryReader::nextRead() {
    const auto key = nextValue(text_, at_);
    if (!key) {
        wellFormed_ = wellFormed_ && at_ >= text_.size();
        return std::nullopt;
    }
    if (!key->isName()) {
        wellFormed_ = false;
        at_ = text_.size();
        return std::nullopt;
    }
    // A last key without a value is as good as absent.
    return DictionaryEntry{*key, nextValue(text_, at_).value_or(Value())};
}

ArrayReader::ArrayReader(Value array)
    : text_(array.isArray() ? inside(array.text(), 1) : std::string_view()) {}

std::optional<Value> ArrayReader::next() {
    return nextValue(text_, at_);
}

}  // namespace quirebind
