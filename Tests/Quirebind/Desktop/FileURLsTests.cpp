// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <string>

#include <gmock/gmock.h>

#include "Quirebind/Desktop/FileURLs.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace quirebind {
namespace {

TEST(FileURLs, AreReadInTheirOrder) {
    EXPECT_THAT(fileURLs("file:///b.pdf\r\nfile:///a.pdf\r\n"),
                ElementsAre(URL::file("/b.pdf"), URL::file("/a.pdf")));
}

TEST(FileURLs, NeedNoLineEndBehindTheLast) {
    EXPECT_THAT(fileURLs("file:///a.pdf\nfile:///b.pdf"),
                ElementsAre(URL::file("/a.pdf"), URL::file("/b.pdf")));
}

TEST(FileURLs, KeepNamesThatAreNoText) {
    EXPECT_THAT(fileURLs("file:///caf%E9%20%FF.pdf\r\n"),
                ElementsAre(URL::file("/caf\xE9 \xFF.pdf")));
}

TEST(FileURLs, LeaveCommentsAndWebLinksOut) {
    EXPECT_THAT(fileURLs("# two\r\nhttps://example.org/a.pdf\r\nfile:///a.pdf\r\n"),
                ElementsAre(URL::file("/a.pdf")));
}

TEST(FileURLs, EndAtTheZeroByteThatSomeProgramsAppend) {
    EXPECT_THAT(fileURLs(std::string_view("file:///a.pdf\r\n\0", 16)),
                ElementsAre(URL::file("/a.pdf")));
}

TEST(FileURLs, MayBeNone) {
    EXPECT_THAT(fileURLs(""), IsEmpty());
    EXPECT_THAT(fileURLs("just text"), IsEmpty());
}

TEST(DisplayName, ShowsWhatIsNoTextAsReplacementCharacters) {
    EXPECT_EQ(displayName(URL::file("/tmp/caf\xE9.pdf")), QString::fromUtf8("caf\uFFFD.pdf"));
    EXPECT_EQ(displayName(URL::file("/tmp/caf\u00E9.pdf")), QString::fromUtf8("caf\u00E9.pdf"));
}

}  // namespace
}  // namespace quirebind
