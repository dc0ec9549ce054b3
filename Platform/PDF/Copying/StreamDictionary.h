// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Copying/EntryRewriter.h"
#include "Platform/PDF/Copying/MappedText.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Copies a stream's dictionary, up to the end of `text`, with `length` under every /Length that
/// there is; its own may be wrong, or a reference. Of every other entry
/// `rewriteOther(entry, entries)` may say what is done to it. Says whether there was a /Length.
template <typename RewriteOther>
[[nodiscard]] bool appendStreamDictionary(Value dictionary, std::uint64_t length, MappedText& text,
                                          ByteBuffer& out, RewriteOther rewriteOther) {
    bool declared = false;
    EntryRewriter entries(dictionary, text, out);
    while (const auto* const entry = entries.next()) {
        if (entry->key.isName("Length")) {
            entries.replace().append(length);
            declared = true;
        } else {
            rewriteOther(*entry, entries);
        }
    }
    text.copyRest(Role::plain, out);
    return declared;
}

}  // namespace quirebind
