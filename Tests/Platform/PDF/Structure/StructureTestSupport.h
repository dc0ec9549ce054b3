// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Tests/Platform/PDF/DocumentTestSupport.h"

/// Tagged documents for tests, and what other readers see of their structure.
namespace quirebind::pdftest {

/// A document of one page, object 3, which shows the text "one" as marked content 0 and has the key
/// 0 in the parent tree. The root of its structure is object 40. `root` and `catalog` are entries
/// of these two, `objects` further objects.
[[nodiscard]] std::string taggedPage(std::string_view root, std::string_view objects,
                                     std::string_view catalog = "");

/// An object of a fixture: a structure element with those entries.
[[nodiscard]] std::string element(int number, std::string_view entries);

/// Another page, object `number`, whose text is marked content 0; its content is the next object.
[[nodiscard]] std::string markedPage(int number, std::string_view text, int key);

/// Such a document with one paragraph below the root, with further entries of that, and of the
/// root.
[[nodiscard]] std::string paragraph(std::string_view entries = "", std::string_view root = "",
                                    std::string_view catalog = "", std::string_view objects = "");

/// The structure tree with its texts, by pdfinfo.
[[nodiscard]] std::string structureOf(const std::string& path);

/// qpdf's texts of the catalog, of the structure's root, and of what an entry in a text refers to.
[[nodiscard]] std::string catalogOf(const std::string& path);
[[nodiscard]] std::string rootOf(const std::string& path);
[[nodiscard]] std::string follow(const std::string& path, const std::string& text,
                                 const std::string& entry);

/// The number of the only object whose text, by qpdf, contains that; and all such numbers. The
/// first throws std::runtime_error where there is none, or more than one.
[[nodiscard]] std::string objectWith(const std::string& path, std::string_view part);
[[nodiscard]] std::vector<std::string> objectsWith(const std::string& path, std::string_view part);

/// Inserts these pages of a document, counting from 0, into an empty one; gives the path of the
/// result.
[[nodiscard]] std::string insertPages(const Bench& bench, const std::string& source,
                                      const std::vector<std::size_t>& pages);

}  // namespace quirebind::pdftest
