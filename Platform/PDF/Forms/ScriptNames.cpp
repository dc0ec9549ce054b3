// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/ScriptNames.h"

#include <algorithm>
#include <cstddef>

#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {
namespace {

constexpr std::string_view kGetField = "getField";
constexpr std::string_view kReset = "resetForm";
constexpr std::string_view kCalculate = "AFSimple_Calculate";

bool isPartOfWord(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$';
}

/// Reads a script from front to back and copies it, with other names in it.
class ScriptRenaming {
 public:
    ScriptRenaming(std::string_view script, const FieldRenames& renames)
        : script_(script), renames_(renames) {}

    std::optional<std::string> run() {
        while (at_ < script_.size()) {
            if (!isPartOfWord(script_[at_])) {
                ++at_;
                continue;
            }
            const std::string_view word = nextWord();
            if (word == kGetField && opens())
                renameArgument();
            else if (word == kCalculate && opens())
                renameFunctionsArguments();
            else if (word == kReset && opens())
                renameArguments();
        }
        if (copied_ == 0) return std::nullopt;
        return result_.append(script_.substr(copied_));
    }

 private:
    std::string_view nextWord() {
        const std::size_t begin = at_;
        while (at_ < script_.size() && isPartOfWord(script_[at_])) ++at_;
        return script_.substr(begin, at_ - begin);
    }

    void skipBlanks() {
        while (at_ < script_.size() && isWhite(script_[at_])) ++at_;
    }

    /// The next character that is no blank; a null character at the end.
    [[nodiscard]] char peek() {
        skipBlanks();
        return at_ < script_.size() ? script_[at_] : '\0';
    }

    bool opens() {
        if (peek() != '(') return false;
        ++at_;
        return true;
    }

    [[nodiscard]] bool isAtString() { return peek() == '"' || peek() == '\''; }

    /// The text between the quotes that begin here; moves behind them.
    std::string_view nextString() {
        const char quote = script_[at_++];
        const std::size_t begin = at_;
        while (at_ < script_.size() && script_[at_] != quote) at_ += script_[at_] == '\\' ? 2 : 1;
        const std::size_t end = std::min(at_, script_.size());
        at_ = std::min(end + 1, script_.size());
        return script_.substr(begin, end - begin);
    }

    void renameArgument() {
        if (isAtString()) rename(nextString());
    }

    /// All strings behind the first argument, which is the name of a function.
    void renameFunctionsArguments() {
        if (isAtString()) (void)nextString();
        renameArguments();
    }

    /// All strings up to the parenthesis that closes the list of arguments.
    void renameArguments() {
        char before = '(';
        for (std::size_t open = 1; open > 0 && peek() != '\0'; before = script_[at_ - 1]) {
            if (isAtString()) {
                const std::string_view names = nextString();
                if (before != '+') renameList(names);
                continue;
            }
            const char c = script_[at_++];
            if (c == '(') ++open;
            if (c == ')') --open;
        }
    }

    void renameList(std::string_view names) {
        for (std::size_t begin = 0; begin <= names.size();) {
            const std::size_t end = std::min(names.find(',', begin), names.size());
            const std::size_t first = std::min(names.find_first_not_of(' ', begin), end);
            std::size_t last = end;
            while (last > first && names[last - 1] == ' ') --last;
            rename(names.substr(first, last - first));
            begin = end + 1;
        }
    }

    /// What is only the beginning of a name, `"total" + i`, is no name.
    void rename(std::string_view name) {
        const bool isWhole = peek() != '+';
        const bool hasRoot = isWhole || name.find('.') != std::string_view::npos;
        const auto renamed = hasRoot ? renames_.renamedText(name) : std::nullopt;
        if (!renamed) return;
        const auto begin = static_cast<std::size_t>(name.data() - script_.data());
        result_.append(script_.substr(copied_, begin - copied_)).append(*renamed);
        copied_ = begin + name.size();
    }

    std::string_view script_;
    const FieldRenames& renames_;
    std::size_t at_ = 0;
    std::size_t copied_ = 0;
    std::string result_;
};

}  // namespace

std::optional<std::string> renameFieldsInScript(std::string_view script,
                                                const FieldRenames& renames) {
    if (renames.empty()) return std::nullopt;
    return ScriptRenaming(script, renames).run();
}

}  // namespace quirebind
