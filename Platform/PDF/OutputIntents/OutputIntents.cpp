// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/OutputIntents/OutputIntents.h"

#include <algorithm>
#include <utility>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/OutputIntents/PlainEntries.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {

OutputIntents OutputIntents::read(ObjectReader& reader, const Catalog& catalog) {
    OutputIntents result;
    attempt(reader, [&] { result = readSound(reader, catalog); });
    return result;
}

OutputIntents OutputIntents::readSound(ObjectReader& reader, const Catalog& catalog) {
    OutputIntents result;
    ArrayReader intents(reader.resolve(catalog.find("OutputIntents")));
    while (const auto intent = intents.next()) {
        if (result.intents_.size() == limits::kOutputIntents) return {};
        const Value dictionary = reader.resolve(*intent);
        if (!dictionary.isDictionary()) return {};
        result.intents_.push_back(readIntent(reader, dictionary));
    }
    return result;
}

OutputIntents::Intent OutputIntents::readIntent(ObjectReader& reader, Value intent) {
    constexpr std::string_view kProfile = "DestOutputProfile";
    Intent result;
    result.entries = plainEntries(reader, intent, [&](Value key) {
        return !key.isName(kProfile) && !key.isName("Metadata");
    });
    const auto profile = intent.find(kProfile).reference();
    if (!profile || !reader.exists(*profile)) return result;
    const SourceObject stream = reader.read(profile->number);
    if (stream.isStream) result.profile = ColourProfile::read(reader, stream);
    return result;
}

bool OutputIntents::match(OutputIntents& other, KeyedHash& hash) {
    WorkBudget budget(limits::kComparedProfiles);
    return std::ranges::equal(intents_, other.intents_, [&](Intent& one, Intent& another) {
        if (one.entries != another.entries) return false;
        if (!one.profile || !another.profile) return !one.profile && !another.profile;
        return one.profile->matches(*another.profile, hash, budget);
    });
}

std::uint32_t OutputIntents::write(DocumentWriter& writer) const {
    std::string array = "[";
    for (const Intent& intent : intents_) {
        array += "<<" + intent.entries;
        if (intent.profile)
            array += "/DestOutputProfile " + referenceText(intent.profile->write(writer));
        array += ">>";
    }
    const std::uint32_t number = writer.reserve();
    writer.beginObject(number, writer.packs()).append(array + "]");
    writer.endObject();
    return number;
}

void CommonOutputIntents::add(ObjectReader& reader, const Catalog& catalog) {
    const bool isFirst = std::exchange(isFirst_, false);
    if (!isFirst && common_.empty()) return;
    OutputIntents intents = OutputIntents::read(reader, catalog);
    if (isFirst)
        common_ = std::move(intents);
    else if (!common_.match(intents, hash_))
        common_ = {};
}

std::optional<std::uint32_t> CommonOutputIntents::finish(DocumentWriter& writer) const {
    if (common_.empty()) return std::nullopt;
    return common_.write(writer);
}

}  // namespace quirebind
