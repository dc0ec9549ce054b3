// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/FieldRenames.h"

#include <cstddef>
#include <utility>

#include "Platform/PDF/Forms/RootName.h"
#include "Platform/PDF/Syntax/TextString.h"

namespace quirebind {
namespace {

/// Where the first period stands in the bytes of a text string; their end where there is none.
std::size_t endOfRoot(std::string_view bytes, TextEncoding encoding) {
    if (encoding == TextEncoding::documentEncoding || encoding == TextEncoding::utf8) {
        const std::size_t period = bytes.find('.');
        return period == std::string_view::npos ? bytes.size() : period;
    }
    const std::string_view period(encoding == TextEncoding::utf16BigEndian ? "\0." : ".\0", 2);
    std::size_t at = 0;
    while (at + 1 < bytes.size() && bytes.substr(at, 2) != period) at += 2;
    return at;
}

std::string encoded(std::string_view ascii, TextEncoding encoding) {
    std::string bytes;
    for (const char c : ascii) {
        if (encoding == TextEncoding::utf16BigEndian) bytes += '\0';
        bytes += c;
        if (encoding == TextEncoding::utf16LittleEndian) bytes += '\0';
    }
    return bytes;
}

}  // namespace

void FieldRenames::add(std::string root, std::string suffix) {
    suffixes_.emplace(std::move(root), std::move(suffix));
}

std::optional<std::string> FieldRenames::renamed(std::string_view bytes) const {
    if (suffixes_.empty()) return std::nullopt;
    const auto found = suffixes_.find(rootName(textOf(bytes)));
    if (found == suffixes_.end()) return std::nullopt;
    const TextEncoding encoding = textEncoding(bytes);
    const std::size_t end = endOfRoot(bytes, encoding);
    return std::string(bytes.substr(0, end)) + encoded(found->second, encoding) +
           std::string(bytes.substr(end));
}

std::optional<std::string> FieldRenames::renamedText(std::string_view name) const {
    const std::string_view root = rootName(name);
    const auto found = suffixes_.find(root);
    if (found == suffixes_.end()) return std::nullopt;
    return std::string(root) + found->second + std::string(name.substr(root.size()));
}

}  // namespace quirebind
