// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "Platform/PDF/Forms/FieldRenames.h"
#include "Platform/PDF/Forms/FormDefaults.h"
#include "Platform/PDF/Forms/FormResources.h"

namespace quirebind {

/// What changes in the fields of one source because its form is joined with others. Known before
/// the first of its pages is copied.
struct FormChanges {
    /// What changes in one field.
    struct Field {
        bool isRenamed = false;              ///< Its partial name is the root's, and has a new one.
        FormDefaults::Taken taken;           ///< The defaults that it gets.
        std::string kids;                    ///< What its /Kids are; empty where they stay.
        std::optional<bool> holdsSignature;  ///< Known once it has been asked.
    };

    std::map<std::uint32_t, Field> fields;  ///< By object number; the others stay as they are.
    FieldRenames names;
    ResourceRenames resources;
    FormDefaults defaults;
    /// The object of the output that lists all root fields of the source; 0 while nothing refers to
    /// it.
    std::uint32_t rootList = 0;
};

}  // namespace quirebind
