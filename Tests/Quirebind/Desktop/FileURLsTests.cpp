// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <QDir>
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

TEST(DisplayPath, IsShortInTheHomeFolder) {
    const std::string home = QDir::homePath().toStdString();
    EXPECT_EQ(displayPath(URL::file(home + "/Letters/a.pdf")), "~/Letters/a.pdf");
    EXPECT_EQ(displayPath(URL::file(home + "2/a.pdf")).toStdString(), home + "2/a.pdf");
    EXPECT_EQ(displayPath(URL::file("/srv/caf\xE9.pdf")), QString::fromUtf8("/srv/caf\uFFFD.pdf"));
    EXPECT_EQ(displayPath(URL::parse("https://example.org/a.pdf")), "https://example.org/a.pdf");
}

TEST(Breakable, IsALongWordBetweenItsCharacters) {
    EXPECT_EQ(breakable("short words", 5), "short words");
    EXPECT_EQ(breakable("12345678901", 5), QString::fromUtf8("12345\u200B67890\u200B1"));
    EXPECT_EQ(breakable("123 45678", 5), "123 45678");
    const QString emoji = QString::fromUtf8("\U0001F600");
    EXPECT_EQ(breakable('x' + emoji.repeated(4), 4),
              'x' + emoji.repeated(2) + QChar(0x200b) + emoji.repeated(2));
    const QString accented = QString::fromUtf8("e\u0301");
    EXPECT_EQ(breakable(accented.repeated(3), 3), accented.repeated(2) + QChar(0x200b) + accented);
}

}  // namespace
}  // namespace quirebind
