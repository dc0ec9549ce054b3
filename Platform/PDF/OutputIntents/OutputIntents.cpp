// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/OutputIntents/OutputIntents.h"

#include <algorithm>
#include <span>
#include <utility>

#include "Platform/PDF/Filters/StreamFilters.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

/// The entries of a dictionary with their values resolved, in the order of the file. They are not
/// sorted before they are compared: a program writes the same profile in the same order each time.
/// Throws DamagedDocument where a value refers to an object.
std::string simpleEntries(ObjectReader& reader, Value dictionary, std::string_view leftOut) {
    std::string entries;
    DictionaryReader found(dictionary);
    while (const auto entry = found.next()) {
        if (entry->key.isName(leftOut) || entry->key.isName("Metadata")) continue;
        const Value value = reader.resolve(entry->value);
        FoundParts parts;
        (void)scanValue(value.text(), 0, &parts);
        if (!parts.references().empty())
            throw DamagedDocument("an output intent that is no plain value");
        entries.append(entry->key.text()).append(" ").append(value.text()).append("\n");
        if (entries.size() > limits::kOutputIntentText)
            throw DamagedDocument("too long an output intent");
    }
    return entries;
}

std::string bodyOf(ObjectReader& reader, const SourceObject& stream) {
    const std::uint64_t length = reader.bodyLength(stream);
    if (length > limits::kColourProfile) throw DamagedDocument("too large a colour profile");
    const auto resolve = [&](Value value) { return reader.resolve(value); };
    if (reader.isEncrypted() && StreamFilters(stream.value, resolve).cryptFilter())
        throw DamagedDocument("a profile with a crypt filter");
    return reader.body(stream, length);
}

}  // namespace

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
    result.entries = simpleEntries(reader, intent, kProfile);
    const auto profile = intent.find(kProfile).reference();
    if (!profile || !reader.exists(*profile)) return result;
    const SourceObject stream = reader.read(profile->number);
    if (!stream.isStream) return result;
    result.profile = simpleEntries(reader, stream.value, "Length");
    result.body = bodyOf(reader, stream);
    return result;
}

std::uint32_t OutputIntents::write(DocumentWriter& writer) const {
    std::string array = "[";
    for (const Intent& intent : intents_) {
        array += "<<" + intent.entries;
        if (!intent.profile.empty()) {
            const std::uint32_t number = writer.reserve();
            ByteBuffer& out = writer.beginStream(number);
            out.append("<<");
            out.append(intent.profile);
            out.append("/Length ");
            out.append(std::uint64_t{intent.body.size()});
            out.append(">>");
            std::ranges::copy(intent.body, writer.streamBody(intent.body.size()).begin());
            writer.endStream();
            array += "/DestOutputProfile " + referenceText(number);
        }
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
    else if (common_ != intents)
        common_ = {};
}

std::optional<std::uint32_t> CommonOutputIntents::finish(DocumentWriter& writer) const {
    if (common_.empty()) return std::nullopt;
    return common_.write(writer);
}

}  // namespace quirebind
