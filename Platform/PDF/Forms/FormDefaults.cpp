// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/FormDefaults.h"

namespace quirebind {

FormDefaults::Taken FormDefaults::takenByRoot(Value field, ObjectReader& reader) const {
    Taken taken{.appearance = !appearance_.empty(), .quadding = !quadding_.empty()};
    if (!taken.appearance && !taken.quadding) return taken;
    DictionaryReader entries(field);
    while (const auto entry = entries.next()) {
        if (entry->key.isName("FT") && reader.resolve(entry->value).isName("Sig")) return {};
        if (entry->key.isName("DA") && !reader.isAbsent(entry->value)) taken.appearance = false;
        if (entry->key.isName("Q") && !reader.isAbsent(entry->value)) taken.quadding = false;
    }
    return taken;
}

FormDefaults::Taken FormDefaults::takenByStray(Value annotation, ObjectReader& reader) const {
    if (appearance_.empty() && quadding_.empty()) return {};
    bool isField = false;
    DictionaryReader entries(annotation);
    while (const auto entry = entries.next()) {
        isField = isField || entry->key.isName("FT") || entry->key.isName("Kids");
        // To ask whether the parent is there would read one after the other, again and again.
        if (entry->key.isName("Parent") && !entry->value.isNull()) return {};
    }
    return isField ? takenByRoot(annotation, reader) : Taken();
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
