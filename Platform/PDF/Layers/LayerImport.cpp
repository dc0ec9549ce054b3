// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Layers/LayerImport.h"

#include <utility>
#include <vector>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Layers/LayerCopy.h"
#include "Platform/PDF/Layers/LayerOrder.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

constexpr std::string_view kUsualIntent = "View";

}  // namespace

template <typename Visit>
void LayerImport::forEachReference(Value array, Visit visit) {
    ArrayReader elements(copier_.reader().resolve(array));
    while (const auto element = elements.next())
        if (const auto reference = element->reference()) visit(*reference);
}

LayerImport::LayerImport(ObjectCopier& copier, const Catalog& catalog, LayerWriter& writer)
    : copier_(copier),
      catalog_(catalog),
      writer_(writer),
      source_(writer.nextSource()),
      room_(limits::kLayerLists, copier.reader().image().storedBytes()) {
    attempt(copier_.reader(), [&] {
        const Value properties = copier.reader().resolve(catalog_.find("OCProperties"));
        forEachReference(properties.find("OCGs"), [this](Reference group) {
            if (!groups_.insert(group.number).second) return;
            listed_.push_back(group.number);
            copier_.map().setRole(group.number, Role::layer);
        });
    });
    if (!listed_.empty()) copier_.setRewriter(Role::layer, *this);
}

void LayerImport::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    copyLayer(value, writer_, source_, text, out);
}

void LayerImport::finish() {
    ObjectReader& reader = copier_.reader();
    Value configuration;
    attempt(copier_.reader(), [&] {
        const Value properties = reader.resolve(catalog_.find("OCProperties"));
        configuration = reader.resolve(properties.find("D"));
    });
    // The order comes first, since it may ask for more groups.
    attempt(copier_.reader(), [&] { readOrder(configuration); });
    attempt(copier_.reader(), [&] { readStates(configuration); });
    attempt(copier_.reader(), [&] { readRadioGroups(configuration); });
    attempt(copier_.reader(), [&] { readUsages(configuration); });
    if (!settings_.groups.empty()) writer_.add(settings_);
}

/// All groups begin in the base state, then those of /ON are turned on, then those of /OFF are
/// turned off (table 99); Unchanged, which means whatever was there before, is on where nothing
/// was.
void LayerImport::readStates(Value configuration) {
    ObjectReader& reader = copier_.reader();
    const bool base = !reader.resolve(configuration.find("BaseState")).isName("OFF");
    std::set<std::uint32_t> on;
    std::set<std::uint32_t> off;
    if (!base)
        forEachReference(configuration.find("ON"),
                         [&](Reference group) { on.insert(group.number); });
    forEachReference(configuration.find("OFF"), [&](Reference group) { off.insert(group.number); });
    std::set<std::uint32_t> locked;
    forEachReference(configuration.find("Locked"),
                     [&](Reference group) { locked.insert(group.number); });
    settings_.listsVisiblePagesOnly =
        reader.resolve(configuration.find("ListMode")).isName("VisiblePages");
    settings_.intents = intentsIn(configuration.find("Intent"));
    for (const std::uint32_t group : listed_) {
        const auto copy = copier_.map().find(group);
        if (!copy) continue;
        settings_.groups.push_back(*copy);
        const bool isOn = !off.contains(group) && (base || on.contains(group));
        if (!isOn) hide(group, *copy);
        if (locked.contains(group)) settings_.locked.push_back(*copy);
    }
}

void LayerImport::hide(std::uint32_t source, std::uint32_t copy) {
    std::set<std::string> intents = intentsIn(copier_.reader().read(source).value.find("Intent"));
    if (sharesIntent(intents, settings_.intents))
        settings_.hidden.push_back(copy);
    else
        settings_.inactive.push_back({.group = copy, .intents = std::move(intents)});
}

/// The names in `value`, which is a name or an array of them; the usual one where there is none.
std::set<std::string> LayerImport::intentsIn(Value value) {
    std::set<std::string> intents;
    const Value resolved = valueOf(value);
    if (resolved.isName()) intents.insert(resolved.name());
    ArrayReader elements(resolved);
    for (int i = 0; i < limits::kIntents; ++i) {
        const auto element = elements.next();
        if (!element) break;
        const Value name = valueOf(*element);
        if (name.isName()) intents.insert(name.name());
    }
    if (intents.empty()) intents.emplace(kUsualIntent);
    return intents;
}

void LayerImport::readOrder(Value configuration) {
    settings_.order = orderOfCopies(configuration.find("Order"), copier_.reader(),
                                    {.find = [this](Reference group) { return copyOf(group); },
                                     .use = [this](Reference group) { return use(group); }});
}

void LayerImport::readRadioGroups(Value configuration) {
    ArrayReader groups(copier_.reader().resolve(configuration.find("RBGroups")));
    while (const auto group = groups.next())
        if (const std::string copies = copiesIn(*group); !copies.empty())
            settings_.radioGroups += "[" + copies + "]";
}

/// Usage application dictionaries (table 101): when a document is viewed, printed or exported,
/// groups change their states.
void LayerImport::readUsages(Value configuration) {
    ObjectReader& reader = copier_.reader();
    ArrayReader usages(reader.resolve(configuration.find("AS")));
    while (const auto element = usages.next()) {
        const Value usage = reader.resolve(*element);
        const std::string copies = copiesIn(usage.find("OCGs"));
        const std::string categories = namesIn(usage.find("Category"));
        const Value event = valueOf(usage.find("Event"));
        if (copies.empty() || !event.isName()) continue;
        settings_.usages.append("<</Event").append(event.text());
        settings_.usages.append("/OCGs[").append(copies);
        settings_.usages.append("]/Category[").append(categories).append("]>>");
    }
}

std::string LayerImport::copiesIn(Value array) {
    std::string copies;
    forEachReference(valueOf(array), [&](Reference group) {
        if (const auto copy = copyOf(group)) copies += referenceText(*copy) + " ";
    });
    return copies;
}

std::string LayerImport::namesIn(Value array) {
    std::string names;
    ArrayReader elements(valueOf(array));
    while (const auto element = elements.next())
        if (const Value name = valueOf(*element); name.isName()) names += name.text();
    return names;
}

Value LayerImport::valueOf(Value value) {
    const Value found = copier_.reader().resolve(value);
    room_.spend(found.text().size());
    return found;
}

std::optional<std::uint32_t> LayerImport::copyOf(Reference group) const {
    if (!isGroup(group.number)) return std::nullopt;
    return copier_.map().find(group.number);
}

std::optional<std::uint32_t> LayerImport::use(Reference group) {
    if (!isGroup(group.number)) return std::nullopt;
    return copier_.map().map(group, Role::plain);
}

}  // namespace quirebind
