// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Actions/AdditionalActionsRewriter.h"

namespace quirebind {

void AdditionalActionsRewriter::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    EntryRewriter entries(value, text, out);
    while (const auto* const entry = entries.next())
        copier_.copyAs(Role::action, entry->value, text, out);
    entries.finish();
}

}  // namespace quirebind
