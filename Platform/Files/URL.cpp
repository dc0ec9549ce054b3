// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/Files/URL.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "Platform/Files/FileSystem.h"
#include "Platform/Files/SymlinkResolver.h"

namespace quirebind {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The value of a hexadecimal digit.
std::optional<unsigned> digitValue(char c) {
    if (isDigit(c)) return static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A' + 10);
    return std::nullopt;
}

/// Undoes percent escapes (RFC 3986, 2.1). Something that only begins like one stands for itself.
std::string unescaped(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && text.size() - i > 2) {
            const std::optional<unsigned> high = digitValue(text[i + 1]);
            const std::optional<unsigned> low = digitValue(text[i + 2]);
            if (high && low) {
                result += static_cast<char>(*high * 16 + *low);
                i += 2;
                continue;
            }
        }
        result += text[i];
    }
    return result;
}

/// Whether a byte of a path may stand for itself in a URL: RFC 3986, 3.3, and the separator.
bool standsForItself(char c) {
    constexpr std::string_view kOthers = "-._~!$&'()*+,;=:@/";
    return isLetter(c) || isDigit(c) || kOthers.find(c) != std::string_view::npos;
}

std::string escaped(std::string_view path) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string result;
    result.reserve(path.size());
    for (const char c : path) {
        if (standsForItself(c)) {
            result += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            result += '%';
            result += kDigits[byte >> 4U];
            result += kDigits[byte & 0x0FU];
        }
    }
    return result;
}

bool isSchemeCharacter(char c) {
    return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
}

/// The size of "scheme:" at the beginning of a URL (RFC 3986, 3.1), 0 where there is none.
std::size_t schemeSize(std::string_view text) {
    if (text.empty() || !isLetter(text.front())) return 0;
    std::size_t size = 1;
    while (size < text.size() && isSchemeCharacter(text[size])) ++size;
    return size < text.size() && text[size] == ':' ? size + 1 : 0;
}

bool isFileScheme(std::string_view scheme) {
    return std::ranges::equal(scheme, std::string_view("file:"), [](char given, char expected) {
        return (given >= 'A' && given <= 'Z' ? static_cast<char>(given - 'A' + 'a') : given) ==
               expected;
    });
}

/// What is left of a URL, its scheme taken away, without authority, query and fragment: its path,
/// still escaped (RFC 3986, 3).
std::string_view pathPart(std::string_view text) {
    text = text.substr(0, text.find_first_of("?#"));
    if (!text.starts_with("//")) return text;
    text.remove_prefix(2);
    return text.substr(std::min(text.find('/'), text.size()));
}

/// The last component of a path, as it is written there.
std::string_view lastComponent(std::string_view path) {
    const std::size_t last = path.find_last_not_of('/');
    if (last == std::string_view::npos) return path.substr(0, 1);
    path = path.substr(0, last + 1);
    return path.substr(path.rfind('/') + 1);
}

}  // namespace

URL::URL(bool isFile, std::string text) : isFile_(isFile), text_(std::move(text)) {}

URL URL::file(std::string path) {
    return {true, std::move(path)};
}

URL URL::parse(std::string_view text) {
    const std::size_t scheme = schemeSize(text);
    if (!isFileScheme(text.substr(0, scheme))) return {false, std::string(text)};
    // RFC 8089. The host is left aside: what is mounted here has no other name than its path.
    return {true, unescaped(pathPart(text.substr(scheme)))};
}

std::string_view URL::path() const {
    return isFile_ ? std::string_view(text_) : std::string_view();
}

std::string URL::absoluteString() const {
    if (!isFile_) return text_;
    // What follows "//" would be a host's name.
    return (text_.starts_with('/') ? "file://" : "file:") + escaped(text_);
}

std::string URL::lastPathComponent() const {
    if (isFile_) return std::string(lastComponent(text_));
    const std::string_view text = text_;
    return unescaped(lastComponent(pathPart(text.substr(schemeSize(text)))));
}

URL URL::resolvingSymlinksInPath() const {
    return resolvingSymlinksInPath(FileSystem::native());
}

URL URL::resolvingSymlinksInPath(FileSystem& files) const {
    SymlinkResolver resolver(files);
    return resolvingSymlinksInPath(resolver);
}

URL URL::resolvingSymlinksInPath(SymlinkResolver& resolver) const {
    return isFile_ ? file(resolver.resolve(text_)) : *this;
}

URL URL::standardizedFileURL() const {
    if (!isFile_ || text_.empty()) return *this;
    const bool isAbsolute = text_.front() == '/';
    // Most paths are in order, and nothing has to be taken apart to see that.
    const bool mayChange = !isAbsolute || text_.ends_with('/') ||
                           text_.find("//") != std::string::npos ||
                           text_.find("/.") != std::string::npos;
    if (!mayChange) return *this;
    std::vector<std::string_view> kept;
    for (std::string_view rest = text_; !rest.empty();) {
        const std::size_t end = std::min(rest.find('/'), rest.size());
        const std::string_view name = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (name.empty() || name == ".") continue;
        const bool isUp = name == "..";
        if (isUp && !kept.empty() && kept.back() != "..") {
            kept.pop_back();
        } else if (!isUp || !isAbsolute) {
            kept.push_back(name);
        }
    }
    std::string result;
    for (const std::string_view name : kept) {
        if (isAbsolute || !result.empty()) result += '/';
        result += name;
    }
    if (result.empty()) result = isAbsolute ? "/" : ".";
    return file(std::move(result));
}

}  // namespace quirebind
