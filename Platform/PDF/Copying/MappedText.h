// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Copying/ReferenceMap.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Copies the text of one object piece by piece, from front to back, with the references in it
/// mapped. A view of the text and of what was found in it; use it while both live.
class MappedText {
 public:
    /// `object` is the number in the source of what the text is all of; 0 where it is none.
    MappedText(std::string_view text, const FoundParts& parts, ReferenceMap& map,
               std::uint32_t object = 0)
        : text_(text), parts_(parts), references_(parts.references()), map_(map), object_(object) {}

    /// What a scan of the text has found.
    [[nodiscard]] const FoundParts& parts() const { return parts_; }
    /// The entries of `dictionary`, a part of this text or all of it: then nothing is read again.
    [[nodiscard]] DictionaryReader entriesOf(Value dictionary) const {
        const bool isAll =
            dictionary.text().data() == text_.data() && dictionary.text().size() == text_.size();
        return isAll ? DictionaryReader(dictionary, parts_) : DictionaryReader(dictionary);
    }

    /// Appends everything up to `end` (an offset in the text). What it refers to gets `role`.
    void copyTo(std::size_t end, Role role, ByteBuffer& out);
    /// Appends the rest.
    void copyRest(Role role, ByteBuffer& out) { copyTo(text_.size(), role, out); }
    /// Leaves out everything up to `end`.
    void skipTo(std::size_t end);

    /// Where `part`, a value in this text, begins in it.
    [[nodiscard]] std::size_t beginOf(Value part) const;
    /// The offset behind its last byte.
    [[nodiscard]] std::size_t endOf(Value part) const { return beginOf(part) + part.text().size(); }

    /// The number of the object that `part` is; 0 where it is only part of one.
    [[nodiscard]] std::uint32_t objectOf(Value part) const {
        return beginOf(part) == 0 ? object_ : 0;
    }

 private:
    std::string_view text_;
    const FoundParts& parts_;
    std::span<const FoundReference> references_;
    ReferenceMap& map_;
    std::uint32_t object_;
    std::size_t at_ = 0;
    std::size_t next_ = 0;  // the first reference at or behind at_
};

}  // namespace quirebind
