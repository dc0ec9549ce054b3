// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "Platform/Files/URL.h"

namespace quirebind {
namespace {

using namespace std::string_view_literals;

TEST(URL, keepsEveryByteOfAFilesPath) {
    for (const std::string_view path :
         {"/a/b.pdf"sv, "a b.pdf"sv, "./x/../y//z/"sv, "/100%25.pdf"sv, "/what?#.pdf"sv,
          "/caf\xE9.pdf"sv, "/\xFF\xFE"sv, "https://example.org/a.pdf"sv, "file:///a"sv, "/a\nb"sv,
          "/a\0b"sv, ""sv}) {
        const URL url = URL::file(std::string(path));
        EXPECT_TRUE(url.isFileURL());
        EXPECT_EQ(url.path(), path);
    }
}

/// Something that is given, and what is expected of it.
using Case = std::pair<std::string_view, std::string_view>;

TEST(URL, readsFileURLsInAllTheirForms) {
    for (const auto& [text, path] : std::vector<Case>{
             {"file:///home/a.pdf", "/home/a.pdf"},
             {"file:/home/a.pdf", "/home/a.pdf"},
             {"file://localhost/home/a.pdf", "/home/a.pdf"},
             {"file://any.host:80/home/a.pdf", "/home/a.pdf"},
             {"FILE:///home/a.pdf", "/home/a.pdf"},
             {"FiLe://LocalHost/a.pdf", "/a.pdf"},
             {"file:////share/a.pdf", "//share/a.pdf"},
             {"file:a/b.pdf", "a/b.pdf"},
             {"file:///", "/"},
             {"file://localhost", ""},
             {"file:", ""},
         }) {
        const URL url = URL::parse(text);
        EXPECT_TRUE(url.isFileURL()) << text;
        EXPECT_EQ(url.path(), path) << text;
    }
}

TEST(URL, undoesPercentEscapesIntoBytes) {
    for (const auto& [text, path] : std::vector<Case>{
             {"file:///a%20b.pdf", "/a b.pdf"},
             {"file:///%C3%A9.pdf", "/\xC3\xA9.pdf"},
             {"file:///%e9%FF", "/\xE9\xFF"},
             {"file:///a%2Fb", "/a/b"},
             {"file:///a%3Fb%23c", "/a?b#c"},
             {"file:///%2525", "/%25"},
             {"file:///a+b", "/a+b"},
             {"file:///a%00b", "/a\0b"sv},
             {"file:///caf\xE9 x", "/caf\xE9 x"},
         }) {
        EXPECT_EQ(URL::parse(text).path(), path) << text;
    }
}

TEST(URL, takesAMalformedEscapeForWhatItSays) {
    for (const auto& [text, path] : std::vector<Case>{
             {"file:///100%", "/100%"},
             {"file:///100%2", "/100%2"},
             {"file:///100%zz", "/100%zz"},
             {"file:///100%2g", "/100%2g"},
             {"file:///100% 1", "/100% 1"},
             {"file:///%%20", "/% "},
             {"file:///%-1", "/%-1"},
         }) {
        EXPECT_EQ(URL::parse(text).path(), path) << text;
    }
}

TEST(URL, endsAFilesPathAtItsQueryOrFragment) {
    for (const auto& [text, path] : std::vector<Case>{
             {"file:///a.pdf#page=2", "/a.pdf"},
             {"file:///a.pdf?x=/y", "/a.pdf"},
             {"file:///a.pdf?x#y", "/a.pdf"},
             {"file:///a.pdf#y?x", "/a.pdf"},
             {"file://host?/a", ""},
         }) {
        EXPECT_EQ(URL::parse(text).path(), path) << text;
    }
}

void expectKeptAsItIs(std::string_view text) {
    const URL url = URL::parse(text);
    EXPECT_FALSE(url.isFileURL()) << text;
    EXPECT_EQ(url.absoluteString(), text);
    EXPECT_EQ(url.path(), "") << text;
    EXPECT_EQ(url.standardizedFileURL(), url) << text;
    EXPECT_EQ(url.resolvingSymlinksInPath(), url) << text;
}

TEST(URL, keepsEverythingElseAsItIs) {
    for (const std::string_view text :
         {"https://example.org/a%20b.pdf?x#y"sv, "smb://host/share/a.pdf"sv, "/home/a.pdf"sv,
          "a.pdf"sv, ""sv, ":"sv, "//host/a"sv, "files:///a"sv, "fil:///a"sv, " file:///a"sv,
          "file"sv, "1file:///a"sv, "mailto:a@example.org"sv}) {
        expectKeptAsItIs(text);
    }
}

TEST(URL, isWrittenWithEscapesThatEverybodyUnderstands) {
    EXPECT_EQ(URL::file("/a/b-c_d.~1.pdf").absoluteString(), "file:///a/b-c_d.~1.pdf");
    EXPECT_EQ(URL::file("/a b?c#d%e").absoluteString(), "file:///a%20b%3Fc%23d%25e");
    EXPECT_EQ(URL::file("/\xC3\xA9\xFF\n").absoluteString(), "file:///%C3%A9%FF%0A");
    EXPECT_EQ(URL::file("a/b").absoluteString(), "file:a/b");
    EXPECT_EQ(URL::file("").absoluteString(), "file:");
}

TEST(URL, isReadBackFromItsWrittenForm) {
    std::string everyByte = "/";
    for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
    for (const std::string& path :
         {everyByte, everyByte.substr(1), std::string("//a"), std::string("///"),
          std::string("a:b"), std::string("%2F"), std::string("./a"), std::string()}) {
        const URL url = URL::file(path);
        EXPECT_EQ(URL::parse(url.absoluteString()), url) << url.absoluteString();
    }
}

TEST(URL, namesItsLastPathComponent) {
    for (const auto& [path, name] : std::vector<Case>{
             {"/a/b.pdf", "b.pdf"},
             {"b.pdf", "b.pdf"},
             {"/a/b/", "b"},
             {"/a/b///", "b"},
             {"a//b", "b"},
             {"/", "/"},
             {"///", "/"},
             {"", ""},
             {"/a/..", ".."},
             {"/a%20b", "a%20b"},
             {"/a?b#c", "a?b#c"},
             {"/\xFF.pdf", "\xFF.pdf"},
         }) {
        EXPECT_EQ(URL::file(std::string(path)).lastPathComponent(), name) << path;
    }
}

TEST(URL, namesTheLastPathComponentOfAnotherURL) {
    for (const auto& [text, name] : std::vector<Case>{
             {"https://example.org/a/b%20c.pdf", "b c.pdf"},
             {"https://example.org/a/b.pdf?x=/y#/z", "b.pdf"},
             {"https://example.org/a/b.pdf#/z?", "b.pdf"},
             {"https://example.org/a/", "a"},
             {"https://example.org/a%2Fb", "a/b"},
             {"https://example.org/", "/"},
             {"https://example.org", ""},
             {"mailto:a@example.org", "a@example.org"},
             {"some/where.pdf", "where.pdf"},
         }) {
        EXPECT_EQ(URL::parse(text).lastPathComponent(), name) << text;
    }
}

TEST(URL, standardizesAPathInLettersOnly) {
    for (const auto& [path, expected] : std::vector<Case>{
             {"/a/./b/../c//d/", "/a/c/d"},
             {"/missing/../b", "/b"},
             {"/..", "/"},
             {"/../../a", "/a"},
             {"/", "/"},
             {"//a", "/a"},
             {"/.", "/"},
             {"a/b/../../..", ".."},
             {"../../a", "../../a"},
             {"../a/../../b", "../../b"},
             {"./a", "a"},
             {"a/", "a"},
             {"a/..", "."},
             {".", "."},
             {"", ""},
             {"/...", "/..."},
             {"/.a/..b", "/.a/..b"},
             {"/\xFF/./\xFE", "/\xFF/\xFE"},
         }) {
        EXPECT_EQ(URL::file(std::string(path)).standardizedFileURL().path(), expected) << path;
    }
}

TEST(URL, equalsAnotherOfTheSameKindAndBytesOnly) {
    EXPECT_EQ(URL::file("/a b"), URL::parse("file:///a%20b"));
    EXPECT_NE(URL::file("/a"), URL::file("/A"));
    EXPECT_NE(URL::file("/a"), URL::file("//a"));
    EXPECT_NE(URL::file("a"), URL::parse("a"));
}

}  // namespace
}  // namespace quirebind
