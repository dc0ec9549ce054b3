// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Links/WebAddress.h"

#include <algorithm>
#include <cstddef>

namespace quirebind {
namespace {

constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view kInScheme =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-.";

/// The length of a scheme with its colon; 0 where there is none.
std::size_t schemeSize(std::string_view address) {
    if (address.empty() || kLetters.find(address.front()) == std::string_view::npos) return 0;
    const std::size_t end = address.find_first_not_of(kInScheme);
    return end != std::string_view::npos && address[end] == ':' ? end + 1 : 0;
}

/// The path without "." and "..", which lead up to its root at most.
std::string withoutDots(std::string_view path) {
    std::string result;
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find('/', at + 1), path.size());
        const std::string_view segment = path.substr(at, end - at);
        const bool isLast = end == path.size();
        if (segment == "/..") {
            const std::size_t last = result.rfind('/');
            result.erase(last == std::string::npos ? 0 : last);
        }
        const bool isDots = segment == "/.." || segment == "/.";
        if (isDots && isLast) result += '/';
        if (!isDots) result += segment;
        at = end;
    }
    return result;
}

}  // namespace

std::string resolvedAddress(std::string_view base, std::string_view reference) {
    const std::size_t scheme = schemeSize(base);
    if (scheme == 0 || schemeSize(reference) != 0) return std::string(reference);
    base = base.substr(0, base.find('#'));
    if (reference.starts_with('#') || reference.empty()) return std::string(base).append(reference);
    const std::string_view withPath = base.substr(0, base.find('?'));
    if (reference.starts_with('?')) return std::string(withPath).append(reference);
    if (reference.starts_with("//")) return std::string(base.substr(0, scheme)).append(reference);

    const bool hasAuthority = withPath.substr(scheme).starts_with("//");
    const std::size_t root =
        hasAuthority ? std::min(withPath.find('/', scheme + 2), withPath.size()) : scheme;
    const std::size_t pathEnd = std::min(reference.find_first_of("?#"), reference.size());
    std::string path(reference.substr(0, pathEnd));
    if (!path.starts_with('/')) {
        const std::string_view old = withPath.substr(root);
        const std::size_t folder = old.rfind('/') + 1;  // 0 where there is none
        path.insert(0, old.substr(0, folder));
        if (hasAuthority && !path.starts_with('/')) path.insert(0, "/");
    }
    return std::string(base.substr(0, root))
        .append(withoutDots(path))
        .append(reference.substr(pathEnd));
}

}  // namespace quirebind
