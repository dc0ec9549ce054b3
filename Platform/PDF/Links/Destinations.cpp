// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Links/Destinations.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/PDFString.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

/// The kind of view and its four numbers at most.
constexpr int kViewElements = 5;

/// Names and numbers say what is in view (12.3.2.2, table 149).
bool isViewElement(Value value) {
    constexpr std::string_view kBegins = "/0123456789+-.";
    const std::string_view text = value.text();
    return !text.empty() && text.size() <= limits::kViewElement &&
           kBegins.find(text.front()) != std::string_view::npos;
}

}  // namespace

std::optional<Value> explicitDestination(Value value, ObjectReader& reader,
                                         NamedDestinations& names, WorkBudget& room) {
    for (int i = 0; i < limits::kDestinationSteps; ++i) {
        value = reader.resolveIfSound(value);
        room.spend(value.text().size());
        if (value.isArray()) return value;
        if (value.isDictionary()) {
            value = value.find("D");
            continue;
        }
        if (!value.isName() && !isString(value)) return std::nullopt;
        const auto found = value.isName()
                               ? names.find(value.name(), NamedDestinations::List::dictionary)
                               : names.find(stringBytes(value), NamedDestinations::List::tree);
        if (!found) return std::nullopt;
        value = *found;
    }
    return std::nullopt;
}

bool Destinations::append(Value value, ByteBuffer& out) {
    const auto destination = explicitDestination(value, reader_, names_, room_);
    if (!destination) return false;
    ArrayReader elements(*destination);
    const auto page = elements.next();
    if (!page) return false;
    out.append("[");
    if (const auto copy = copyOf(*page)) {
        appendReference(*copy, out);
    } else {
        out.append("null");
    }
    appendView(elements, out);
    out.append("]");
    return true;
}

void Destinations::appendView(ArrayReader& elements, ByteBuffer& out) {
    const std::size_t begin = out.size();
    for (int i = 0; i < kViewElements; ++i) {
        const auto element = elements.next();
        if (!element) break;
        const Value resolved = reader_.resolveIfSound(*element);
        out.append(resolved.isName() ? "" : " ");
        out.append(isViewElement(resolved) ? resolved.text() : "null");
    }
    room_.spend(out.size() - begin);
}

/// Within a document a page is a reference to it, but files also count pages, as destinations in
/// other documents do (12.3.2.2), and readers follow them.
std::optional<std::uint32_t> Destinations::copyOf(Value page) {
    if (const auto reference = page.reference())
        if (const auto copy = pages_.ofObject(reference->number)) return copy;
    const auto index = reader_.resolveIfSound(page).integer();
    if (!index || *index < 0 || static_cast<std::uint64_t>(*index) >= pages_.count())
        return std::nullopt;
    return pages_.ofIndex(static_cast<std::size_t>(*index));
}

}  // namespace quirebind
