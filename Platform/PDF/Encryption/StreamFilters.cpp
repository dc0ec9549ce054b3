// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Encryption/StreamFilters.h"

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

/// The parameters of the filters; real files use the abbreviation of inline images here, too.
Value parametersOf(Value dictionary, const Resolve& resolve) {
    const Value parameters = dictionary.find("DecodeParms");
    return resolve(parameters).isNull() ? dictionary.find("DP") : parameters;
}

}  // namespace

StreamFilters::StreamFilters(Value dictionary, const Resolve& resolve) {
    const auto names = elementsOf(dictionary.find("Filter"), resolve);
    const auto parameters = elementsOf(parametersOf(dictionary, resolve), resolve);
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

bool StreamFilters::isFilterEntry(Value key) {
    return key.isName("Filter") || key.isName("DecodeParms") || key.isName("DP");
}

}  // namespace quirebind
