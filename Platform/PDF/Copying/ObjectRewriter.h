// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Copying/MappedText.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Writes what the values of one role become.
class ObjectRewriter {
 public:
    ObjectRewriter() = default;
    ObjectRewriter(const ObjectRewriter&) = delete;
    ObjectRewriter& operator=(const ObjectRewriter&) = delete;
    ObjectRewriter(ObjectRewriter&&) = delete;
    ObjectRewriter& operator=(ObjectRewriter&&) = delete;
    virtual ~ObjectRewriter() = default;

    /// Appends what `value` becomes. It is an object, or part of one, and no reference; it is part
    /// of `text`, which is copied up to its beginning, and is to be copied up to its end. Throws
    /// DamagedDocument where the source is damaged.
    virtual void rewrite(Value value, MappedText& text, ByteBuffer& out) = 0;

    /// The text of the object that `stream` becomes; nothing where it is copied as it is. Throws
    /// likewise.
    [[nodiscard]] virtual std::optional<std::string> replaceStream(const SourceObject& /*stream*/) {
        return std::nullopt;
    }
};

}  // namespace quirebind
