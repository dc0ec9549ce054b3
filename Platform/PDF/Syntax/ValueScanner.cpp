// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Syntax/ValueScanner.h"

#include <algorithm>
#include <bit>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/BracketStack.h"
#include "Platform/PDF/Syntax/CharacterBlock.h"
#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {
namespace {

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

/// Whether the word ends an object: inside brackets it tells that one of them was never closed.
bool endsObject(std::string_view word) {
    return word == "endobj" || word == "stream" || word == "obj";
}

/// A block of a text, and where tokens begin in it.
struct TokenBlock {
    TokenBlock() = default;
    /// From `at` on. `isMidway`: inside a token that is passed over.
    TokenBlock(std::string_view text, std::size_t at, bool isMidway)
        : begin(at), bytes(CharacterBlock::of(text, at)) {
        const std::uint64_t goesOn = ~bytes.separators | bytes.solidi;
        const std::uint64_t first = ~bytes.separators & ~(goesOn << 1U | (isMidway ? 1U : 0U));
        tokens = bytes.delimiters | first;
        marks = (bytes.delimiters & ~bytes.solidi) | (first & bytes.words);
        endsMidway = goesOn >> (CharacterBlock::kSize - 1) != 0;
    }

    std::size_t begin = 0;
    CharacterBlock bytes;
    std::uint64_t tokens = 0;  ///< All; names and numbers are among them.
    std::uint64_t marks = 0;   ///< Brackets, strings, comments and words.
    bool endsMidway = false;
};

/// A scan of a value that begins with a bracket. In the dictionary whose entries are noted it goes
/// from token to token; in what is inside of it, from mark to mark: numbers and names in between
/// are passed over, a block of text at a time. What is noted is decided when it is compiled: most
/// scans note nothing.
template <bool kNotes>
class BracketScan {
 public:
    /// `found` is looked at by scans that note something only.
    BracketScan(std::string_view text, std::size_t begin, Found* found)
        : text_(text), begin_(begin), found_(found) {}

    Extent run() {
        const bool isDictionary = text_[begin_] == '<';
        std::size_t at = begin_ + (isDictionary ? 2 : 1);
        block_ = TokenBlock(text_, at, false);
        behindMark_ = at;
        const bool isValue =
            brackets_.push(isDictionary) && (kNotes && isDictionary ? entries(at) : rest(at, 0));
        const std::size_t read = std::min(at, text_.size());
        return {begin_, isValue ? at : std::string_view::npos, std::max(read, looked_)};
    }

 private:
    // Each of these moves `at` over what it is called after. False where the syntax is broken: `at`
    // is where then, or npos where something does not end.

    /// What is left of a dictionary whose entries are noted.
    bool entries(std::size_t& at) {
        while (seekToken(at)) {
            const std::size_t begin = at;
            if (text_[begin] != '/') {
                behindMark_ = begin;
                if (text_[begin] != '>') found_->wellFormed = false;
                return rest(at, 0);
            }
            at = regularEnd(begin + 1);
            FoundEntry entry{begin - begin_, at - begin_, at - begin_, at - begin_};
            if (!seekToken(at)) break;
            const std::size_t value = at;
            if (text_[at] != '>') {
                if (!entryValue(at)) return false;
                entry.valueBegin = value - begin_;
                entry.valueEnd = at - begin_;
            }
            if (found_->entries.size() == limits::kEntries) break;
            found_->entries.push_back(entry);
        }
        return false;
    }

    bool entryValue(std::size_t& at) {
        const std::size_t begin = at;
        if (text_[begin] == '/') {
            at = regularEnd(begin + 1);
            return true;
        }
        if (isDigit(text_[begin])) {
            Reference reference;
            if (readReference(text_, at, reference, looked_))
                found_->references.push_back({begin - begin_, at - begin_, reference});
            else
                at = regularEnd(begin);
            return true;
        }
        behindMark_ = begin;
        return mark(at) && (brackets_.depth() == 1 || rest(at, 1));
    }

    /// What is left of the innermost bracket, and of those around it until `depth` are open.
    bool rest(std::size_t& at, std::size_t depth) {
        while (seek(at, [](const TokenBlock& block) { return block.marks; })) {
            if (!mark(at)) return false;
            if (brackets_.depth() == depth) return true;
        }
        return false;
    }

    /// Moves to the next token that is no comment.
    bool seekToken(std::size_t& at) {
        while (seek(at, [](const TokenBlock& block) { return block.tokens; })) {
            if (text_[at] != '%') return true;
            at = skipWhite(text_, at);
        }
        return false;
    }

    /// Moves to the next of those that `among` takes from a block. False where there is none.
    template <typename Among>
    bool seek(std::size_t& at, Among among) {
        for (;;) {
            bool isMidway = false;
            if (at - block_.begin < CharacterBlock::kSize) {
                const std::uint64_t left = among(block_) >> (at - block_.begin);
                if (left != 0) {
                    at += static_cast<std::size_t>(std::countr_zero(left));
                    return true;
                }
                at = block_.begin + CharacterBlock::kSize;
                isMidway = block_.endsMidway;
            }
            if (at >= text_.size()) {
                at = text_.size();
                return false;
            }
            block_ = TokenBlock(text_, at, isMidway);
        }
    }

    /// A bracket, a string, a comment or a word.
    bool mark(std::size_t& at) {
        const std::size_t begin = at;
        switch (text_[begin]) {
            case '[':
                at = begin + 1;
                return brackets_.push(false) && passed(at);
            case ']':
                at = begin + 1;
                return brackets_.pop(false) && passed(at);
            case '<':
                if (begin + 1 < text_.size() && text_[begin + 1] == '<') {
                    at = begin + 2;
                    return brackets_.push(true) && passed(at);
                }
                at = skipHexString(text_, begin);
                return passed(at);
            case '>':
                at = begin + 1 < text_.size() ? begin + 2 : std::string_view::npos;
                return passed(at) && text_[begin + 1] == '>' && brackets_.pop(true);
            case '(':
                at = skipLiteralString(text_, begin);
                return passed(at);
            case '%':
                at = skipWhite(text_, begin);
                return true;
            case ')':
            case '{':
            case '}':
                return false;
            default:
                at = regularEnd(begin);
                return word(begin, at);
        }
    }

    /// Goes on behind a mark that ends at `at`. False where it does not end.
    bool passed(std::size_t at) {
        behindMark_ = at;
        return at != std::string_view::npos;
    }

    /// A signed number, true, false, null, the R of a reference, or something that is no value.
    bool word(std::size_t begin, std::size_t end) {
        const std::string_view word = text_.substr(begin, end - begin);
        if (kNotes && word == "R") noteReference(begin);
        return passed(end) && !endsObject(word);
    }

    /// The end of the run of regular bytes that begins at `at`, in the block or right behind it.
    [[nodiscard]] std::size_t regularEnd(std::size_t at) const {
        const std::size_t place = at - block_.begin;
        const std::uint64_t ends =
            place < CharacterBlock::kSize ? block_.bytes.separators >> place : 0;
        if (ends != 0) return at + static_cast<std::size_t>(std::countr_zero(ends));
        return skipRegular(text_, block_.begin + CharacterBlock::kSize);
    }

    /// Notes the reference that ends with the R at `end`, which was passed over.
    void noteReference(std::size_t end) {
        const std::size_t begin = referenceBegin(end);
        std::size_t at = begin;
        std::size_t looked = 0;
        Reference reference;
        if (readReference(text_, at, reference, looked) && at == end + 1)
            found_->references.push_back({begin - begin_, at - begin_, reference});
    }

    /// Where the last number but one before the R at `end` begins, among what was passed over.
    [[nodiscard]] std::size_t referenceBegin(std::size_t end) const {
        constexpr std::string_view kUsual = " 0 ";
        if (end - behindMark_ > kUsual.size() && text_.substr(0, end).ends_with(kUsual)) {
            std::size_t at = end - kUsual.size();
            while (at > behindMark_ && isDigit(text_[at - 1])) --at;
            const bool isNumber = at < end - kUsual.size();
            if (isNumber && (at == behindMark_ || isWhite(text_[at - 1]))) return at;
        }
        std::size_t older = end;
        std::size_t newer = end;
        for (std::size_t at = behindMark_; (at = skipWhite(text_, at)) < end;) {
            if (isDigit(text_[at])) {
                older = newer;
                newer = at;
            }
            at = skipRegular(text_, text_[at] == '/' ? at + 1 : at);
        }
        return older;
    }

    std::string_view text_;
    std::size_t begin_;
    Found* found_;  // not owned
    TokenBlock block_;
    std::size_t looked_ = 0;
    std::size_t behindMark_ = 0;  // since there nothing but names, numbers and comments was met
    BracketStack brackets_;
};

/// The extent of what begins at `begin` and is in no bracket. Notes what it refers to, unless
/// `found` is null.
Extent scanSingle(std::string_view text, std::size_t begin, Found* found) {
    const auto to = [&](std::size_t end) { return Extent{begin, end, std::min(end, text.size())}; };
    const char c = text[begin];
    if (c == '/') return to(skipRegular(text, begin + 1));
    if (c == '(') return to(skipLiteralString(text, begin));
    if (c == '<') return to(skipHexString(text, begin));
    if (!isRegular(c)) return {begin, std::string_view::npos, begin + 1};
    if (isDigit(c)) {
        Reference reference;
        std::size_t at = begin;
        std::size_t looked = begin;
        const bool isReference = readReference(text, at, reference, looked);
        if (!isReference) at = skipRegular(text, begin);
        if (isReference && found != nullptr)
            found->references.push_back({0, at - begin, reference});
        return {begin, at, std::max(at, looked)};
    }
    const std::size_t end = skipRegular(text, begin);
    // An absent value; the word stays.
    return to(endsObject(text.substr(begin, end - begin)) ? begin : end);
}

bool isBracket(std::string_view value) {
    return value[0] == '[' || value.starts_with("<<");
}

}  // namespace

Extent scanValue(std::string_view text, std::size_t at, FoundParts* parts) {
    const std::size_t begin = skipWhite(text, at);
    Found* found = nullptr;
    if (parts != nullptr) {
        if (const std::size_t length = parts->recall(text.substr(begin)); length != 0)
            return {begin, begin + length, begin + length};
        found = &parts->renew();
    }
    if (begin == text.size()) return {begin, begin, begin};
    if (!isBracket(text.substr(begin))) return scanSingle(text, begin, found);
    if (found == nullptr) return BracketScan<false>(text, begin, nullptr).run();
    const Extent extent = BracketScan<true>(text, begin, found).run();
    if (extent.isValue() && text[begin] == '<') parts->remember(extent.in(text));
    return extent;
}

}  // namespace quirebind
