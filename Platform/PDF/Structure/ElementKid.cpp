// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Structure/ElementKid.h"

namespace quirebind {
namespace {

/// Of repeated keys the first counts.
void takeFirst(Value& taken, Value value) {
    if (taken.text().empty()) taken = value;
}

}  // namespace

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
    bool hasStructureType = false;
    while (const auto entry = entries.next()) {
        const auto& [key, value] = *entry;
        if (key.isName("Type")) {
            takeFirst(type, value);
            if (!type.isName("StructElem")) continue;
            kid.kind = KidKind::element;
            return kid;
        }
        if (key.isName("S")) hasStructureType = hasStructureType || !value.isNull();
        if (key.isName("Pg")) takeFirst(kid.page, value);
        if (key.isName("Obj")) takeFirst(kid.object, value);
        if (key.isName("Stm")) takeFirst(kid.stream, value);
        if (key.isName("StmOwn")) takeFirst(kid.streamOwner, value);
        if (key.isName("MCID")) takeFirst(kid.identifier, value);
    }
    if (type.isName("OBJR"))
        kid.kind = KidKind::object;
    else if (type.isName("MCR") || (!hasStructureType && !kid.identifier.isNull()))
        kid.kind = KidKind::markedContent;
    else if (hasStructureType)
        kid.kind = KidKind::element;
    return kid;
}

}  // namespace quirebind
