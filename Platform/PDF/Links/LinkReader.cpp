// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Links/LinkReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Links/Destinations.h"
#include "Platform/PDF/Reading/PageGeometry.h"
#include "Platform/PDF/Syntax/RealNumber.h"

namespace quirebind {

std::vector<PageLink> LinkReader::linksOn(std::size_t index) {
    const PageGeometry geometry = pageGeometry(document_, index);
    ObjectReader& reader = document_.reader();
    std::vector<PageLink> links;
    try {
        const PageTree::Page& page = document_.pageTree().pages()[index];
        const Value dictionary = document_.pageTree().dictionaryOf(page, reader);
        WorkBudget room(limits::kDestinations, reader.image().storedBytes());
        ArrayReader annotations(reader.resolve(dictionary.find("Annots")));
        while (const auto element = annotations.next()) {
            if (links.size() == limits::kShownLinks) break;
            const Value annotation = reader.resolve(*element);
            if (!reader.resolve(annotation.find("Subtype")).isName("Link")) continue;
            const Value destination = destinationOf(annotation);
            const auto area = rectangle(reader, annotation.find("Rect"));
            if (destination.isNull() || !area) continue;
            room.spend(destination.text().size());
            const auto [left, bottom, right, top] = *area;
            const PageGeometry::Point one = geometry.shown(left, bottom);
            const PageGeometry::Point other = geometry.shown(right, top);
            links.push_back({.x = std::min(one.x, other.x),
                             .y = std::min(one.y, other.y),
                             .width = std::abs(one.x - other.x),
                             .height = std::abs(one.y - other.y),
                             .destination = std::string(destination.text())});
        }
    } catch (const DamagedDocument&) {
        links.clear();
    }
    reader.trim();
    return links;
}

Value LinkReader::destinationOf(Value annotation) {
    if (const Value destination = annotation.find("Dest"); !destination.isNull())
        return destination;
    ObjectReader& reader = document_.reader();
    const Value action = reader.resolve(annotation.find("A"));
    return reader.resolve(action.find("S")).isName("GoTo") ? action.find("D") : Value();
}

std::optional<PagePosition> LinkReader::positionOf(const PageLink& link) {
    std::optional<PagePosition> position;
    try {
        WorkBudget room(limits::kDestinations, document_.reader().image().storedBytes());
        const auto destination =
            explicitDestination(Value(link.destination), document_.reader(), names_, room);
        if (destination) {
            ArrayReader elements(*destination);
            if (const auto page = pageOf(elements.next().value_or(Value())))
                position = PagePosition{*page, yOf(*page, elements)};
        }
    } catch (const DamagedDocument&) {
        position.reset();
    }
    document_.reader().trim();
    return position;
}

std::optional<std::size_t> LinkReader::pageOf(Value page) {
    const std::vector<PageTree::Page>& all = document_.pageTree().pages();
    if (const auto reference = page.reference()) {
        if (pages_.empty()) {
            for (std::size_t i = 0; i < all.size(); ++i) pages_.emplace_back(all[i].object, i);
            std::ranges::sort(pages_);
        }
        const auto found =
            std::ranges::lower_bound(pages_, std::pair(reference->number, std::size_t{0}));
        if (found != pages_.end() && found->first == reference->number) return found->second;
    }
    const auto index = document_.reader().resolve(page).integer();
    if (!index || *index < 0 || static_cast<std::uint64_t>(*index) >= all.size())
        return std::nullopt;
    return static_cast<std::size_t>(*index);
}

/// The upper edge of what the view shows (table 149), the page's own where it shows all of it.
double LinkReader::yOf(std::size_t page, ArrayReader view) {
    ObjectReader& reader = document_.reader();
    const Value kind = reader.resolve(view.next().value_or(Value()));
    constexpr std::size_t kNumbers = 4;
    std::array<std::optional<double>, kNumbers> numbers;
    for (auto& number : numbers)
        if (const auto element = view.next()) number = realNumber(reader.resolve(*element).text());
    std::optional<double> x;
    std::optional<double> y;
    if (kind.isName("XYZ")) {
        x = numbers[0];
        y = numbers[1];
    } else if (kind.isName("FitH") || kind.isName("FitBH")) {
        y = numbers[0];
    } else if (kind.isName("FitR")) {
        x = numbers[0];
        y = numbers[3];
    }
    const PageGeometry geometry = pageGeometry(document_, page);  // ends what is being read
    const bool turned = geometry.quarterTurns % 2 != 0;
    if (turned ? !x : !y) return 0;
    const double shown = geometry.shown(x.value_or(geometry.left), y.value_or(geometry.top)).y;
    return std::clamp(shown, 0.0, geometry.size().height);
}

}  // namespace quirebind
