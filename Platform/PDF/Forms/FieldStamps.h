// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "Platform/PDF/Reading/SourceDocument.h"

namespace quirebind {

/// An incremental update (ISO 32000-2, 7.5.6) that turns the fields of a document's form into
/// stamps (12.5.6.12) that look the same, for viewers that draw all annotations but fields. Behind
/// the bytes of the file it makes of them a document that has the same pages:
///
///     file | 7 0 obj << /Subtype /Stamp ... >> endobj | section, /Prev | trailer | startxref
///
/// Its section is of the kind that the file's newest one is, since viewers refuse to go from one
/// kind to the other.
///
/// Empty where there are no fields, and for a file that is read without its cross-reference
/// sections. Fields without an appearance, and those that are no objects of their own, stay what
/// they are. May throw DamagedDocument.
[[nodiscard]] std::string stampsForFields(SourceDocument& document);

}  // namespace quirebind
