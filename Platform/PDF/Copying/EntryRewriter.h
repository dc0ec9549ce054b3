// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Copying/MappedText.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Copies a dictionary entry by entry. What is done to the entry that `next` or `at` gave last is
/// said by at most one call of `drop`, `copyAs`, `replace` or `openValue`; an entry for which there
/// is none goes over as it is, with everything between, in bulk. `finish` copies the rest.
class EntryRewriter {
 public:
    /// `dictionary` is part of `text`, of which nothing behind its beginning has been copied yet.
    EntryRewriter(Value dictionary, MappedText& text, ByteBuffer& out)
        : dictionary_(dictionary), entries_(text.entriesOf(dictionary)), text_(text), out_(out) {}

    /// The next entry, valid until the next call; null at the end.
    [[nodiscard]] const DictionaryEntry* next();

    /// Entry `index` of a dictionary that is all of the text, behind the one before; valid until
    /// the next call.
    [[nodiscard]] const DictionaryEntry& at(std::size_t index);

    /// Leaves the entry out.
    void drop();
    /// Copies the entry; what its value refers to gets `role`.
    void copyAs(Role role);
    /// Copies the key; the caller appends another value to what is returned.
    [[nodiscard]] ByteBuffer& replace();
    /// Copies the key; the caller copies the value, all of it, from the text.
    void openValue();

    /// Copies what is left, up to the end of the dictionary.
    void finish();

 private:
    Value dictionary_;
    DictionaryReader entries_;
    DictionaryEntry entry_;
    MappedText& text_;
    ByteBuffer& out_;
};

}  // namespace quirebind
