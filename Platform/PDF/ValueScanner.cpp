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
    [[nodiscard]] std::size_t depth() const { return depth_; }
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
    explicit EntryNotes(FoundParts& parts) : parts_(parts) {}

    /// A name, or any other value, stands there.
    void add(std::size_t begin, std::size_t end, bool isName) {
        if (!parts_.wellFormed()) return;
        if (hasKey_) {
            parts_.endLastEntry(begin, end);
            hasKey_ = false;
        } else if (isName) {
            parts_.add(FoundEntry{begin, end, end, end});
            hasKey_ = true;
        } else {
            parts_.breakOff();
        }
    }

 private:
    FoundParts& parts_;
    bool hasKey_ = false;
};

/// The state of one scan. What is noted is decided when it is compiled: most scans note nothing.
template <bool kNotes>
class Scan {
 public:
    Scan(std::string_view text, std::size_t at, FoundParts& parts)
        : text_(text), at_(at), parts_(parts), entries_(parts) {}

    Extent run() {
        at_ = skipWhite(text_, at_);
        begin_ = at_;
        isDictionary_ = text_.substr(at_).starts_with("<<");
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
        const std::size_t begin = at_;
        switch (text_[begin]) {
            case '/':
                at_ = skipRegular(text_, begin + 1);
                note(begin, true);
                return true;
            case '(':
                return passTo(skipLiteralString(text_, begin));
            case '[':
                ++at_;
                return open(begin, false);
            case ']':
                ++at_;
                return close(false);
            case '<':
                if (begin + 1 < text_.size() && text_[begin + 1] == '<') {
                    at_ += 2;
                    return open(begin, true);
                }
                return passTo(skipHexString(text_, begin));
            case '>':
                if (begin + 1 >= text_.size()) {
                    at_ = std::string_view::npos;
                    return false;
                }
                at_ += 2;
                return text_[begin + 1] == '>' && close(true);
            case ')':
            case '{':
            case '}':
                return false;
            default:
                return isDigit(text_[begin]) ? number() : keyword();
        }
    }

    /// Behind a string that ends at `end`.
    bool passTo(std::size_t end) {
        const std::size_t begin = at_;
        at_ = end;
        if (end == std::string_view::npos) return false;
        note(begin, false);
        return true;
    }

    bool open(std::size_t begin, bool dictionary) {
        if (kNotes && open_.depth() == 1) nested_ = begin;
        return open_.push(dictionary);
    }

    bool close(bool dictionary) {
        if (!open_.pop(dictionary)) return false;
        note(nested_, false);
        return true;
    }

    /// What stands from `begin` to here is part of an entry, if it is in no other bracket than the
    /// outermost one.
    void note(std::size_t begin, bool isName) {
        if (kNotes && isEntry()) entries_.add(begin - begin_, at_ - begin_, isName);
    }

    [[nodiscard]] bool isEntry() const { return isDictionary_ && open_.depth() == 1; }

    bool number() {
        const std::size_t begin = at_;
        if (open_.empty() || (kNotes && isEntry())) {
            Reference reference;
            std::size_t end = begin;
            std::size_t looked = 0;
            const bool isReference = readReference(text_, end, reference, looked);
            looked_ = looked;
            at_ = isReference ? end : skipRegular(text_, begin);
            if (kNotes && isReference)
                parts_.add(FoundReference{begin - begin_, end - begin_, reference});
            note(begin, false);
            return true;
        }
        at_ = skipRegular(text_, begin);
        older_ = newer_;
        newer_ = begin;
        return true;
    }

    /// Behind an R inside brackets that begins at `begin`: notes the reference that ends there.
    void noteReference(std::size_t begin) {
        Reference reference;
        std::size_t end = older_;
        std::size_t looked = 0;
        if (readReference(text_, end, reference, looked) && end == begin + 1)
            parts_.add(FoundReference{older_ - begin_, end - begin_, reference});
    }

    /// A signed number, true, false, null, or something that is no value at all. A keyword that
    /// ends an object inside brackets tells that one of them was never closed.
    bool keyword() {
        const std::size_t begin = at_;
        const std::size_t end = skipRegular(text_, begin);
        const std::string_view word = text_.substr(begin, end - begin);
        const bool endsObject = word == "endobj" || word == "stream" || word == "obj";
        if (endsObject && open_.empty()) return true;  // an absent value; the word stays
        at_ = end;
        if (kNotes && word == "R") noteReference(begin);
        note(begin, false);
        return !endsObject;
    }

    std::string_view text_;
    std::size_t at_;
    std::size_t begin_ = 0;
    std::size_t looked_ = 0;
    std::size_t older_ = 0;   // where the last number but one inside brackets began
    std::size_t newer_ = 0;   // and the last one
    std::size_t nested_ = 0;  // where what is in the outermost bracket begins, if it has its own
    bool isDictionary_ = false;
    FoundParts& parts_;
    EntryNotes entries_;
    BracketStack open_;
};

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
    if (parts == nullptr) {
        FoundParts nothing;
        return Scan<false>(text, at, nothing).run();
    }
    const std::size_t begin = skipWhite(text, at);
    if (const std::size_t length = parts->recall(text.substr(begin)); length != 0)
        return {begin, begin + length, begin + length};
    parts->clear();
    const Extent extent = Scan<true>(text, begin, *parts).run();
    if (extent.isValue() && text.substr(begin).starts_with("<<")) parts->remember(extent.in(text));
    return extent;
}

}  // namespace quirebind
