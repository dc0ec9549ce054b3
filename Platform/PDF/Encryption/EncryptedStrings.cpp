// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Encryption/EncryptedStrings.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {
namespace {

/// One pass over a value's tokens.
class StringSearch {
 public:
    explicit StringSearch(std::string_view text) : text_(text) {}

    std::vector<Extent> run() {
        for (at_ = skipWhite(text_, at_); at_ < text_.size(); at_ = skipWhite(text_, at_)) step();
        std::erase_if(found_, [](const Extent& string) { return string.end == string.begin; });
        return std::move(found_);
    }

 private:
    /// An array or a dictionary whose end has not been reached.
    struct Open {
        bool isDictionary = false;
        Value key;  ///< Whose value comes next; absent where a key does.
        bool hasByteRange = false;
        std::optional<std::size_t> contents;  ///< The string under /Contents, an index of found_.

        [[nodiscard]] bool hasKey() const { return !key.text().empty(); }
    };

    /// Passes over one token.
    void step() {
        switch (text_[at_]) {
            case '/':
                name();
                break;
            case '[':
                open(1, {});
                break;
            case '<':
                if (text_.substr(at_).starts_with("<<"))
                    open(2, {.isDictionary = true, .key = {}, .contents = {}});
                else
                    string();
                break;
            case '(':
                string();
                break;
            case ']':
                close(1);
                break;
            case '>':
                close(2);
                break;
            default:
                other();
        }
    }

    void name() {
        const std::size_t begin = at_;
        at_ = skipRegular(text_, at_ + 1);
        if (open_.empty() || !open_.back().isDictionary || open_.back().hasKey())
            endValue();
        else
            open_.back().key = Value(text_.substr(begin, at_ - begin));
    }

    void string() {
        const Extent extent = scanValue(text_, at_);
        at_ = std::min(extent.end, text_.size());
        if (!open_.empty() && open_.back().key.isName("Contents"))
            open_.back().contents = found_.size();
        found_.push_back({extent.begin, at_, extent.looked});
        endValue();
    }

    /// A number, a reference or a keyword.
    void other() {
        Reference reference;
        std::size_t looked = 0;
        const std::size_t begin = at_;
        if (!readReference(text_, at_, reference, looked)) at_ = skipRegular(text_, at_);
        at_ = std::max(at_, begin + 1);
        endValue();
    }

    void open(std::size_t width, Open bracket) {
        at_ += width;
        open_.push_back(bracket);
    }

    void close(std::size_t width) {
        at_ += width;
        if (open_.empty()) return;
        const Open closed = open_.back();
        open_.pop_back();
        if (closed.hasByteRange && closed.contents)
            found_[*closed.contents].end = found_[*closed.contents].begin;
        endValue();
    }

    /// What was passed is a value: in a dictionary a key comes next.
    void endValue() {
        if (open_.empty()) return;
        Open& dictionary = open_.back();
        if (dictionary.key.isName("ByteRange")) dictionary.hasByteRange = true;
        dictionary.key = Value();
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::vector<Open> open_;
    std::vector<Extent> found_;
};

}  // namespace

std::vector<Extent> findEncryptedStrings(std::string_view text) {
    return StringSearch(text).run();
}

}  // namespace quirebind
