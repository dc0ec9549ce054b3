// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Platform/PDF/Forms/FormTestSupport.h"

#include <ostream>
#include <regex>
#include <stdexcept>

#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {
namespace {

/// The texts that the first group of `pattern` matches.
std::vector<std::string> matches(const std::string& text, const std::string& pattern) {
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator i(text.begin(), text.end(), expression), end; i != end; ++i)
        found.push_back(i->str(1));
    return found;
}

}  // namespace

std::string formDocument(std::string_view form, std::string_view annotations,
                         std::string_view objects) {
    const std::string page = replaced(onePageWith(objects), "/MediaBox",
                                      "/Annots " + std::string(annotations) + " /MediaBox");
    return replaced(page, "/Pages 2 0 R", "/Pages 2 0 R /AcroForm " + std::string(form));
}

std::string textField(int number, std::string_view name, std::string_view value,
                      std::string_view more) {
    return object(number, "<< /Type /Annot /Subtype /Widget /FT /Tx /P 3 0 R /Rect [10 " +
                              std::to_string(10 * number) + " 90 " +
                              std::to_string(10 * number + 9) + "] /T (" + std::string(name) +
                              ") /V (" + std::string(value) + ") " + std::string(more) + " >>");
}

std::string oneField(std::string_view name, std::string_view value) {
    return formDocument("<< /Fields [6 0 R] >>", "[6 0 R]", textField(6, name, value));
}

void PrintTo(const Field& field, std::ostream* out) {
    *out << field.name << " " << field.type << " = " << field.value;
}

/// Of a field qpdf prints a key on each line, in alphabetical order, and strings as "u:text".
std::vector<Field> fieldsOf(const std::string& path) {
    const std::string json = runOrFail({"qpdf", "--json=2", "--json-key=acroform", path});
    const std::vector<std::string> names = matches(json, R"re("fullname": "(.*)")re");
    const std::vector<std::string> types = matches(json, R"re("fieldtype": "(.*)")re");
    const std::vector<std::string> values = matches(json, R"re("value": (?:null|"(?:u:)?(.*)"))re");
    std::vector<Field> fields;
    fields.reserve(names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        fields.push_back({names[i], types.at(i), values.at(i)});
    return fields;
}

std::string formOf(const std::string& path) {
    const auto root = matches(test::objectText(path, "trailer"), "/Root ([0-9]+) 0 R");
    const auto form = matches(test::objectText(path, root.at(0)), "/AcroForm ([0-9]+) 0 R");
    return form.empty() ? "" : test::objectText(path, form.front());
}

std::vector<std::string> rootsOf(const std::string& path) {
    const auto fields = matches(formOf(path), R"(/Fields \[ ([0-9R ]*)\])");
    std::vector<std::string> roots;
    for (const std::string& number : matches(fields.at(0), "([0-9]+) 0 R"))
        roots.push_back(test::objectText(path, number));
    return roots;
}

std::string objectTextWith(const std::string& path, std::string_view part) {
    for (const std::string& number : objectsOf(path)) {
        std::string text = test::objectText(path, number);
        if (text.find(part) != std::string::npos) return text;
    }
    throw std::runtime_error("no object with " + std::string(part));
}

}  // namespace quirebind::pdftest
