// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <optional>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Copying/EntryRewriter.h"
#include "Platform/PDF/Copying/MappedText.h"
#include "Platform/PDF/Copying/ObjectCopier.h"
#include "Platform/PDF/Forms/FormChanges.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Writes what is particular to the fields of a form (ISO 32000-2, 12.7.4), and to what else has a
/// default appearance: new names of root fields and of resources, and the defaults that the form
/// had for all its fields. Signatures stay behind: they sign the bytes of another file.
class FieldRewriter {
 public:
    /// Both must outlive this.
    FieldRewriter(ObjectCopier& copier, const FormChanges& changes)
        : copier_(copier),
          reader_(copier.reader()),
          changes_(changes),
          room_(limits::kRenamed, copier.reader().image().storedBytes()) {}

    /// What changes in `annotation`, which is object `number`, or 0 where it is none of its own.
    [[nodiscard]] FormChanges::Field changesOf(std::uint32_t number, Value annotation);

    /// Appends the beginning of `field` up to its first entry, with the entries that it gets.
    void begin(const FormChanges::Field& change, Value field, MappedText& text, ByteBuffer& out);

    /// Rewrites the entry that `entries` gave last if it is one that changes. Says whether it was.
    [[nodiscard]] bool rewriteEntry(FormChanges::Field& change, Value field,
                                    const DictionaryEntry& entry, EntryRewriter& entries);

 private:
    /// What a field's type says of its value.
    enum class Type : std::uint8_t { signature, other };

    [[nodiscard]] bool rename(Value name, EntryRewriter& entries);
    [[nodiscard]] bool rewriteAppearance(Value appearance, EntryRewriter& entries);
    [[nodiscard]] bool holdsSignature(FormChanges::Field& change, Value field);
    [[nodiscard]] bool isSigned(Value field);
    [[nodiscard]] std::optional<Type> inheritedType(Value field);

    ObjectCopier& copier_;
    ObjectReader& reader_;
    const FormChanges& changes_;
    std::map<std::uint32_t, std::optional<Type>> types_;  // that fields have from these parents
    WorkBudget room_;                                     // for names and appearances written anew
};

}  // namespace quirebind
