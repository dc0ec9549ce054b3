// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Layers/LayerWriter.h"

#include <algorithm>
#include <string_view>

#include "Platform/PDF/Syntax/PDFName.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

template <typename Element>
void extend(std::vector<Element>& all, const std::vector<Element>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

void appendArray(std::string_view key, std::string_view elements, ByteBuffer& out) {
    if (elements.empty()) return;
    out.append(key);
    out.append("[");
    out.append(elements);
    out.append("]");
}

}  // namespace

bool sharesIntent(const std::set<std::string>& group, const std::set<std::string>& configuration) {
    return configuration.contains("All") ||
           std::ranges::any_of(
               group, [&](const std::string& intent) { return configuration.contains(intent); });
}

void LayerWriter::addShown(const std::vector<std::uint32_t>& groups) {
    extend(joined_.groups, groups);
}

/// A group that was off to no effect would hide something where the intents of another source are
/// the output's, too. Where they are not it stays off, since some readers do not ask for intents.
std::vector<std::uint32_t> LayerWriter::hidden() const {
    std::vector<std::uint32_t> hidden = joined_.hidden;
    for (const LayerSettings::Inactive& inactive : joined_.inactive)
        if (!sharesIntent(inactive.intents, joined_.intents)) hidden.push_back(inactive.group);
    return hidden;
}

void LayerWriter::add(const LayerSettings& settings) {
    extend(joined_.groups, settings.groups);
    extend(joined_.hidden, settings.hidden);
    extend(joined_.inactive, settings.inactive);
    extend(joined_.locked, settings.locked);
    joined_.order += settings.order;
    joined_.radioGroups += settings.radioGroups;
    joined_.usages += settings.usages;
    joined_.intents.insert(settings.intents.begin(), settings.intents.end());
    joined_.listsVisiblePagesOnly =
        settings.listsVisiblePagesOnly && (isEmpty_ || joined_.listsVisiblePagesOnly);
    isEmpty_ = false;
}

std::optional<std::uint32_t> LayerWriter::finish(DocumentWriter& writer) const {
    if (isEmpty_) return std::nullopt;
    const std::uint32_t number = writer.reserve();
    ByteBuffer& out = writer.beginObject(number, writer.packs());
    out.append("<<");
    appendReferencesEntry("/OCGs", joined_.groups, out);
    out.append("/D<<");
    appendReferencesEntry("/OFF", hidden(), out);
    appendReferencesEntry("/Locked", joined_.locked, out);
    appendArray("/Order", joined_.order, out);
    appendArray("/RBGroups", joined_.radioGroups, out);
    appendArray("/AS", joined_.usages, out);
    if (joined_.listsVisiblePagesOnly) out.append("/ListMode/VisiblePages");
    if (joined_.intents != std::set<std::string>{"View"}) {
        out.append("/Intent[");
        for (const std::string& intent : joined_.intents) appendName(intent, out);
        out.append("]");
    }
    out.append(">>>>");
    writer.endObject();
    return number;
}

}  // namespace quirebind
