// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/SharedNames.h"

namespace quirebind {

std::string SharedNames::nameFor(const std::string& name, const std::string& definition,
                                 std::size_t source) {
    const auto [found, isNew] = definitions_.try_emplace(name, definition);
    if (isNew || found->second == definition) return name;
    return otherNameFor(name, definition, source);
}

std::string SharedNames::otherNameFor(const std::string& name, const std::string& definition,
                                      std::size_t source) {
    const auto [other, isNew] = others_.try_emplace({name, definition});
    if (!isNew) return other->second;
    // With the number of the source hardly any second attempt is ever needed.
    const std::string counted = name + "_" + std::to_string(source);
    std::string unused = counted;
    for (int i = 2; !definitions_.try_emplace(unused, definition).second; ++i)
        unused = counted + "_" + std::to_string(i);
    other->second = unused;
    return unused;
}

}  // namespace quirebind
