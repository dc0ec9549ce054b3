// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Platform/PDF/Structure/StructureTestSupport.h"

#include <regex>
#include <stdexcept>
#include <utility>

#include "Platform/PDF/PDFDocument.h"
#include "Tests/Support/Oracle.h"

namespace quirebind::pdftest {

std::string taggedPage(std::string_view root, std::string_view objects, std::string_view catalog) {
    std::string text = onePageWith("{{object 40 0}}\n<< /Type /StructTreeRoot " +
                                   std::string(root) + " >>\nendobj\n" + std::string(objects));
    text = replaced(text, "BT /F1", "/P << /MCID 0 >> BDC BT /F1");
    text = replaced(text, "Tj ET", "Tj ET EMC");
    text = replaced(text, "/MediaBox", "/StructParents 0 /MediaBox");
    return replaced(text, "/Type /Catalog",
                    "/Type /Catalog /StructTreeRoot 40 0 R " + std::string(catalog));
}

std::string element(int number, std::string_view entries) {
    return "{{object " + std::to_string(number) + " 0}}\n<< /Type /StructElem " +
           std::string(entries) + " >>\nendobj\n";
}

std::string markedPage(int number, std::string_view text, int key) {
    const std::string page =
        pageObjects(number, 200, text, "/StructParents " + std::to_string(key));
    return replaced(replaced(page, "BT /F1", "/P << /MCID 0 >> BDC BT /F1"), "Tj ET", "Tj ET EMC");
}

std::string paragraph(std::string_view entries, std::string_view root, std::string_view catalog,
                      std::string_view objects) {
    return taggedPage("/K 41 0 R /ParentTree << /Nums [0 [41 0 R]] >> " + std::string(root),
                      element(41, "/S /P /P 40 0 R /Pg 3 0 R /K 0 " + std::string(entries)) +
                          std::string(objects),
                      catalog);
}

std::string structureOf(const std::string& path) {
    return runOrFail({"pdfinfo", "-struct-text", path});
}

std::string follow(const std::string& path, const std::string& text, const std::string& entry) {
    std::smatch match;
    if (!std::regex_search(text, match, std::regex(entry + " ([0-9]+) 0 R")))
        throw std::runtime_error("no " + entry + " in " + text);
    return test::objectText(path, match.str(1));
}

std::string catalogOf(const std::string& path) {
    return follow(path, test::objectText(path, "trailer"), "/Root");
}

std::string rootOf(const std::string& path) {
    return follow(path, catalogOf(path), "/StructTreeRoot");
}

std::vector<std::string> objectsWith(const std::string& path, std::string_view part) {
    std::vector<std::string> found;
    for (const std::string& number : objectsOf(path))
        if (test::objectText(path, number).find(part) != std::string::npos) found.push_back(number);
    return found;
}

std::string objectWith(const std::string& path, std::string_view part) {
    const std::vector<std::string> found = objectsWith(path, part);
    if (found.size() != 1)
        throw std::runtime_error(std::to_string(found.size()) + " objects with " +
                                 std::string(part));
    return found.front();
}

std::string insertPages(const Bench& bench, const std::string& source,
                        const std::vector<std::size_t>& pages) {
    const auto document = PDFDocument::open(URL::file(source));
    if (!document) throw std::runtime_error("cannot open " + source);
    PDFDocument output;
    for (const std::size_t index : pages) {
        const auto page = document->pageAtIndex(index);
        if (!page || !output.insertPage(*page, output.pageCount()))
            throw std::runtime_error("a page cannot be inserted");
    }
    const auto data = std::move(output).dataRepresentation();
    if (!data) throw std::runtime_error("the document cannot be serialised");
    return bench.add("pages.pdf", data->text());
}

}  // namespace quirebind::pdftest
