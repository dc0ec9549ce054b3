// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/Recovery/SoundDictionaries.h"

#include <cstdint>
#include <vector>

#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/ValueScanner.h"

namespace quirebind {
namespace {

/// Goes through a value token by token, with a stack of its own in place of recursion.
class DictionaryCheck {
 public:
    explicit DictionaryCheck(std::string_view text) : text_(text) {}

    bool run() {
        for (;;) {
            at_ = skipWhite(text_, at_);
            if (at_ >= text_.size()) return true;
            if (!step()) return false;
        }
    }

 private:
    /// What may come next in an open array or dictionary.
    enum class Next : std::uint8_t { element, key, value };

    bool step() {
        const std::string_view rest = text_.substr(at_);
        if (rest.starts_with("<<")) return open(Next::key, 2);
        if (rest.starts_with('[')) return open(Next::element, 1);
        if (rest.starts_with(">>")) return close(2);
        if (rest.starts_with(']')) return close(1);
        const Extent extent = scanValue(text_, at_);
        if (!extent.isValue() || extent.end <= at_) return false;
        at_ = extent.end;
        return take(rest.starts_with('/'));
    }

    bool open(Next first, std::size_t bracket) {
        if (!take(false)) return false;
        open_.push_back(first);
        at_ += bracket;
        return true;
    }

    bool close(std::size_t bracket) {
        if (open_.empty()) return false;
        open_.pop_back();
        at_ += bracket;
        return true;
    }

    /// Puts a value, or a key, where one may stand.
    bool take(bool isName) {
        if (open_.empty() || open_.back() == Next::element) return true;
        if (open_.back() == Next::key && !isName) return false;
        open_.back() = open_.back() == Next::key ? Next::value : Next::key;
        return true;
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::vector<Next> open_;
};

}  // namespace

bool hasSoundDictionaries(std::string_view text) {
    return DictionaryCheck(text).run();
}

}  // namespace quirebind
