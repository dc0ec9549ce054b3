// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <utility>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// What a form says for those of its fields that do not say it themselves: the default appearance
/// and the quadding (ISO 32000-2, table 224). Where forms are joined that is the same for them as
/// if their roots said it.
class FormDefaults {
 public:
    /// What of it one field takes.
    struct Taken {
        bool appearance = false;
        bool quadding = false;
    };

    /// The value of /DA as each field gets it; begins with a delimiter or white space.
    void setAppearance(std::string text) { appearance_ = std::move(text); }
    /// The value of /Q.
    void setQuadding(std::string text) { quadding_ = std::move(text); }

    /// What the root of a tree of fields takes.
    [[nodiscard]] Taken takenByRoot(Value field, ObjectReader& reader) const;
    /// What an annotation takes which the form does not lead to: as much as a root if it is one.
    /// Readers show such fields, too.
    [[nodiscard]] Taken takenByStray(Value annotation, ObjectReader& reader) const;

    /// Appends entries of a field.
    void append(const Taken& taken, ByteBuffer& out) const;

 private:
    std::string appearance_;  // empty where there is none
    std::string quadding_;    // likewise
};

}  // namespace quirebind
