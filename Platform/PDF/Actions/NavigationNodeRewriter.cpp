// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Actions/NavigationNodeRewriter.h"

namespace quirebind {

void NavigationNodeRewriter::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    EntryRewriter entries(value, text, out);
    while (const auto* const entry = entries.next()) {
        if (entry->key.isName("NA") || entry->key.isName("PA"))
            copier_.copyAs(Role::action, entry->value, text, out);
        else if (entry->key.isName("Next") || entry->key.isName("Prev"))
            entries.copyAs(Role::navigationNode);
    }
    entries.finish();
}

}  // namespace quirebind
