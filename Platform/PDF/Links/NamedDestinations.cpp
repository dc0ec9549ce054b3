// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Links/NamedDestinations.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "Platform/PDF/Reading/TreeReader.h"
#include "Platform/PDF/Syntax/PDFString.h"

namespace quirebind {

std::optional<Value> NamedDestinations::find(std::string_view name, List list) {
    if (!isRead_) read();
    const auto key = [this](const Entry& entry) { return std::pair(nameOf(entry), entry.list); };
    auto found = std::ranges::lower_bound(entries_, std::pair(name, list), {}, key);
    const auto isFound = [&] { return found != entries_.end() && nameOf(*found) == name; };
    if (!isFound())
        found = std::ranges::lower_bound(entries_, std::pair(name, List::tree), {}, key);
    if (!isFound()) return std::nullopt;
    return Value(std::string_view(texts_).substr(found->begin + found->nameSize, found->valueSize));
}

void NamedDestinations::read() {
    isRead_ = true;
    // What cannot be read is not known; a link to it is dead.
    attempt(reader_, [this] {
        const Value names = reader_.resolve(catalog_.find("Names"));
        visitTree(reader_, names.find("Dests"), "Names", [this](Value key, Value value) {
            add(stringBytes(reader_.resolve(key)), value, List::tree);
            return true;
        });
        DictionaryReader old(reader_.resolve(catalog_.find("Dests")));
        while (const auto entry = old.next())
            add(entry->key.name(), entry->value, List::dictionary);
    });
    std::ranges::sort(entries_, {}, [this](const Entry& entry) {
        // Of equals the one first that counts.
        const std::size_t place =
            entry.list == List::tree ? entry.begin : texts_.size() - entry.begin;
        return std::tuple(nameOf(entry), entry.list, place);
    });
}

void NamedDestinations::add(std::string_view name, Value value, List list) {
    room_.spend(sizeof(Entry) + name.size() + value.text().size());
    entries_.push_back({texts_.size(), static_cast<std::uint32_t>(name.size()),
                        static_cast<std::uint32_t>(value.text().size()), list});
    texts_.append(name).append(value.text());
}

std::string_view NamedDestinations::nameOf(const Entry& entry) const {
    return std::string_view(texts_).substr(entry.begin, entry.nameSize);
}

}  // namespace quirebind
