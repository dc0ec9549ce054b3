// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Merges of documents whose long streams are not copied: their pages of memory are those of the
// source until the output is written.

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/QuirebindCore/CoreTestSupport.h"
#include "Tests/Support/FaultyFileSystem.h"

namespace quirebind::coretest {
namespace {

using ::testing::ElementsAre;
namespace fs = std::filesystem;

constexpr std::size_t kBody = 1'200'000;

/// The body of a picture, other bytes for each `seed`.
std::string picture(const std::string& seed) {
    std::string body;
    while (body.size() < kBody) body += seed + std::to_string(body.size()) + '\n';
    body.resize(kBody - 1);
    return body + '.';  // a line end there would be taken for that before the keyword
}

/// A page that shows a text and has such a picture.
std::string documentWith(const std::string& body, const std::string& text) {
    return test::fixturePDF(R"({{header 1.7}}
{{object 1 0}} << /Type /Catalog /Pages 2 0 R >> endobj
{{object 2 0}} << /Type /Pages /Kids [3 0 R] /Count 1 >> endobj
{{object 3 0}} << /Type /Page /Parent 2 0 R /MediaBox [0 0 200 200] /Contents 5 0 R
  /Resources << /XObject << /Im 4 0 R >> /Font << /F 6 0 R >> >> >> endobj
{{object 4 0}} << /Type /XObject /Subtype /Image /Width 1000 /Height 1200 /BitsPerComponent 8
  /ColorSpace /DeviceGray /Length {{length}} >>
{{stream}}
)" + body + R"(
{{endstream}}
endobj
{{object 5 0}} << /Length {{length}} >>
{{stream}}
BT /F 12 Tf 20 100 Td ()" + text +
                            R"() Tj ET
{{endstream}}
endobj
{{object 6 0}} << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> endobj
{{xref}}
trailer << /Size {{size}} /Root 1 0 R >>
{{startxref}}
%%EOF
)");
}

std::size_t countOf(const std::string& what, const std::string& in) {
    std::size_t count = 0;
    for (std::size_t at = in.find(what); at != std::string::npos; at = in.find(what, at + 1))
        ++count;
    return count;
}

class LentStreams : public ::testing::Test {
 protected:
    LentStreams() {
        folder_.write("a.pdf", documentWith(a_, "one"));
        folder_.write("b.pdf", documentWith(b_, "two"));
        folder_.write("out.pdf", "old");
    }

    [[nodiscard]] std::vector<URL> sources() const {
        return urls({folder_ / "a.pdf", folder_ / "b.pdf"});
    }

    void merge() { PDFMerger::mergeOn(files_, sources(), URL::file(folder_ / "out.pdf")); }

    /// Does `change` to the first source once the second is opened, or, with a kind of call, when
    /// that happens for the first time after that; merges, and gives the failure.
    std::optional<PDFMerger::Failure> failureWhen(FileCall when,
                                                  const std::function<void()>& change) {
        std::size_t opened = 0;
        bool happened = false;
        files_.onEachCall([&](FileCall call) {
            if (call == FileCall::open) ++opened;
            if (happened || opened < 2 || call != when) return;
            happened = true;
            change();
        });
        const auto failure = failureOf([&] { merge(); });
        EXPECT_TRUE(happened);
        EXPECT_EQ(files_.openFiles(), 0U);
        return failure;
    }

    void expectMerged() const {
        const std::string merged = folder_.read("out.pdf");
        EXPECT_EQ(countOf(a_, merged), 1U);
        EXPECT_EQ(countOf(b_, merged), 1U);
        EXPECT_EQ(test::pageTexts(folder_ / "out.pdf"), (std::vector<std::string>{"one", "two"}));
        EXPECT_EQ(test::qpdfCheck(folder_ / "out.pdf").exitCode, 0);
    }

    void expectOld() const {
        EXPECT_EQ(folder_.read("out.pdf"), "old");
        EXPECT_THAT(folder_.names(), ElementsAre("a.pdf", "b.pdf", "out.pdf"));
    }

    void expectSystemError(int number) {
        try {
            merge();
            ADD_FAILURE() << "there was no error";
        } catch (const std::system_error& error) {
            EXPECT_EQ(error.code().value(), number);
        }
        expectOld();
    }

    const std::string a_ = picture("a");
    const std::string b_ = picture("b");
    const TemporaryFolder folder_;
    FaultyFileSystem files_;
};

TEST_F(LentStreams, arriveWhole) {
    merge();
    expectMerged();
    EXPECT_LT(folder_.read("out.pdf").size(), 2 * kBody + 12'000);
#if defined(__linux__)
    EXPECT_EQ(files_.count(FileCall::map), 2U);
#endif
}

TEST_F(LentStreams, areCopiedWhereTheSystemCannotLend) {
    merge();
    const std::string lent = folder_.read("out.pdf");
    files_.fail(FileCall::map, ENODEV);
    merge();
    expectMerged();
    EXPECT_TRUE(folder_.read("out.pdf") == lent);
}

TEST_F(LentStreams, areStoredOnceWhenTheyAreTheSame) {
    folder_.write("b.pdf", documentWith(a_, "two"));
    merge();
    const std::string merged = folder_.read("out.pdf");
    EXPECT_EQ(countOf(a_, merged), 1U);
    EXPECT_EQ(test::pageTexts(folder_ / "out.pdf"), (std::vector<std::string>{"one", "two"}));
}

TEST_F(LentStreams, ofAFileThatIsRemovedAreWhatTheyWere) {
    EXPECT_FALSE(failureWhen(FileCall::open, [&] { fs::remove(folder_ / "a.pdf"); }));
    expectMerged();
}

TEST_F(LentStreams, ofAFileThatIsReplacedAreWhatTheyWere) {
    EXPECT_FALSE(failureWhen(FileCall::write, [&] {
        folder_.write("new.pdf", "something else");
        fs::rename(folder_ / "new.pdf", folder_ / "a.pdf");
    }));
    expectMerged();
}

// A page of a file that is shortened is gone: to look at it raises a signal.
TEST_F(LentStreams, ofAFileThatIsShortenedAreRefused) {
    for (const FileCall when :
         {FileCall::open, FileCall::map, FileCall::write, FileCall::setMode}) {
        SCOPED_TRACE(nameOf(when));
        folder_.write("a.pdf", documentWith(a_, "one"));
        const auto failure =
            failureWhen(when, [&] { fs::resize_file(folder_ / "a.pdf", 100'000); });
        if (when == FileCall::setMode) {  // all is written by then
            EXPECT_FALSE(failure);
            expectMerged();
        } else {
            expectFailure(failure, Kind::invalid, "a.pdf");
            expectOld();
        }
    }
}

TEST_F(LentStreams, ofAFileThatIsShortenedAreComparedWithNothing) {
    folder_.write("b.pdf", documentWith(a_, "two"));
    expectFailure(failureWhen(FileCall::open, [&] { fs::resize_file(folder_ / "a.pdf", 100'000); }),
                  Kind::invalid, "a.pdf");
    expectOld();
}

TEST_F(LentStreams, ofAFileThatIsWrittenToAreRefused) {
    for (const FileCall when : {FileCall::open, FileCall::write}) {
        SCOPED_TRACE(nameOf(when));
        folder_.write("a.pdf", documentWith(a_, "one"));
        const auto failure = failureWhen(when, [&] {
            std::fstream file(folder_ / "a.pdf", std::ios::binary | std::ios::in | std::ios::out);
            file.seekp(400'000);
            file << "other bytes";
        });
        expectFailure(failure, Kind::invalid, "a.pdf");
        expectOld();
    }
}

TEST_F(LentStreams, areFoundThroughASymbolicLink) {
    fs::rename(folder_ / "a.pdf", folder_ / "real.pdf");
    fs::create_symlink("real.pdf", folder_ / "a.pdf");
    expectFailure(
        failureWhen(FileCall::write, [&] { fs::resize_file(folder_ / "real.pdf", 100'000); }),
        Kind::invalid, "a.pdf");
    EXPECT_EQ(folder_.read("out.pdf"), "old");
}

// What fails for another reason says that reason.
TEST_F(LentStreams, areNotToBlameForAFullDisk) {
    files_.failOnce(FileCall::write, ENOSPC);
    expectSystemError(ENOSPC);
}

// Pages that are gone, though nobody has written to their file, are an address that write(2) does
// not like.
TEST_F(LentStreams, thatCannotBeReadAnyMoreAreAnErrorOfReading) {
    files_.failOnce(FileCall::write, EFAULT);
    expectSystemError(EIO);
}

}  // namespace
}  // namespace quirebind::coretest
