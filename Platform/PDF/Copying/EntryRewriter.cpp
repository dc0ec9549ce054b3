// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Copying/EntryRewriter.h"

namespace quirebind {

const DictionaryEntry* EntryRewriter::next() {
    while (const auto entry = entries_.next()) {
        entry_ = *entry;
        if (!entry_.value.text().empty()) return &entry_;
        // A last key without a value is as good as absent.
        text_.copyTo(text_.beginOf(entry_.key), Role::plain, out_);
        text_.skipTo(text_.endOf(entry_.key));
    }
    return nullptr;
}

const DictionaryEntry& EntryRewriter::at(std::size_t index) {
    entry_ = entryAt(text_.parts().entries()[index], dictionary_.text());
    return entry_;
}

void EntryRewriter::drop() {
    text_.copyTo(text_.beginOf(entry_.key), Role::plain, out_);
    text_.skipTo(text_.endOf(entry_.value));
}

void EntryRewriter::copyAs(Role role) {
    openValue();
    text_.copyTo(text_.endOf(entry_.value), role, out_);
}

ByteBuffer& EntryRewriter::replace() {
    text_.copyTo(text_.endOf(entry_.key), Role::plain, out_);
    text_.skipTo(text_.endOf(entry_.value));
    out_.append(" ");
    return out_;
}

void EntryRewriter::openValue() {
    text_.copyTo(text_.beginOf(entry_.value), Role::plain, out_);
}

void EntryRewriter::finish() {
    text_.copyTo(text_.endOf(dictionary_), Role::plain, out_);
}

}  // namespace quirebind
