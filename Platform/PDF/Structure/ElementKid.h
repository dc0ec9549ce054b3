// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// What may stand under /K of a structure element (ISO 32000-2, 14.7.2 and 14.7.5).
enum class KidKind : std::uint8_t {
    element,        ///< << /S /P /P ... >>
    identifier,     ///< An integer: marked content of the element's page.
    markedContent,  ///< << /Type /MCR /Pg page /MCID integer /Stm form >>
    object,         ///< << /Type /OBJR /Pg page /Obj annotation-or-form >>
    none,           ///< Nothing that may stand there.
};

/// What stands there, read once. The values are parts of its text; those that it does not have are
/// absent.
struct ElementKid {
    KidKind kind = KidKind::none;
    Value page;         ///< /Pg
    Value object;       ///< /Obj
    Value stream;       ///< /Stm
    Value streamOwner;  ///< /StmOwn
    Value identifier;   ///< /MCID, or the integer that it is.

    /// Of `kid`, which is no reference, also where it lacks its /Type. Of an element no more than
    /// that it is one.
    [[nodiscard]] static ElementKid read(Value kid);
    /// The same of a dictionary with these entries.
    [[nodiscard]] static ElementKid read(DictionaryReader entries);
};

}  // namespace quirebind
