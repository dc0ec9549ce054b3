// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/FormResources.h"

#include <array>
#include <cstddef>
#include <utility>

#include "Platform/PDF/Syntax/PDFName.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {
namespace {

/// The category of the resource that the operator takes by its name.
std::string_view categoryFor(std::string_view operation) {
    struct Use {
        std::string_view operation;
        std::string_view category;
    };
    constexpr std::array<Use, 6> kUses{{{"Tf", "Font"},
                                        {"gs", "ExtGState"},
                                        {"cs", "ColorSpace"},
                                        {"CS", "ColorSpace"},
                                        {"scn", "Pattern"},
                                        {"SCN", "Pattern"}}};
    for (const Use& use : kUses)
        if (use.operation == operation) return use.category;
    return {};
}

const std::string* newNameOf(const Value& name, std::string_view operation,
                             const ResourceRenames& renames) {
    const auto category = renames.find(std::string(categoryFor(operation)));
    if (category == renames.end()) return nullptr;
    const auto found = category->second.find(name.name());
    return found == category->second.end() ? nullptr : &found->second;
}

}  // namespace

FormResources::Claim FormResources::claim(const Resource& resource) {
    Category& category = categories_[resource.category];
    std::string key = resource.name + '\0';
    if (resource.digest) {
        key += *resource.digest;
        if (const auto same = category.spellings.find(key); same != category.spellings.end())
            return {.spelling = same->second};
    }
    std::string suffix;
    if (category.names.contains(resource.name)) suffix = category.names.suffixFor(resource.name);
    category.names.insert(resource.name + suffix);
    Claim claim{.spelling = resource.spelling + suffix, .isNew = true};
    if (resource.digest) category.spellings.emplace(std::move(key), claim.spelling);
    return claim;
}

void FormResources::add(const std::string& category, std::string_view spelling,
                        std::string_view value) {
    texts_[category].append(spelling).append(" ").append(value);
}

void FormResources::write(ByteBuffer& out) const {
    out.append("<<");
    for (const auto& [category, text] : texts_) {
        appendName(category, out);
        out.append("<<");
        out.append(text);
        out.append(">>");
    }
    out.append(">>");
}

std::optional<std::string> renameResources(std::string_view appearance,
                                           const ResourceRenames& renames) {
    std::string result;
    std::size_t copied = 0;
    std::size_t at = 0;
    Extent name;  // the last one before an operator
    for (;;) {
        const Extent token = scanValue(appearance, at);
        if (!token.isValue() || token.end == token.begin) break;
        at = token.end;
        const std::string_view text = token.in(appearance);
        if (text.starts_with('/')) {
            name = token;
        } else if (!categoryFor(text).empty() && name.end != 0) {
            const Value used(name.in(appearance));
            if (const std::string* renamed = newNameOf(used, text, renames)) {
                result.append(appearance.substr(copied, name.begin - copied)).append(*renamed);
                copied = name.end;
            }
            name = {};
        }
    }
    if (copied == 0) return std::nullopt;
    return result.append(appearance.substr(copied));
}

}  // namespace quirebind
