// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/UniqueNames.h"

namespace quirebind {

std::string UniqueNames::suffixFor(const std::string& name, const std::set<std::string>& others) {
    std::uint32_t& count = counts_.try_emplace(name, 1).first->second;
    for (;;) {
        std::string suffix = "_" + std::to_string(++count);
        const std::string candidate = name + suffix;
        if (!names_.contains(candidate) && !others.contains(candidate)) return suffix;
    }
}

}  // namespace quirebind
