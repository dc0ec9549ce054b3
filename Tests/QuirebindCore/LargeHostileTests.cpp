// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Files of 10 MB that are made to cost as much as they can. A gigabyte of
// address space and a time far beyond what any of them needs are enough to merge each or to refuse
// it as damaged.

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "Tests/QuirebindCore/CoreTestSupport.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/FixtureEncoding.h"
#include "Tests/Support/MemoryLimit.h"

namespace quirebind::coretest {
namespace {

namespace fs = std::filesystem;

// Sanitizers make all of it slower by far, and hold memory that no limit of this kind allows.
constexpr std::size_t kSize = test::kMemoryLimitsWork ? 10'000'000 : 1'000'000;

/// A document that is written object by object.
class Builder {
 public:
    /// Begins with a catalog, which has those entries, and a page tree of one page.
    explicit Builder(const std::string& catalog = "", const std::string& page = "",
                     const std::string& kids = "3 0 R") {
        object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>");
        object(2, "<</Type/Pages/Count 1/Kids[" + kids + "]>>");
        object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]" + page + ">>");
    }

    void object(std::size_t number, std::string_view body) {
        offsets_[number] = text_.size();
        text_.append(std::to_string(number)).append(" 0 obj").append(body).append("\nendobj\n");
    }

    void stream(std::size_t number, const std::string& entries, std::string_view data) {
        object(number, "<<" + entries + "/Length " + std::to_string(data.size()) + ">>stream\n" +
                           std::string(data) + "\nendstream");
    }

    /// Objects from `first` on, until the file is as large as it may be; gives the number behind.
    std::size_t fill(std::size_t first, const std::function<std::string(std::size_t)>& body) {
        constexpr std::size_t kEntry = 20;
        std::size_t number = first;
        while (text_.size() + kEntry * offsets_.size() < kSize) {
            object(number, body(number));
            ++number;
        }
        return number;
    }

    [[nodiscard]] std::size_t size() const { return text_.size(); }

    [[nodiscard]] std::string finished(const std::string& trailer = "") const {
        std::string result = text_;
        const std::size_t start = result.size();
        result += "xref\n0 1\n0000000000 65535 f \n";
        for (const auto& [number, offset] : offsets_) {
            const std::string digits = std::to_string(offset);
            result += std::to_string(number) + " 1\n" + std::string(10 - digits.size(), '0') +
                      digits + " 00000 n \n";
        }
        return result + "trailer<</Root 1 0 R/Size " +
               std::to_string(offsets_.rbegin()->first + 1) + trailer + ">>\nstartxref\n" +
               std::to_string(start) + "\n%%EOF\n";
    }

 private:
    std::string text_ = "%PDF-1.7\n";
    std::map<std::size_t, std::size_t> offsets_;
};

std::string repeated(std::string_view text, std::size_t bytes = kSize) {
    std::string result;
    result.reserve(bytes + text.size());
    while (result.size() < bytes) result += text;
    return result;
}

std::string reference(std::size_t number) {
    return std::to_string(number) + " 0 R ";
}

/// References to the objects from `first` to before `end`.
std::string references(std::size_t first, std::size_t end) {
    std::string result;
    for (std::size_t i = first; i < end; ++i) result += reference(i);
    return result;
}

std::string onePageListedAgainAndAgain() {
    return Builder("", "", repeated("3 0 R ")).finished();
}

std::string nodesThatListTheNextTwice() {
    Builder file("", "", "4 0 R 4 0 R");
    const std::size_t end = file.fill(4, [](std::size_t number) {
        return "<</Type/Pages/Kids[" + reference(number + 1) + reference(number + 1) + "]>>";
    });
    file.object(end, "<</Type/Page/MediaBox[0 0 9 9]>>");
    return file.finished();
}

std::string pagesThatInheritMuch() {
    const std::string font = "/F 5 0 R";
    Builder file("", "", "4 0 R");
    std::string kids;
    constexpr std::size_t kFirst = 10;
    std::size_t end = kFirst;
    for (; file.size() < kSize / 2; ++end) {
        file.object(end, "<</Type/Page/Parent 4 0 R>>");
        kids += reference(end);
    }
    file.object(4, "<</Type/Pages/Count " + std::to_string(end - kFirst) + "/Kids[" + kids +
                       "]/MediaBox[0 0 9 9]/Resources<</Font<<" + repeated(font, kSize / 5) +
                       ">>>>>>");
    file.object(5, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
    return file.finished();
}

std::string openArrays() {
    return Builder("", "/Deep " + repeated("[")).finished();
}

std::string openDictionaries() {
    return Builder("", "/Deep " + repeated("<</A")).finished();
}

std::string nestedArrays() {
    return Builder("", "/Deep" + repeated("[", kSize / 2) + repeated("]", kSize / 2)).finished();
}

std::string openString() {
    return Builder("", "/Open" + repeated("(")).finished();
}

std::string escapes() {
    return Builder("", "/Text(" + repeated("\\000") + ")").finished();
}

std::string manyNames() {
    return Builder("", "/Names[" + repeated("/A") + "]").finished();
}

std::string manyReferencesToNothing() {
    return Builder("", "/Nothing[" + repeated("9 0 R ") + "]").finished();
}

std::string manyObjectsInOneAnother() {
    Builder file("", "/Next 4 0 R");
    static_cast<void>(file.fill(
        4, [](std::size_t number) { return "[" + reference(number + 1) + reference(3) + "]"; }));
    return file.finished();
}

std::string manyTinyObjects() {
    Builder file;
    static_cast<void>(file.fill(4, [](std::size_t) { return " 0"; }));
    return file.finished();
}

std::string chainOfReferences() {
    Builder file("", "/Rotate 4 0 R");
    static_cast<void>(file.fill(4, [](std::size_t number) { return " " + reference(number + 1); }));
    return file.finished();
}

std::string lengthsThatReferOn() {
    Builder file("", "/Contents 4 0 R");
    static_cast<void>(file.fill(4, [](std::size_t number) {
        return "<</Length " + reference(number + 1) + ">>stream\n\nendstream";
    }));
    return file.finished();
}

std::string oneSectionBehindTheOther() {
    std::string text = Builder().finished();
    std::size_t before = text.rfind("xref\n0 1");
    while (text.size() < kSize) {
        const std::size_t start = text.size();
        text += "xref\n0 0\ntrailer<</Root 1 0 R/Size 4/Prev " + std::to_string(before) +
                ">>\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
        before = start;
    }
    return text;
}

std::string subsectionsOfNothing() {
    const std::string text = Builder().finished();
    const std::size_t trailer = text.rfind("trailer");
    return text.substr(0, trailer) + repeated("7 0\n") + text.substr(trailer);
}

/// `file` without its table, so that it is searched: only a search tells what is in the streams of
/// a document that the table does not list.
std::string withoutTable(const Builder& file) {
    const std::string text = file.finished();
    return text.substr(0, text.rfind("xref\n0 1")) + "trailer<</Root 1 0 R>>\n";
}

/// Object streams, each of which inflates to nearly all that one may.
std::string objectStreamsThatInflate() {
    constexpr std::size_t kStreams = 150;
    constexpr std::size_t kInflated = 60'000'000;
    constexpr std::size_t kNumbers = 9;  // "900000 0 " comes before the only member
    std::string plain = "900000 0 [0]";
    plain.resize(kInflated, ' ');
    const std::string packed = test::encodeFlate(plain);
    Builder file("", "/Member 900000 0 R");
    for (std::size_t i = 0; i < kStreams && file.size() < kSize; ++i) {
        file.stream(10 + i, "/Type/ObjStm/Filter/FlateDecode/N 1/First " + std::to_string(kNumbers),
                    packed);
    }
    return withoutTable(file);
}

std::string objectStreamOfManyMembers() {
    constexpr std::size_t kMembers = test::kMemoryLimitsWork ? 1'000'000 : 100'000;
    std::string index;
    for (std::size_t i = 0; i < kMembers; ++i) {
        index += std::to_string(10 + i) + " " + std::to_string(2 * i) + " ";
    }
    const std::string first = std::to_string(index.size());
    Builder file("", "/All[" + references(10, 10 + kSize / 25) + "]");
    file.stream(4,
                "/Type/ObjStm/Filter/FlateDecode/N " + std::to_string(kMembers) + "/First " + first,
                test::encodeFlate(index + repeated("0 ", 2 * kMembers)));
    return withoutTable(file);
}

std::string crossReferenceStreamThatInflates() {
    constexpr std::size_t kInflated = 63'000'000;
    Builder file;
    const std::size_t start = file.size();
    file.stream(4,
                "/Type/XRef/Root 1 0 R/Size 9000000/W[1 4 2]/Index[0 9000000]/Filter/FlateDecode",
                test::encodeFlate(std::string(kInflated, '\1')));
    const std::string text = file.finished();
    return text.substr(0, text.rfind("xref\n0 1")) + "startxref\n" + std::to_string(start) +
           "\n%%EOF\n";
}

std::string highObjectNumbers() {
    std::string text = Builder().finished();
    text.resize(text.rfind("xref\n0 1"));
    for (std::size_t number = 2'147'483'000; text.size() < kSize; number -= 2'000) {
        text += std::to_string(number) + " 0 obj 0 endobj\n";
    }
    return text + "trailer<</Root 1 0 R>>\n";
}

std::string manyFields() {
    Builder file("/AcroForm 4 0 R", "/Annots 5 0 R");
    constexpr std::size_t kFirst = 10;
    std::size_t end = kFirst;
    for (; file.size() < kSize / 2; ++end) {
        file.object(end, "<</Subtype/Widget/FT/Tx/T(a)/Rect[0 0 1 1]/P 3 0 R>>");
    }
    file.object(4, "<</Fields[" + references(kFirst, end) + "]>>");
    file.object(5, "[" + references(kFirst, end) + "]");
    return file.finished();
}

std::string fieldsInOneAnother() {
    Builder file("/AcroForm<</Fields[5 0 R]>>", "/Annots[4 0 R]");
    const std::size_t end = file.fill(5, [](std::size_t number) {
        return "<</T(a)/Parent " + reference(number - 1) + "/Kids[" + reference(number + 1) + "]>>";
    });
    file.object(4, "<</Subtype/Widget/FT/Tx/Rect[0 0 1 1]/Parent " + reference(end - 1) + ">>");
    return file.finished();
}

std::string structureElementsSideBySide() {
    Builder file("/StructTreeRoot 4 0 R/MarkInfo<</Marked true>>", "/StructParents 0");
    constexpr std::size_t kFirst = 10;
    std::size_t end = kFirst;
    for (; file.size() < kSize / 2; ++end) {
        file.object(end, "<</S/P/P 4 0 R/Pg 3 0 R/K " + std::to_string(end - kFirst) + ">>");
    }
    const std::string all = references(kFirst, end);
    file.object(4, "<</Type/StructTreeRoot/K[" + all + "]/ParentTree<</Nums[0[" + all + "]]>>>>");
    return file.finished();
}

std::string structureElementsInOneAnother() {
    Builder file("/StructTreeRoot 4 0 R/MarkInfo<</Marked true>>", "/StructParents 0");
    const std::size_t end = file.fill(5, [](std::size_t number) {
        return "<</S/P/P " + reference(number - 1) + "/K " + reference(number + 1) + ">>";
    });
    file.object(end, "<</S/P/P " + reference(end - 1) + "/Pg 3 0 R/K 0>>");
    file.object(4,
                "<</Type/StructTreeRoot/K 5 0 R/ParentTree<</Nums[0[" + reference(end) + "]]>>>>");
    return file.finished();
}

std::string structureElementsDirectlyInOneAnother() {
    return Builder("/MarkInfo<</Marked true>>/StructTreeRoot<</Type/StructTreeRoot/K" +
                       repeated("<</S/P/K") + "0",
                   "/StructParents 0")
        .finished();
}

std::string manyDestinations() {
    std::string names;
    for (std::size_t i = 0; names.size() < kSize / 2; ++i) {
        names += "(" + std::to_string(1'000'000 + i) + ")[3 0 R/Fit]";
    }
    std::string links;
    for (std::size_t i = 0; links.size() < kSize / 2; ++i) {
        links += "<</Subtype/Link/Rect[0 0 1 1]/Dest(" + std::to_string(1'000'000 + i) + ")>>";
    }
    return Builder("/Names<</Dests<</Names[" + names + "]>>>>", "/Annots[" + links + "]")
        .finished();
}

std::string namesThatLeadBack() {
    Builder file("/Names<</Dests 4 0 R>>", "/Annots[<</Subtype/Link/Rect[0 0 1 1]/Dest(a)>>]");
    file.object(4, "<</Kids[" + repeated("4 0 R 5 0 R ") + "]>>");
    file.object(5, "<</Kids[4 0 R 5 0 R]>>");
    return file.finished();
}

std::string manyLayers() {
    Builder file("/OCProperties 4 0 R", "/Resources<</Properties 5 0 R>>");
    constexpr std::size_t kFirst = 10;
    std::size_t end = kFirst;
    std::string properties;
    for (; file.size() + properties.size() < kSize * 3 / 5; ++end) {
        file.object(end, "<</Type/OCG/Name(a)>>");
        properties += "/L" + std::to_string(end) + " " + reference(end);
    }
    const std::string all = references(kFirst, end);
    file.object(4, "<</OCGs[" + all + "]/D<</Order[" + all + "]/ON[" + all + "]>>>>");
    file.object(5, "<<" + properties + ">>");
    return file.finished();
}

std::string manyAnnotationsOfOneParent() {
    Builder file("", "/Annots 5 0 R");
    constexpr std::size_t kFirst = 10;
    std::size_t end = kFirst;
    for (; file.size() < kSize / 2; ++end) {
        file.object(end,
                    "<</Subtype/Text/Rect[0 0 1 1]/IRT 10 0 R/Popup " + reference(end + 1) + ">>");
    }
    file.object(5, "[" + references(kFirst, end) + "]");
    return file.finished();
}

std::string encryptedWithLargeEntries() {
    return Builder("", "/Strings[" + repeated("<00>", kSize / 2) + "]")
        .finished("/ID[<00><00>]/Encrypt<</Filter/Standard/V 5/R 6/Length 256/P -1/O(" +
                  repeated("o", kSize / 10) + ")/U(" + repeated("u", kSize / 10) + ")/OE(" +
                  repeated("o", 32) + ")/UE(" + repeated("u", 32) + ")>>");
}

struct Shape {
    std::string_view name;
    std::string (*text)();
};

class LargeHostile : public ::testing::TestWithParam<Shape> {};

TEST_P(LargeHostile, isMergedOrRefused) {
    constexpr rlim_t kAddressSpace = rlim_t{1} << 30U;
    constexpr rlim_t kSeconds = 100;  // of CPU: a hundred times what most of them need
    const TemporaryFolder folder;
    folder.write("hostile.pdf", GetParam().text());
    const std::string good = addPages(folder, "good", 1);
    const int result = inChildProcess([&] {
        if (test::kMemoryLimitsWork) test::limit(RLIMIT_AS, kAddressSpace);
        test::limit(RLIMIT_CPU, kSeconds);
        const auto failure = failureOfMerging({good, folder / "hostile.pdf"}, folder / "out.pdf");
        if (!failure) return 0;
        const bool isRefusal = failure->kind() == Kind::invalid || failure->kind() == Kind::locked;
        return isRefusal && failure->name() == "hostile.pdf" ? 1 : 2;
    });
    EXPECT_THAT(result, ::testing::AnyOf(0, 1));
    EXPECT_EQ(fs::exists(folder / "out.pdf"), result == 0);
}

constexpr Shape kShapes[] = {
    {"onePageListedAgainAndAgain", onePageListedAgainAndAgain},
    {"nodesThatListTheNextTwice", nodesThatListTheNextTwice},
    {"pagesThatInheritMuch", pagesThatInheritMuch},
    {"openArrays", openArrays},
    {"openDictionaries", openDictionaries},
    {"nestedArrays", nestedArrays},
    {"openString", openString},
    {"escapes", escapes},
    {"manyNames", manyNames},
    {"manyReferencesToNothing", manyReferencesToNothing},
    {"manyObjectsInOneAnother", manyObjectsInOneAnother},
    {"manyTinyObjects", manyTinyObjects},
    {"chainOfReferences", chainOfReferences},
    {"lengthsThatReferOn", lengthsThatReferOn},
    {"oneSectionBehindTheOther", oneSectionBehindTheOther},
    {"subsectionsOfNothing", subsectionsOfNothing},
    {"objectStreamsThatInflate", objectStreamsThatInflate},
    {"objectStreamOfManyMembers", objectStreamOfManyMembers},
    {"crossReferenceStreamThatInflates", crossReferenceStreamThatInflates},
    {"highObjectNumbers", highObjectNumbers},
    {"manyFields", manyFields},
    {"fieldsInOneAnother", fieldsInOneAnother},
    {"structureElementsSideBySide", structureElementsSideBySide},
    {"structureElementsInOneAnother", structureElementsInOneAnother},
    {"structureElementsDirectlyInOneAnother", structureElementsDirectlyInOneAnother},
    {"manyDestinations", manyDestinations},
    {"namesThatLeadBack", namesThatLeadBack},
    {"manyLayers", manyLayers},
    {"manyAnnotationsOfOneParent", manyAnnotationsOfOneParent},
    {"encryptedWithLargeEntries", encryptedWithLargeEntries},
};

INSTANTIATE_TEST_SUITE_P(Of, LargeHostile, ::testing::ValuesIn(kShapes),
                         [](const auto& shape) { return std::string(shape.param.name); });

}  // namespace
}  // namespace quirebind::coretest
