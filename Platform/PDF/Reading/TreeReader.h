// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string_view>

#include "Platform/PDF/Reading/ObjectReader.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// What is called with a key and its value, as they are written in the tree. Nothing that it was
/// given is valid after it returns. False ends the visit.
using TreeVisit = std::function<bool(Value key, Value value)>;

/// Visits all entries of a name tree (`pairs` is "Names") or a number tree ("Nums"), in the order
/// in which they stand (ISO 32000-2, 7.9.6 and 7.9.7):
///
///     root      << /Kids [node node ...] >>   or   << /Nums [key value key value ...] >>
///     node      << /Limits [least greatest] /Kids [...] >>   or   << /Limits [...] /Nums [...] >>
///
/// /Limits are not asked, since files get them wrong. Each node that is an object is visited once.
/// A node that cannot be read is passed over: what uses these trees does without an entry.
void visitTree(ObjectReader& reader, Value root, std::string_view pairs, const TreeVisit& visit);

}  // namespace quirebind
