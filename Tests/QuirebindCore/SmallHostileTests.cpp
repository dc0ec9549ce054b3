// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Files of at most a few hundred kilobytes in which many say the same long thing, or which pack
// much into little. What comes of one has to stay in proportion, and so has the memory for it.

#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "Tests/QuirebindCore/CoreTestSupport.h"
#include "Tests/QuirebindCore/WrittenDocument.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/MemoryLimit.h"

namespace quirebind::coretest {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMany = 1500;
constexpr std::size_t kLong = 100'000;
constexpr std::size_t kMuch = 60'000'000;

std::string longName() {
    return "/" + std::string(kLong, 'A');
}

/// `entry` with its number sign replaced by each number below kMany.
std::string entries(const std::string& entry) {
    std::string result;
    for (std::size_t i = 0; i < kMany; ++i) {
        std::string each = entry;
        for (std::size_t at = 0; (at = each.find('#', at)) != std::string::npos;)
            each.replace(at, 1, std::to_string(i));
        result += each;
    }
    return result;
}

WrittenDocument withLayers(const std::string& page, const std::string& configuration,
                           const std::string& groups = "4 0 R") {
    return WrittenDocument("/OCProperties<</OCGs[" + groups + "]/D<<" + configuration + ">>>>",
                           "/Resources<</Properties" + page + ">>");
}

std::string eventOfManyUsages() {
    WrittenDocument file = withLayers("<</a 4 0 R>>", "/AS[" + repeated("6 0 R ", 6 * kMany) + "]");
    file.object(4, "<</Type/OCG/Name(a)>>");
    file.object(5, longName());
    file.object(6, "<</Event 5 0 R/OCGs[4 0 R]/Category[/View]>>");
    return file.finished();
}

std::string categoriesOfAUsage() {
    WrittenDocument file = withLayers("<</a 4 0 R>>", "/AS[6 0 R]");
    file.object(4, "<</Type/OCG/Name(a)>>");
    file.object(5, longName());
    file.object(6, "<</Event/View/OCGs[4 0 R]/Category[" + repeated("5 0 R ", 6 * kMany) + "]>>");
    return file.finished();
}

std::string intentOfManyLayers() {
    constexpr std::size_t kFirst = 11;
    const std::string groups = references(kFirst, kFirst + kMany);
    std::string names;
    for (std::size_t i = kFirst; i < kFirst + kMany; ++i)
        names += "/a" + std::to_string(i) + " " + reference(i);
    WrittenDocument file = withLayers("<<" + names + ">>", "/OFF[" + groups + "]", groups);
    file.object(5, longName());
    for (std::size_t i = kFirst; i < kFirst + kMany; ++i)
        file.object(i, "<</Type/OCG/Name(a)/Intent 5 0 R>>");
    return file.finished();
}

/// A structure tree of many elements that have `element`; its root has `root`.
std::string withElements(const std::string& element, const std::string& root,
                         const std::string& shared) {
    constexpr std::size_t kFirst = 11;
    WrittenDocument file("/StructTreeRoot 4 0 R/MarkInfo<</Marked true>>", "/StructParents 0");
    const std::string elements = "[" + references(kFirst, kFirst + kMany) + "]";
    file.object(4, "<</Type/StructTreeRoot/K 7 0 R/ParentTree<</Nums[0 7 0 R]>>" + root + ">>");
    file.object(5, shared);
    file.object(7, elements);
    for (std::size_t i = 0; i < kMany; ++i) {
        const std::string number = std::to_string(i);
        file.object(kFirst + i, "<</P 4 0 R/Pg 3 0 R/K " + number + element + number + ">>");
    }
    return file.finished();
}

std::string nameOfManyTypes() {
    return withElements("/S/K", "/RoleMap<<" + entries("/K# 5 0 R") + ">>", longName());
}

std::string attributesOfManyClasses() {
    return withElements("/S/P/C/K", "/ClassMap<<" + entries("/K# 5 0 R") + ">>",
                        "[<</O/Layout/X(" + std::string(kLong, 'A') + ")>>]");
}

std::string textOfAnOutputIntent() {
    WrittenDocument file("/OutputIntents[5 0 R]");
    file.object(5, "<<" + entries("/K# 200 0 R") + ">>");
    file.packed(11, 200, "(" + std::string(kMuch / 20, 'A') + ")");
    return file.finished();
}

std::string fieldsWithoutAnything() {
    WrittenDocument file("/AcroForm<</Fields 200 0 R>>");
    file.packed(11, 200, "[" + repeated("<<>>", kMuch) + "]");
    return file.finished();
}

std::string elementsWithoutAnything() {
    WrittenDocument file("/StructTreeRoot 4 0 R/MarkInfo<</Marked true>>", "/StructParents 0");
    file.object(4, "<</Type/StructTreeRoot/K 200 0 R>>");
    file.packed(11, 200, "[" + repeated("<</S/P>>", kMuch) + "]");
    return file.finished();
}

std::string entriesOfADictionary() {
    WrittenDocument file("", "/PieceInfo 200 0 R");
    file.packed(11, 200, "<<" + repeated("/ 0", kMuch) + ">>");
    return file.finished();
}

std::string pagesWithoutAnything() {
    WrittenDocument file("", "", "200 0 R");
    file.packed(11, 200, "<</Kids[" + repeated("<<>>", kMuch) + "]>>");
    return file.finished();
}

struct Shape {
    const char* name;
    std::string (*text)();
};

// GoogleTest looks for this name.
void PrintTo(const Shape& shape, std::ostream* out) {  // NOLINT(readability-identifier-naming)
    *out << shape.name;
}

class SmallHostile : public ::testing::TestWithParam<Shape> {};

/// The most memory that this process has had at a time, in bytes. (Linux counts in kilobytes.)
std::size_t peakMemory() {
    rusage usage{};
    EXPECT_EQ(::getrusage(RUSAGE_SELF, &usage), 0);
    return static_cast<std::size_t>(usage.ru_maxrss) << 10U;
}

TEST_P(SmallHostile, makesNothingLarge) {
    constexpr std::size_t kMemory = std::size_t{120} << 20U;
    constexpr rlim_t kAddressSpace = rlim_t{4} << 30U;  // so that the machine survives a failure
    constexpr rlim_t kSeconds = 60;  // of CPU: a hundred times what each of them needs
    constexpr std::uintmax_t kTimes = 40;
    constexpr std::uintmax_t kAnyway = 20'000'000;
    const TemporaryFolder folder;
    const std::string text = GetParam().text();
    ASSERT_LT(text.size(), 400'000);
    folder.write("hostile.pdf", text);
    const int result = inChildProcess([&] {
        if (test::kMemoryLimitsWork) test::limit(RLIMIT_AS, kAddressSpace);
        test::limit(RLIMIT_CPU, kSeconds);
        const std::size_t before = peakMemory();
        const auto failure = failureOfMerging({folder / "hostile.pdf"}, folder / "out.pdf");
        if (test::kMemoryLimitsWork && peakMemory() > before + kMemory) return 3;
        if (!failure) return 0;
        return failure->kind() == Kind::invalid && failure->name() == "hostile.pdf" ? 1 : 2;
    });
    EXPECT_THAT(result, ::testing::AnyOf(0, 1)) << "3: too much memory";
    if (result == 0) {
        EXPECT_LT(fs::file_size(folder / "out.pdf"), kAnyway + kTimes * text.size());
    }
}

constexpr Shape kShapes[] = {
    {"eventOfManyUsages", eventOfManyUsages},
    {"categoriesOfAUsage", categoriesOfAUsage},
    {"intentOfManyLayers", intentOfManyLayers},
    {"nameOfManyTypes", nameOfManyTypes},
    {"attributesOfManyClasses", attributesOfManyClasses},
    {"textOfAnOutputIntent", textOfAnOutputIntent},
    {"fieldsWithoutAnything", fieldsWithoutAnything},
    {"elementsWithoutAnything", elementsWithoutAnything},
    {"entriesOfADictionary", entriesOfADictionary},
    {"pagesWithoutAnything", pagesWithoutAnything},
};

INSTANTIATE_TEST_SUITE_P(Of, SmallHostile, ::testing::ValuesIn(kShapes),
                         [](const auto& shape) { return std::string(shape.param.name); });

// To find out that an object is not there takes longer than to read a small one.
TEST(SmallDocument, thatLacksWhatItRefersToVeryOftenIsRefused) {
    constexpr std::size_t kTimes = 200'000;
    WrittenDocument file("/StructTreeRoot<</Namespaces 200 0 R>>", "/StructParents 0");
    file.packed(11, 200, "[" + repeated("201 0 R ", 8 * kTimes) + "]");
    file.missing(11, 201);
    const TemporaryFolder folder;
    folder.write("hostile.pdf", file.finished());
    expectFailure(failureOfMerging({folder / "hostile.pdf"}, folder / "out.pdf"), Kind::invalid,
                  "hostile.pdf");
    EXPECT_FALSE(fs::exists(folder / "out.pdf"));
}

TEST(SmallDocument, thatLacksWhatItRefersToNowAndThenIsNot) {
    constexpr std::size_t kTimes = 2000;
    WrittenDocument file("/StructTreeRoot<</Namespaces 200 0 R>>", "/StructParents 0");
    file.packed(11, 200, "[" + repeated("201 0 R ", 8 * kTimes) + "]");
    file.missing(11, 201);
    const TemporaryFolder folder;
    folder.write("damaged.pdf", file.finished());
    EXPECT_FALSE(failureOfMerging({folder / "damaged.pdf"}, folder / "out.pdf"));
}

}  // namespace
}  // namespace quirebind::coretest
