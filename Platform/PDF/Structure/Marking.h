// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "Platform/Files/ByteBuffer.h"
#include "Platform/PDF/Reading/Catalog.h"
#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// What a catalog says of all content: how far it is tagged (ISO 32000-2, 14.7.1, table 353), and
/// in which language it is.
struct Marking {
    bool isMarked = false;
    bool hasUserProperties = false;
    bool isSuspect = false;
    std::string language;  ///< The bytes of /Lang; empty where it is unknown.
};

/// What is damaged is not said. Throws DamagedDocument only where the document is exhausted.
[[nodiscard]] Marking readMarking(const Catalog& catalog, ObjectReader& reader);

/// Joins what the sources say: the output is marked, or in one language, where all of them are.
class MarkingWriter {
 public:
    /// What the next source says.
    void add(const Marking& marking);

    /// Appends the entries of the catalog.
    void append(ByteBuffer& out) const;

 private:
    Marking joined_;
    bool isEmpty_ = true;
};

}  // namespace quirebind
