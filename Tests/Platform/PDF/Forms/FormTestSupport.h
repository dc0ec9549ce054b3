// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "Tests/Platform/PDF/DocumentTestSupport.h"

/// Documents with forms, and what qpdf says of the forms of others.
namespace quirebind::pdftest {

/// The one page of kOnePage with these annotations, in a document with that form: a fixture's text.
/// `objects` are further ones, from 6 on.
[[nodiscard]] std::string formDocument(std::string_view form, std::string_view annotations,
                                       std::string_view objects);

/// A text field and its widget in one, on the page of kOnePage.
[[nodiscard]] std::string textField(int number, std::string_view name, std::string_view value,
                                    std::string_view more = "");

/// A document with one text field, object 6.
[[nodiscard]] std::string oneField(std::string_view name, std::string_view value);

/// A field as its widget shows it. A field that has several widgets comes once for each.
struct Field {
    std::string name;  ///< Fully qualified.
    std::string type;
    std::string value;  ///< Empty where there is none.

    friend bool operator==(const Field&, const Field&) = default;
};
void PrintTo(const Field& field, std::ostream* out);  // NOLINT(readability-identifier-naming)

/// The fields of all widgets that the file's form leads to, in the order of pages.
[[nodiscard]] std::vector<Field> fieldsOf(const std::string& path);

/// The file's form dictionary by qpdf; empty where there is none.
[[nodiscard]] std::string formOf(const std::string& path);

/// The file's form dictionary with what it refers to: the root fields, one line each.
/// The text of the first object that has this in it.
[[nodiscard]] std::string objectTextWith(const std::string& path, std::string_view part);

[[nodiscard]] std::vector<std::string> rootsOf(const std::string& path);

}  // namespace quirebind::pdftest
