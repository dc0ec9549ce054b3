// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Filters/StreamFilters.h"

#include <cstddef>

namespace quirebind {
namespace {

/// The elements of an array; any other value is the only element.
std::vector<Value> elementsOf(Value value, const Resolve& resolve) {
    const Value direct = resolve(value);
    if (direct.isNull()) return {};
    if (!direct.isArray()) return {value};
    std::vector<Value> result;
    ArrayReader reader(direct);
    while (const auto element = reader.next()) result.push_back(*element);
    return result;
}

/// Whether this is what /Filter is, and not a file.
bool namesFilters(Value value) {
    return value.isName() || value.isArray();
}

}  // namespace

StreamFilters::StreamFilters(Value dictionary, const Resolve& resolve) {
    const auto isAbsent = [&](Value value) { return resolve(value).isNull(); };
    Value filter = dictionary.find("Filter");
    if (isAbsent(filter)) {
        filter = dictionary.find("F");
        isAbbreviated_ = namesFilters(resolve(filter));
        if (!isAbbreviated_) return;
    }
    Value parms = dictionary.find("DecodeParms");
    if (isAbsent(parms)) parms = dictionary.find("DP");
    const auto names = elementsOf(filter, resolve);
    const auto parameters = elementsOf(parms, resolve);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const Value own = i < parameters.size() ? parameters[i] : Value();
        if (!resolve(names[i]).isName("Crypt")) {
            others_.push_back({names[i], own});
        } else if (!cryptFilter_) {
            const std::string name = resolve(resolve(own).find("Name")).name();
            cryptFilter_ = name.empty() ? "Identity" : name;
        }
    }
}

bool StreamFilters::isFilterEntry(Value key) const {
    return key.isName("Filter") || key.isName("DecodeParms") || key.isName("DP") ||
           (isAbbreviated_ && key.isName("F"));
}

}  // namespace quirebind
