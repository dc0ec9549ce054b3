// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Files of 10 MB that are made to cost as much as they can. A gigabyte of
// address space and a time far beyond what any of them needs are enough to merge each or to refuse
// it as damaged.

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "Tests/QuirebindCore/CoreTestSupport.h"
#include "Tests/QuirebindCore/WrittenDocument.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/FixtureEncoding.h"
#include "Tests/Support/MemoryLimit.h"

namespace quirebind::coretest {
namespace {

namespace fs = std::filesystem;

// Sanitizers make all of it slower by far, and hold memory that no limit of this kind allows.
constexpr std::size_t kSize = test::kMemoryLimitsWork ? 10'000'000 : 1'000'000;

std::string onePageListedAgainAndAgain() {
    return WrittenDocument("", "", repeated("3 0 R ", kSize)).finished();
}

std::string nodesThatListTheNextTwice() {
    WrittenDocument file("", "", "4 0 R 4 0 R");
    const std::size_t end = file.fill(4, kSize, [](std::size_t number) {
        return "<</Type/Pages/Kids[" + reference(number + 1) + reference(number + 1) + "]>>";
    });
    file.object(end, "<</Type/Page/MediaBox[0 0 9 9]>>");
    return file.finished();
}

std::string pagesThatInheritMuch() {
    const std::string font = "/F 5 0 R";
    WrittenDocument file("", "", "4 0 R");
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
    return WrittenDocument("", "/Deep " + repeated("[", kSize)).finished();
}

std::string openDictionaries() {
    return WrittenDocument("", "/Deep " + repeated("<</A", kSize)).finished();
}

std::string nestedArrays() {
    return WrittenDocument("", "/Deep" + repeated("[", kSize / 2) + repeated("]", kSize / 2))
        .finished();
}

std::string openString() {
    return WrittenDocument("", "/Open" + repeated("(", kSize)).finished();
}

std::string escapes() {
    return WrittenDocument("", "/Text(" + repeated("\\000", kSize) + ")").finished();
}

std::string manyNames() {
    return WrittenDocument("", "/Names[" + repeated("/A", kSize) + "]").finished();
}

std::string manyReferencesToNothing() {
    return WrittenDocument("", "/Nothing[" + repeated("9 0 R ", kSize) + "]").finished();
}

std::string manyObjectsInOneAnother() {
    WrittenDocument file("", "/Next 4 0 R");
    static_cast<void>(file.fill(4, kSize, [](std::size_t number) {
        return "[" + reference(number + 1) + reference(3) + "]";
    }));
    return file.finished();
}

std::string manyTinyObjects() {
    WrittenDocument file;
    static_cast<void>(file.fill(4, kSize, [](std::size_t) { return " 0"; }));
    return file.finished();
}

std::string chainOfReferences() {
    WrittenDocument file("", "/Rotate 4 0 R");
    static_cast<void>(
        file.fill(4, kSize, [](std::size_t number) { return " " + reference(number + 1); }));
    return file.finished();
}

std::string lengthsThatReferOn() {
    WrittenDocument file("", "/Contents 4 0 R");
    static_cast<void>(file.fill(4, kSize, [](std::size_t number) {
        return "<</Length " + reference(number + 1) + ">>stream\n\nendstream";
    }));
    return file.finished();
}

std::string oneSectionBehindTheOther() {
    std::string text = WrittenDocument().finished();
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
    const std::string text = WrittenDocument().finished();
    const std::size_t trailer = text.rfind("trailer");
    return text.substr(0, trailer) + repeated("7 0\n", kSize) + text.substr(trailer);
}

/// `file` without its table, so that it is searched: only a search tells what is in the streams of
/// a document that the table does not list.
std::string withoutTable(const WrittenDocument& file) {
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
    WrittenDocument file("", "/Member 900000 0 R");
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
    WrittenDocument file("", "/All[" + references(10, 10 + kSize / 25) + "]");
    file.stream(4,
                "/Type/ObjStm/Filter/FlateDecode/N " + std::to_string(kMembers) + "/First " + first,
                test::encodeFlate(index + repeated("0 ", 2 * kMembers)));
    return withoutTable(file);
}

std::string crossReferenceStreamThatInflates() {
    constexpr std::size_t kInflated = 63'000'000;
    WrittenDocument file;
    const std::size_t start = file.size();
    file.stream(4,
                "/Type/XRef/Root 1 0 R/Size 9000000/W[1 4 2]/Index[0 9000000]/Filter/FlateDecode",
                test::encodeFlate(std::string(kInflated, '\1')));
    const std::string text = file.finished();
    return text.substr(0, text.rfind("xref\n0 1")) + "startxref\n" + std::to_string(start) +
           "\n%%EOF\n";
}

std::string highObjectNumbers() {
    std::string text = WrittenDocument().finished();
    text.resize(text.rfind("xref\n0 1"));
    for (std::size_t number = 2'147'483'000; text.size() < kSize; number -= 2'000) {
        text += std::to_string(number) + " 0 obj 0 endobj\n";
    }
    return text + "trailer<</Root 1 0 R>>\n";
}

std::string manyFields() {
    WrittenDocument file("/AcroForm 4 0 R", "/Annots 5 0 R");
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
    WrittenDocument file("/AcroForm<</Fields[5 0 R]>>", "/Annots[4 0 R]");
    const std::size_t end = file.fill(5, kSize, [](std::size_t number) {
        return "<</T(a)/Parent " + reference(number - 1) + "/Kids[" + reference(number + 1) + "]>>";
    });
    file.object(4, "<</Subtype/Widget/FT/Tx/Rect[0 0 1 1]/Parent " + reference(end - 1) + ">>");
    return file.finished();
}

std::string structureElementsSideBySide() {
    WrittenDocument file("/StructTreeRoot 4 0 R/MarkInfo<</Marked true>>", "/StructParents 0");
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
    WrittenDocument file("/StructTreeRoot 4 0 R/MarkInfo<</Marked true>>", "/StructParents 0");
    const std::size_t end = file.fill(5, kSize, [](std::size_t number) {
        return "<</S/P/P " + reference(number - 1) + "/K " + reference(number + 1) + ">>";
    });
    file.object(end, "<</S/P/P " + reference(end - 1) + "/Pg 3 0 R/K 0>>");
    file.object(4,
                "<</Type/StructTreeRoot/K 5 0 R/ParentTree<</Nums[0[" + reference(end) + "]]>>>>");
    return file.finished();
}

std::string structureElementsDirectlyInOneAnother() {
    return WrittenDocument("/MarkInfo<</Marked true>>/StructTreeRoot<</Type/StructTreeRoot/K" +
                               repeated("<</S/P/K", kSize) + "0",
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
    return WrittenDocument("/Names<</Dests<</Names[" + names + "]>>>>", "/Annots[" + links + "]")
        .finished();
}

std::string namesThatLeadBack() {
    WrittenDocument file("/Names<</Dests 4 0 R>>",
                         "/Annots[<</Subtype/Link/Rect[0 0 1 1]/Dest(a)>>]");
    file.object(4, "<</Kids[" + repeated("4 0 R 5 0 R ", kSize) + "]>>");
    file.object(5, "<</Kids[4 0 R 5 0 R]>>");
    return file.finished();
}

std::string manyLayers() {
    WrittenDocument file("/OCProperties 4 0 R", "/Resources<</Properties 5 0 R>>");
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
    WrittenDocument file("", "/Annots 5 0 R");
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
    return WrittenDocument("", "/Strings[" + repeated("<00>", kSize / 2) + "]")
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
