// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Copying/KeyedHash.h"
#include "Platform/PDF/Forms/UniqueNames.h"

namespace quirebind {

/// New names of resources of one source, by category (/Font) and name, all without solidus; the new
/// names as they are spelt, with it.
using ResourceRenames = std::map<std::string, std::map<std::string, std::string>>;

/// The default resources of all forms, by name (ISO 32000-2, table 224, /DR). A name means the same
/// for everyone, so that sources that mean different things by one get other names for theirs, and
/// those that mean the same share it.
class FormResources {
 public:
    /// A resource as a source has it.
    struct Resource {
        std::string category;
        std::string name;
        std::string spelling;               ///< The name as it is spelt.
        std::optional<std::string> digest;  ///< The same for those that are the same.
    };
    /// What a resource of a source is called in the output.
    struct Claim {
        std::string spelling;
        bool isNew = false;  ///< It is to be added.
    };

    /// By what digests are made that can be compared.
    [[nodiscard]] KeyedHash& hash() { return hash_; }

    /// What the resource is called in the output: its own name, unless that is taken by another
    /// one. Where the same resource of that name is there already, it is called as that one is.
    [[nodiscard]] Claim claim(const Resource& resource);

    /// Adds a resource that is new: its category, its new name, and its value in the output.
    void add(const std::string& category, std::string_view spelling, std::string_view value);

    /// Whether there is no resource to write.
    [[nodiscard]] bool empty() const { return texts_.empty(); }
    /// Appends the resource dictionary.
    void write(ByteBuffer& out) const;

 private:
    struct Category {
        UniqueNames names;
        std::map<std::string, std::string> spellings;  // by name and digest
    };

    KeyedHash hash_;
    std::map<std::string, Category> categories_;
    std::map<std::string, std::string> texts_;  // of what each category holds
};

/// `appearance`, a default appearance string (12.7.4.3), with the new names of the resources that
/// it uses; nothing where it stays:
///
///     /Helv 12 Tf 0 g
[[nodiscard]] std::optional<std::string> renameResources(std::string_view appearance,
                                                         const ResourceRenames& renames);

}  // namespace quirebind
