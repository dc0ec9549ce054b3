// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "Platform/PDF/Links/WebAddress.h"

namespace quirebind {
namespace {

// Of the examples of RFC 3986, 5.4.
TEST(WebAddress, isThatOfTheBaseWithWhatTheReferenceChanges) {
    constexpr std::string_view kBase = "http://a/b/c/d;p?q";
    for (const auto& [reference, address] :
         {std::pair<std::string_view, std::string_view>{"g:h", "g:h"},
          {"g", "http://a/b/c/g"},
          {"./g", "http://a/b/c/g"},
          {"g/", "http://a/b/c/g/"},
          {"/g", "http://a/g"},
          {"//g", "http://g"},
          {"?y", "http://a/b/c/d;p?y"},
          {"g?y", "http://a/b/c/g?y"},
          {"#s", "http://a/b/c/d;p?q#s"},
          {"g?y/../x#s/./x", "http://a/b/c/g?y/../x#s/./x"},
          {"", "http://a/b/c/d;p?q"},
          {".", "http://a/b/c/"},
          {"./", "http://a/b/c/"},
          {"..", "http://a/b/"},
          {"../g", "http://a/b/g"},
          {"../..", "http://a/"},
          {"../../../g", "http://a/g"},
          {"/./g", "http://a/g"},
          {"/../g", "http://a/g"},
          {"..g", "http://a/b/c/..g"},
          {"g/./h", "http://a/b/c/g/h"},
          {"g/../h", "http://a/b/c/h"}})
        EXPECT_EQ(resolvedAddress(kBase, reference), address) << reference;
}

TEST(WebAddress, goesUpNoFurtherThanThereIsSomething) {
    std::string up;
    for (int i = 0; i < 200'000; ++i) up += "/..";
    EXPECT_EQ(resolvedAddress("http://a/b/c", "x" + up + "/y"), "http://a/y");
    EXPECT_EQ(resolvedAddress("scheme:b", std::string(1'000'000, 'x') + up + "/y"), "scheme:/y");
}

TEST(WebAddress, mayHaveABaseWithoutAPath) {
    EXPECT_EQ(resolvedAddress("http://example.org", "a/b"), "http://example.org/a/b");
    EXPECT_EQ(resolvedAddress("http://example.org", "/a"), "http://example.org/a");
    EXPECT_EQ(resolvedAddress("http://example.org/#top", "a"), "http://example.org/a");
}

TEST(WebAddress, isTheReferenceWhereTheBaseIsNoAddress) {
    for (const std::string_view base : {"", "www.example.org", "/a/b", ":", "1:"})
        EXPECT_EQ(resolvedAddress(base, "../x"), "../x") << base;
}

}  // namespace
}  // namespace quirebind
