// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/ElementKid.h"

namespace quirebind {

ElementKid ElementKid::read(Value kid) {
    if (kid.isDictionary()) return read(DictionaryReader(kid));
    ElementKid result;
    if (kid.integer()) {
        result.kind = KidKind::identifier;
        result.identifier = kid;
    }
    return result;
}

ElementKid ElementKid::read(DictionaryReader entries) {
    ElementKid kid;
    Value type;
    Value structureType;
    while (const auto entry = entries.next()) {
        const auto& [key, value] = *entry;
        if (key.isName("Type")) takeLast(type, value);
        if (key.isName("S")) takeLast(structureType, value);
        if (key.isName("Pg")) takeLast(kid.page, value);
        if (key.isName("Obj")) takeLast(kid.object, value);
        if (key.isName("Stm")) takeLast(kid.stream, value);
        if (key.isName("StmOwn")) takeLast(kid.streamOwner, value);
        if (key.isName("MCID")) takeLast(kid.identifier, value);
    }
    const bool hasStructureType = type.isName("StructElem") || !structureType.isNull();
    // A /Type that is an object of its own can be but the one that goes with the other entries.
    const bool hasItsTypeElsewhere = type.reference() && !hasStructureType;
    if (type.isName("OBJR") || (hasItsTypeElsewhere && !kid.object.isNull()))
        kid.kind = KidKind::object;
    else if (type.isName("MCR") || (!hasStructureType && !kid.identifier.isNull()))
        kid.kind = KidKind::markedContent;
    else if (hasStructureType)
        kid.kind = KidKind::element;
    return kid;
}

}  // namespace quirebind
