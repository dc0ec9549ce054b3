// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/PDF/Syntax/ValueScanner.h"

namespace quirebind {

/// One PDF object as the text that it is written in (ISO 32000-2, 7.3). Nothing is built: the text
/// stays where it was read, and each question reads the part of it that it needs. A plain view,
/// valid as long as that text; an absent value is empty.
///
/// The text must be well formed as scanValue sees it; every question about it has an answer then,
/// if only "it is something else".
class Value {
 public:
    Value() = default;
    /// `text` is that of one value and must live as long as this.
    explicit Value(std::string_view text) : text_(text) {}

    /// The text itself; empty where the value is absent.
    [[nodiscard]] std::string_view text() const { return text_; }
    /// Absent, or the keyword null; the two mean the same (7.3.9).
    [[nodiscard]] bool isNull() const { return text_.empty() || text_ == "null"; }
    /// What the first characters tell: a dictionary, which may be that of a stream.
    [[nodiscard]] bool isDictionary() const { return text_.starts_with("<<"); }
    /// Likewise an array.
    [[nodiscard]] bool isArray() const { return text_.starts_with('['); }
    /// Likewise a name, whichever it is.
    [[nodiscard]] bool isName() const { return text_.starts_with('/'); }

    /// The integer, where this is one. A real number whose fraction is zero counts: real files
    /// write lengths and counts so.
    [[nodiscard]] std::optional<std::int64_t> integer() const;
    /// The truth value, where this is one.
    [[nodiscard]] std::optional<bool> boolean() const;
    /// What this refers to, where it is an indirect reference.
    [[nodiscard]] std::optional<Reference> reference() const {
        const bool mayBe = !text_.empty() && text_.back() == 'R' && isDigit(text_.front());
        return mayBe ? readWhole() : std::nullopt;
    }
    /// The name without its solidus and with its number-sign escapes undone; empty for others.
    [[nodiscard]] std::string name() const;
    /// Whether this is the name `expected` (given without solidus), in any spelling.
    [[nodiscard]] bool isName(std::string_view expected) const {
        // Nearly all names that are asked about differ in their length or their first letter, and
        // hardly any has escapes, which make it longer than what it says.
        if (text_.size() <= expected.size() || text_[0] != '/') return false;
        if (!expected.empty() && text_[1] != expected[0] && text_[1] != '#') return false;
        if (text_.size() == expected.size() + 1)
            return text_.substr(1) == expected && expected.find('#') == std::string_view::npos;
        return text_.find('#') != std::string_view::npos && name() == expected;
    }

    /// The value under `key` (without solidus) of a dictionary; absent where there is none or this
    /// is no dictionary. Of repeated keys the last counts: what that means is not defined (7.3.7),
    /// but other readers take the last.
    [[nodiscard]] Value find(std::string_view key) const;

 private:
    [[nodiscard]] std::optional<Reference> readWhole() const;

    std::string_view text_;
};

/// A key and its value; the key is the name as it is spelt.
struct DictionaryEntry {
    Value key;
    Value value;
};

/// The entry that was found there in the text of a dictionary.
[[nodiscard]] inline DictionaryEntry entryAt(const FoundEntry& found, std::string_view text) {
    return {Value(text.substr(found.keyBegin, found.keyEnd - found.keyBegin)),
            Value(text.substr(found.valueBegin, found.valueEnd - found.valueBegin))};
}

/// Reads a dictionary entry by entry. Stops at the first thing that is not a name where a key
/// should stand; `wellFormed` then says no.
class DictionaryReader {
 public:
    /// Of anything but a dictionary there is nothing to read.
    explicit DictionaryReader(Value dictionary);
    /// Of a dictionary that was scanned: `parts` are what was found, and must live as long as this.
    /// Nothing is read again.
    DictionaryReader(Value dictionary, const FoundParts& parts)
        : text_(dictionary.text()), found_(&parts.found()) {}

    /// The next entry, in the order of the text; nothing at the end.
    [[nodiscard]] std::optional<DictionaryEntry> next() {
        return found_ != nullptr ? nextFound() : nextRead();
    }
    /// Whether all keys so far were names.
    [[nodiscard]] bool wellFormed() const { return wellFormed_; }

 private:
    [[nodiscard]] std::optional<DictionaryEntry> nextRead();
    [[nodiscard]] std::optional<DictionaryEntry> nextFound() {
        if (at_ == found_->entries.size()) {
            wellFormed_ = found_->wellFormed;
            return std::nullopt;
        }
        return entryAt(found_->entries[at_++], text_);
    }

    std::string_view text_;
    const Found* found_ = nullptr;  // not owned
    std::size_t at_ = 0;            // in the text, or in what was found
    bool wellFormed_ = true;
};

/// Lets `value`, met under some key, take the place of what was `taken` of that key before: of
/// repeated keys the last counts. A last key without a value is as good as absent.
inline void takeLast(Value& taken, Value value) {
    if (!value.text().empty()) taken = value;
}

/// The value under `key` (without solidus); absent where there is none. Of repeated keys the last
/// counts.
[[nodiscard]] inline Value findEntry(DictionaryReader entries, std::string_view key) {
    Value found;
    while (const auto entry = entries.next())
        if (entry->key.isName(key)) takeLast(found, entry->value);
    return found;
}

/// Reads an array element by element.
class ArrayReader {
 public:
    /// Of anything but an array there is nothing to read.
    explicit ArrayReader(Value array);
    /// The next element; nothing at the end.
    [[nodiscard]] std::optional<Value> next();

 private:
    std::string_view text_;
    std::size_t at_ = 0;
};

}  // namespace quirebind
