// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/ValueScanner.h"

#include <array>

#include "Platform/PDF/Characters.h"
#include "Platform/PDF/Limits.h"

namespace quirebind {
namespace {

/// Which of the open brackets are dictionaries, a bit each.
class BracketStack {
 public:
    [[nodiscard]] bool empty() const { return depth_ == 0; }
    [[nodiscard]] bool push(bool dictionary) {
        if (depth_ == limits::kNesting) return false;
        const std::uint64_t bit = std::uint64_t{1} << (depth_ % 64);
        if (dictionary)
            bits_[depth_ / 64] |= bit;
        else
            bits_[depth_ / 64] &= ~bit;
        ++depth_;
        return true;
    }
    [[nodiscard]] bool pop(bool dictionary) {
        if (depth_ == 0) return false;
        --depth_;
        return ((bits_[depth_ / 64] >> (depth_ % 64)) & 1U) == (dictionary ? 1U : 0U);
    }

 private:
    std::size_t depth_ = 0;
    std::array<std::uint64_t, limits::kNesting / 64> bits_{};
};

/// Behind the literal string that begins at `at` (ISO 32000-2, 7.3.4.2); npos where it is not
/// closed.
std::size_t skipLiteralString(std::string_view text, std::size_t at) {
    std::size_t open = 0;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '\\') {
            ++at;
        } else if (c == '(') {
            ++open;
        } else if (c == ')' && --open == 0) {
            return at + 1;
        }
    }
    return std::string_view::npos;
}

std::size_t skipHexString(std::string_view text, std::size_t at) {
    const std::size_t close = text.find('>', at);
    return close == std::string_view::npos ? close : close + 1;
}

std::size_t skipBlanks(std::string_view text, std::size_t at) {
    while (at < text.size() && isWhite(text[at])) ++at;
    return at;
}

/// The state of one scan.
class Scan {
 public:
    Scan(std::string_view text, std::size_t at, std::vector<FoundReference>* references)
        : text_(text), at_(at), references_(references) {}

    std::size_t run() {
        do {
            at_ = skipWhite(text_, at_);
            if (at_ >= text_.size()) return open_.empty() ? at_ : std::string_view::npos;
            if (!step()) return std::string_view::npos;
        } while (!open_.empty());
        return at_;
    }

 private:
    /// Passes over one token that is not white space. False where the syntax is broken.
    bool step() {
        const char c = text_[at_];
        switch (c) {
            case '/':
                at_ = skipRegular(text_, at_ + 1);
                return true;
            case '(':
                return passTo(skipLiteralString(text_, at_));
            case '[':
                ++at_;
                return open_.push(false);
            case ']':
                ++at_;
                return open_.pop(false);
            case '<':
                if (at_ + 1 < text_.size() && text_[at_ + 1] == '<') {
                    at_ += 2;
                    return open_.push(true);
                }
                return passTo(skipHexString(text_, at_));
            case '>':
                if (at_ + 1 >= text_.size()) return passTo(std::string_view::npos);
                at_ += 2;
                return text_[at_ - 1] == '>' && open_.pop(true);
            case ')':
            case '{':
            case '}':
                return false;
            default:
                return isDigit(c) ? number() : keyword();
        }
    }

    bool passTo(std::size_t end) {
        at_ = end;
        return end != std::string_view::npos;
    }

    bool number() {
        const std::size_t begin = at_;
        Reference reference;
        if (!readReference(text_, at_, reference)) {
            at_ = skipRegular(text_, at_);
        } else if (references_ != nullptr) {
            references_->push_back({begin, at_, reference});
        }
        return true;
    }

    /// A signed number, true, false, null, or something that is no value at all. A keyword that
    /// ends an object inside brackets tells that one of them was never closed.
    bool keyword() {
        const std::size_t end = skipRegular(text_, at_);
        const std::string_view word = text_.substr(at_, end - at_);
        const bool endsObject = word == "endobj" || word == "stream" || word == "obj";
        if (endsObject && open_.empty()) return true;  // an absent value; the word stays
        at_ = end;
        return !endsObject;
    }

    std::string_view text_;
    std::size_t at_;
    std::vector<FoundReference>* references_;
    BracketStack open_;
};

}  // namespace

bool readUnsigned(std::string_view text, std::size_t& at, std::uint64_t& value) {
    constexpr std::size_t kDigits = 19;  // fits 64 bits whatever the digits are
    std::size_t end = at;
    std::uint64_t result = 0;
    while (end < text.size() && isDigit(text[end])) {
        if (end - at == kDigits) return false;
        result = result * 10 + static_cast<std::uint64_t>(text[end] - '0');
        ++end;
    }
    if (end == at) return false;
    at = end;
    value = result;
    return true;
}

bool readReference(std::string_view text, std::size_t& at, Reference& reference) {
    std::size_t end = at;
    std::uint64_t number = 0;
    std::uint64_t generation = 0;
    if (!readUnsigned(text, end, number)) return false;
    std::size_t next = skipBlanks(text, end);
    if (next == end || !readUnsigned(text, next, generation)) return false;
    end = skipBlanks(text, next);
    if (end == next || end >= text.size() || text[end] != 'R') return false;
    ++end;
    if (end < text.size() && isRegular(text[end])) return false;
    // A number that no table can list is still a reference: to nothing.
    reference.number = number > limits::kObjectNumber ? 0 : static_cast<std::uint32_t>(number);
    reference.generation = generation > 65535 ? 65536 : static_cast<std::uint32_t>(generation);
    at = end;
    return true;
}

std::size_t scanValue(std::string_view text, std::size_t at,
                      std::vector<FoundReference>* references) {
    return Scan(text, at, references).run();
}

}  // namespace quirebind
