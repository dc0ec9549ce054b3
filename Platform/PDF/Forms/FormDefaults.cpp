// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/FormDefaults.h"

namespace quirebind {

FormDefaults::Taken FormDefaults::takenByRoot(Value field, ObjectReader& reader) const {
    Taken taken{.appearance = !appearance_.empty(), .quadding = !quadding_.empty()};
    if (!taken.appearance && !taken.quadding) return taken;
    Value type;
    Value appearance;
    Value quadding;
    DictionaryReader entries(field);
    while (const auto entry = entries.next()) {
        if (entry->key.isName("FT")) takeLast(type, entry->value);
        if (entry->key.isName("DA")) takeLast(appearance, entry->value);
        if (entry->key.isName("Q")) takeLast(quadding, entry->value);
    }
    if (reader.resolve(type).isName("Sig")) return {};
    taken.appearance = taken.appearance && reader.isAbsent(appearance);
    taken.quadding = taken.quadding && reader.isAbsent(quadding);
    return taken;
}

FormDefaults::Taken FormDefaults::takenByStray(Value annotation, ObjectReader& reader) const {
    if (appearance_.empty() && quadding_.empty()) return {};
    bool isField = false;
    Value parent;
    DictionaryReader entries(annotation);
    while (const auto entry = entries.next()) {
        isField = isField || entry->key.isName("FT") || entry->key.isName("Kids");
        if (entry->key.isName("Parent")) takeLast(parent, entry->value);
    }
    // To ask whether the parent is there would read one after the other, again and again.
    return isField && parent.isNull() ? takenByRoot(annotation, reader) : Taken();
}

void FormDefaults::append(const Taken& taken, ByteBuffer& out) const {
    if (taken.appearance) {
        out.append("/DA");
        out.append(appearance_);
    }
    if (taken.quadding) {
        out.append("/Q ");
        out.append(quadding_);
    }
}

}  // namespace quirebind
