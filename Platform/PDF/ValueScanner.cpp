// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/ValueScanner.h"

#include <algorithm>
#include <bit>

#include "Platform/PDF/BracketStack.h"
#include "Platform/PDF/CharacterBlock.h"
#include "Platform/PDF/Characters.h"
#include "Platform/PDF/Limits.h"

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

/// What "N G R" names. A number that no table can list is still a reference: to nothing.
Reference referenceTo(std::uint64_t number, std::uint64_t generation) {
    return {number > limits::kObjectNumber ? 0 : static_cast<std::uint32_t>(number),
            generation > 65535 ? 65536 : static_cast<std::uint32_t>(generation)};
}

/// What nearly all references have behind their number.
constexpr std::string_view kUsualRest = " 0 R";

/// Whether that stands at `at`, and nothing that goes on.
inline bool isUsualRest(std::string_view text, std::size_t at) {
    const std::size_t end = at + kUsualRest.size();
    if (end > text.size() || text[end - 1] != 'R') return false;  // tells nearly always
    return text.substr(at, kUsualRest.size()) == kUsualRest &&
           (end == text.size() || !isRegular(text[end]));
}

/// Notes the entries of the dictionary that is scanned, from the places of its keys and values.
class EntryNotes {
 public:
    explicit EntryNotes(FoundParts* parts) : parts_(parts) {}

    /// A name, or any other value, stands there.
    void add(std::size_t begin, std::size_t end, bool isName) {
        if (!parts_->wellFormed()) return;
        if (hasKey_) {
            parts_->endLastEntry(begin, end);
            hasKey_ = false;
        } else if (isName) {
            parts_->add(FoundEntry{begin, end, end, end});
            hasKey_ = true;
        } else {
            parts_->breakOff();
        }
    }

 private:
    FoundParts* parts_;  // not owned
    bool hasKey_ = false;
};

/// Whether the word ends an object: inside brackets it tells that one of them was never closed.
bool endsObject(std::string_view word) {
    return word == "endobj" || word == "stream" || word == "obj";
}

/// A scan of a value that begins with a bracket, from token to token. In the dictionary whose
/// entries are noted that is every token; elsewhere it is what opens or closes something, comments
/// and words, and what else there is in between is passed over, a block of text at a time. What is
/// noted is decided when it is compiled: most scans note nothing.
template <bool kNotes>
class BracketScan {
 public:
    /// `parts` is looked at by scans that note something only.
    BracketScan(std::string_view text, std::size_t begin, FoundParts* parts)
        : text_(text), begin_(begin), parts_(parts), entries_(parts) {}

    Extent run() {
        isDictionary_ = text_[begin_] == '<';
        std::size_t at = begin_ + (isDictionary_ ? 2 : 1);
        behindMark_ = at;
        const bool isValue = brackets_.push(isDictionary_) && scan(at);
        const std::size_t read = std::min(at, text_.size());
        return {begin_, isValue ? at : std::string_view::npos, std::max(read, looked_)};
    }

 private:
    /// A block of the text from `begin` on. `isMidway`: inside a token that is passed over.
    struct Block {
        Block(std::string_view text, std::size_t at, bool isMidway)
            : begin(at), bytes(CharacterBlock::of(text, at)) {
            const std::uint64_t goesOn = ~bytes.separators | bytes.solidi;
            const std::uint64_t first = ~bytes.separators & ~(goesOn << 1U | (isMidway ? 1U : 0U));
            tokens = bytes.delimiters | first;
            marks = (bytes.delimiters & ~bytes.solidi) | (first & bytes.words);
            endsMidway = goesOn >> (CharacterBlock::kSize - 1) != 0;
        }

        std::size_t begin;
        CharacterBlock bytes;
        std::uint64_t tokens = 0;  ///< Where one begins.
        std::uint64_t marks = 0;   ///< Of them, those that nothing passes over.
        bool endsMidway = false;
    };

    /// From behind the first bracket to behind its counterpart. False where the syntax is broken:
    /// `at` is where then, or npos where something does not end.
    bool scan(std::size_t& at) {
        bool isMidway = false;
        while (at < text_.size()) {
            const Block block(text_, at, isMidway);
            isMidway = false;
            while (at - block.begin < CharacterBlock::kSize) {
                const std::uint64_t rest =
                    (isNoted() ? block.tokens : block.marks) >> (at - block.begin);
                if (rest == 0) {
                    at = block.begin + CharacterBlock::kSize;
                    isMidway = block.endsMidway;
                    break;
                }
                at += static_cast<std::size_t>(std::countr_zero(rest));
                if (!step(block, at)) return false;
                if (brackets_.empty()) return true;
            }
        }
        at = text_.size();
        return false;
    }

    /// Passes over the token at `at`. False where the syntax is broken.
    bool step(const Block& block, std::size_t& at) {
        const std::size_t begin = at;
        const char c = text_[begin];
        if (c == '/') {
            at = regularEnd(block, begin + 1);
            note(begin, at, true);
            return true;
        }
        if (isDigit(c)) {  // of an entry: other numbers are passed over
            number(block, at);
            return true;
        }
        switch (c) {
            case '(':
                at = skipLiteralString(text_, begin);
                return passed(begin, at);
            case '[':
                ++at;
                return open(begin, at, false);
            case ']':
                ++at;
                return close(at, false);
            case '<':
                if (begin + 1 < text_.size() && text_[begin + 1] == '<') {
                    at += 2;
                    return open(begin, at, true);
                }
                at = skipHexString(text_, begin);
                return passed(begin, at);
            case '>':
                at = begin + 1 < text_.size() ? begin + 2 : std::string_view::npos;
                return at != std::string_view::npos && text_[begin + 1] == '>' && close(at, true);
            case '%':
                at = skipWhite(text_, begin);
                return true;
            case ')':
            case '{':
            case '}':
                return false;
            default:
                at = regularEnd(block, begin);
                return word(begin, at);
        }
    }

    /// The end of the run of regular bytes that begins at `at`, in the block or right behind it.
    [[nodiscard]] std::size_t regularEnd(const Block& block, std::size_t at) const {
        const std::size_t place = at - block.begin;
        const std::uint64_t ends =
            place < CharacterBlock::kSize ? block.bytes.separators >> place : 0;
        if (ends != 0) return at + static_cast<std::size_t>(std::countr_zero(ends));
        return skipRegular(text_, block.begin + CharacterBlock::kSize);
    }

    /// Behind a string.
    bool passed(std::size_t begin, std::size_t end) {
        if (end == std::string_view::npos) return false;
        behindMark_ = end;
        note(begin, end, false);
        return true;
    }

    bool open(std::size_t begin, std::size_t end, bool dictionary) {
        behindMark_ = end;
        if (kNotes && brackets_.depth() == 1) nested_ = begin;
        return brackets_.push(dictionary);
    }

    bool close(std::size_t end, bool dictionary) {
        behindMark_ = end;
        if (!brackets_.pop(dictionary)) return false;
        note(nested_, end, false);
        return true;
    }

    [[nodiscard]] bool isNoted() const { return kNotes && isDictionary_ && brackets_.depth() == 1; }

    /// What stands there is part of an entry, if it is in no other bracket than the outermost one.
    void note(std::size_t begin, std::size_t end, bool isName) {
        if (isNoted()) entries_.add(begin - begin_, end - begin_, isName);
    }

    /// An unsigned number as the value of an entry, or the reference that begins with it.
    void number(const Block& block, std::size_t& at) {
        const std::size_t begin = at;
        Reference reference;
        if (readReference(text_, at, reference, looked_))
            parts_->add(FoundReference{begin - begin_, at - begin_, reference});
        else
            at = regularEnd(block, begin);
        note(begin, at, false);
    }

    /// A signed number, true, false, null, the R of a reference, or something that is no value.
    bool word(std::size_t begin, std::size_t end) {
        const std::string_view word = text_.substr(begin, end - begin);
        if (kNotes && word == "R") noteReference(begin);
        behindMark_ = end;
        note(begin, end, false);
        return !endsObject(word);
    }

    /// Notes the reference that ends with the R at `end`, outside the entries.
    void noteReference(std::size_t end) {
        const std::size_t begin = referenceBegin(end);
        std::size_t at = begin;
        std::size_t looked = 0;
        Reference reference;
        if (readReference(text_, at, reference, looked) && at == end + 1)
            parts_->add(FoundReference{begin - begin_, at - begin_, reference});
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
    std::size_t looked_ = 0;
    std::size_t behindMark_ = 0;  // behind the last token that was not passed over, nor a comment
    std::size_t nested_ = 0;      // where what is in the outermost bracket begins
    bool isDictionary_ = false;
    FoundParts* parts_;  // not owned
    EntryNotes entries_;
    BracketStack brackets_;
};

/// The extent of what begins at `begin` and is in no bracket. Notes what it refers to, unless
/// `parts` is null.
Extent scanSingle(std::string_view text, std::size_t begin, FoundParts* parts) {
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
        if (isReference && parts != nullptr) parts->add(FoundReference{0, at - begin, reference});
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

bool readReference(std::string_view text, std::size_t& at, Reference& reference,
                   std::size_t& looked) {
    std::uint64_t number = 0;
    std::uint64_t generation = 0;
    looked = at;
    if (!readUnsigned(text, looked, number)) return false;
    const std::size_t gap = looked;
    if (isUsualRest(text, gap)) {
        looked = gap + kUsualRest.size();
        at = looked;
        reference = referenceTo(number, 0);
        return true;
    }
    looked = skipWhite(text, gap);
    if (looked == gap || looked >= text.size() || !isDigit(text[looked])) return false;
    if (!readUnsigned(text, looked, generation)) return false;
    const std::size_t secondGap = looked;
    looked = skipWhite(text, secondGap);
    if (looked == secondGap || looked >= text.size() || text[looked] != 'R') return false;
    ++looked;
    if (looked < text.size() && isRegular(text[looked])) return false;
    reference = referenceTo(number, generation);
    at = looked;
    return true;
}

Extent scanValue(std::string_view text, std::size_t at, FoundParts* parts) {
    const std::size_t begin = skipWhite(text, at);
    if (parts != nullptr) {
        if (const std::size_t length = parts->recall(text.substr(begin)); length != 0)
            return {begin, begin + length, begin + length};
        parts->clear();
    }
    if (begin == text.size()) return {begin, begin, begin};
    if (!isBracket(text.substr(begin))) return scanSingle(text, begin, parts);
    if (parts == nullptr) return BracketScan<false>(text, begin, nullptr).run();
    const Extent extent = BracketScan<true>(text, begin, parts).run();
    if (extent.isValue() && text[begin] == '<') parts->remember(extent.in(text));
    return extent;
}

}  // namespace quirebind
