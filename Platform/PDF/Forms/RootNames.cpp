// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/RootNames.h"

#include <set>
#include <utility>

namespace quirebind {

FieldRenames RootNames::claim(const std::vector<std::string>& roots) {
    FieldRenames renames;
    const std::set<std::string> own(roots.begin(), roots.end());
    std::vector<std::string> made;
    for (const std::string& root : roots) {
        if (!names_.contains(root) || renames.contains(root)) continue;
        std::string suffix = names_.suffixFor(root, own);
        made.push_back(root + suffix);
        renames.add(root, std::move(suffix));
    }
    for (const std::string& root : own) names_.insert(root);
    for (std::string& name : made) names_.insert(std::move(name));
    return renames;
}

}  // namespace quirebind
