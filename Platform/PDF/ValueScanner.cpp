// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/ValueScanner.h"

#include <algorithm>
#include <array>

#include "Platform/PDF/Characters.h"
#include "Platform/PDF/Limits.h"

namespace quirebind {
namespace {

/// Which of the open brackets are dictionaries, a bit each.
class BracketStack {  // NOLINT(cppcoreguidelines-pro-type-member-init): see outer_
 public:
    [[nodiscard]] bool empty() const { return depth_ == 0; }
    [[nodiscard]] bool push(bool dictionary) {
        if (depth_ == limits::kNesting) return false;
        if (depth_ % kWord == 0 && depth_ != 0) outer_[depth_ / kWord - 1] = inner_;
        inner_ = inner_ << 1U | (dictionary ? 1U : 0U);
        ++depth_;
        return true;
    }
    [[nodiscard]] bool pop(bool dictionary) {
        if (depth_ == 0) return false;
        --depth_;
        const bool isDictionary = (inner_ & 1U) != 0;
        inner_ = depth_ % kWord == 0 && depth_ != 0 ? outer_[depth_ / kWord - 1] : inner_ >> 1U;
        return isDictionary == dictionary;
    }

 private:
    static constexpr std::size_t kWord = 64;

    std::size_t depth_ = 0;
    std::uint64_t inner_ = 0;  // the innermost brackets, the last one lowest
    // Full words of the brackets around those. Not cleared: it would take longer than most scans.
    std::array<std::uint64_t, limits::kNesting / kWord> outer_;
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

/// The state of one scan.
class Scan {
 public:
    Scan(std::string_view text, std::size_t at, std::vector<FoundReference>* references)
        : text_(text), at_(at), references_(references) {}

    Extent run() {
        at_ = skipWhite(text_, at_);
        begin_ = at_;
        do {
            at_ = skipWhite(text_, at_);
            if (at_ >= text_.size()) return extent(open_.empty());
            if (!step()) return extent(false);
        } while (!open_.empty());
        return extent(true);
    }

 private:
    [[nodiscard]] Extent extent(bool isValue) const {
        const std::size_t read = std::min(at_, text_.size());
        return {begin_, isValue ? at_ : std::string_view::npos, std::max(read, looked_)};
    }

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
        // Inside brackets it does not matter which numbers are part of a reference, unless those
        // are asked for.
        const bool mayBeReference = references_ != nullptr || open_.empty();
        const std::size_t begin = at_;
        Reference reference;
        if (!mayBeReference || !readReference(text_, at_, reference, looked_)) {
            at_ = skipRegular(text_, at_);
        } else if (references_ != nullptr) {
            references_->push_back({begin - begin_, at_ - begin_, reference});
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
    std::size_t begin_ = 0;
    std::size_t looked_ = 0;
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

bool readReference(std::string_view text, std::size_t& at, Reference& reference,
                   std::size_t& looked) {
    std::uint64_t number = 0;
    std::uint64_t generation = 0;
    looked = at;
    if (!readUnsigned(text, looked, number)) return false;
    const std::size_t gap = looked;
    looked = skipWhite(text, gap);
    if (looked == gap || looked >= text.size() || !isDigit(text[looked])) return false;
    if (!readUnsigned(text, looked, generation)) return false;
    const std::size_t secondGap = looked;
    looked = skipWhite(text, secondGap);
    if (looked == secondGap || looked >= text.size() || text[looked] != 'R') return false;
    ++looked;
    if (looked < text.size() && isRegular(text[looked])) return false;
    // A number that no table can list is still a reference: to nothing.
    reference.number = number > limits::kObjectNumber ? 0 : static_cast<std::uint32_t>(number);
    reference.generation = generation > 65535 ? 65536 : static_cast<std::uint32_t>(generation);
    at = looked;
    return true;
}

Extent scanValue(std::string_view text, std::size_t at, std::vector<FoundReference>* references) {
    return Scan(text, at, references).run();
}

}  // namespace quirebind
