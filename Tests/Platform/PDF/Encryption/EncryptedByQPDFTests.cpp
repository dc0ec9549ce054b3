// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Documents that qpdf encrypts: their merges are those of the documents before.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Encryption/EncryptedFixtures.h"
#include "Tests/Support/Oracle.h"
#include "Tests/Support/Process.h"

namespace quirebind::pdftest {
namespace {

using ::testing::HasSubstr;

/// How qpdf is told to encrypt.
struct Manner {
    Manner(std::string itsName, std::vector<std::string> itsArguments)
        : name(std::move(itsName)), arguments(std::move(itsArguments)) {}
    std::string name;
    std::vector<std::string> arguments;  ///< Behind the passwords.
};

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds it by this name.
void PrintTo(const Manner& manner, std::ostream* out) {
    *out << manner.name;
}

/// A page with about everything that strings and streams are used for.
std::string original() {
    return replaced(onePageWith(R"({{object 6 0}}
<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /Contents (A note \(in brackets\)) /P 3 0 R
   /M (\376\377\004\026\r\n\\) >>
endobj
{{object 7 0}}
<< /Type /Annot /Subtype /FileAttachment /Rect [0 0 9 9] /FS << /Type /Filespec /F (data.bin)
   /EF << /F 8 0 R >> >> >>
endobj
{{object 8 0}}
<< /Type /EmbeddedFile /Length {{length}} >>
{{stream}}
all that is {{hex 00 01 0d 0a ff}} attached
{{endstream}}
endobj
{{object 9 0}}
<< /Type /XObject /Subtype /Image /Width 2 /Height 2 /BitsPerComponent 8 /ColorSpace /DeviceGray
   /Length {{length}} >>
{{stream}}
{{hex 00 7f 80 ff}}
{{endstream}}
endobj
{{object 10 0}}
<< /Type /Metadata /Subtype /XML /Length {{length}} >>
{{stream}}
<x:xmpmeta xmlns:x="adobe:ns:meta/"/>
{{endstream}}
endobj
{{object 11 0}}
<< /Type /Annot /Subtype /Widget /FT /Sig /T (signature) /Rect [0 0 9 9] /V 12 0 R >>
endobj
{{object 12 0}}
<< /Type /Sig /Filter /Adobe.PPKLite /ByteRange [0 10 20 30] /Contents <3082aabbccdd00>
   /Name (somebody) >>
endobj
)"),
                    "/MediaBox",
                    "/Annots [6 0 R 7 0 R 11 0 R] /Image 9 0 R /Metadata 10 0 R /MediaBox");
}

/// The document as qpdf writes it with these options.
std::string writtenByQPDF(const Bench& bench, const std::string& name,
                          const std::vector<std::string>& options) {
    std::string path = bench.folder() / name;
    std::vector<std::string> arguments{"qpdf", "--static-id", "--allow-weak-crypto",
                                       "--stream-data=preserve"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.insert(arguments.end(), {bench.fixture("original.pdf", original()), path});
    static_cast<void>(runOrFail(arguments));
    return path;
}

class EncryptedByQPDF : public ::testing::TestWithParam<Manner> {
 protected:
    static std::vector<std::string> options(const std::string& userPassword,
                                            const std::string& ownerPassword) {
        std::vector<std::string> result{"--encrypt", userPassword, ownerPassword};
        result.insert(result.end(), GetParam().arguments.begin(), GetParam().arguments.end());
        result.emplace_back("--");
        return result;
    }
};

TEST_P(EncryptedByQPDF, arrivesAsIfItWereNotEncrypted) {
    for (const std::string packing : {"disable", "generate"}) {
        const Bench bench;
        const std::string how = "--object-streams=" + packing;
        auto encryption = options("", "owner");
        encryption.push_back(how);
        const std::string plain = writtenByQPDF(bench, "plain.pdf", {how});
        const std::string encrypted = writtenByQPDF(bench, "encrypted.pdf", encryption);
        ASSERT_EQ(test::run({"qpdf", "--is-encrypted", encrypted}).exitCode, 0);

        const std::string merged = bench.merge({encrypted});
        expectPages(merged, {200}, {"one"});
        EXPECT_EQ(test::run({"qpdf", "--is-encrypted", merged}).exitCode, 2);
        EXPECT_EQ(contentOf(merged), contentOf(bench.merge({plain}, "plainly merged.pdf")));
        EXPECT_EQ(test::renderingsByMuPDF(merged), test::renderingsByMuPDF(plain));
        EXPECT_THAT(everyObject(merged), HasSubstr("/Contents (A note \\(in brackets\\))"));
        EXPECT_THAT(everyObject(merged), HasSubstr("/Contents <3082aabbccdd00>"));
        EXPECT_THAT(Bench::read(merged),
                    HasSubstr(std::string("\nall that is \0\1\r\n\xff attached\n", 28)));
    }
}

TEST_P(EncryptedByQPDF, isLockedWithAUsersPassword) {
    const Bench bench;
    EXPECT_EQ(isLocked(writtenByQPDF(bench, "locked.pdf", options("user", "owner"))), true);
}

INSTANTIATE_TEST_SUITE_P(
    All, EncryptedByQPDF,
    ::testing::Values(Manner("RC4 of 40 bits", {"40"}),
                      Manner("RC4 of 128 bits", {"128", "--use-aes=n"}),
                      Manner("RC4 by a crypt filter", {"128", "--use-aes=n", "--force-V4"}),
                      Manner("RC4, metadata in clear",
                             {"128", "--use-aes=n", "--force-V4", "--cleartext-metadata"}),
                      Manner("AES of 128 bits", {"128", "--use-aes=y"}),
                      Manner("AES of 128 bits, metadata in clear",
                             {"128", "--use-aes=y", "--cleartext-metadata"}),
                      Manner("AES of 256 bits, revision 5", {"256", "--force-R5"}),
                      Manner("AES of 256 bits", {"256"}),
                      Manner("AES of 256 bits, metadata in clear", {"256", "--cleartext-metadata"}),
                      Manner("nothing permitted", {"256", "--print=none", "--modify=none",
                                                   "--extract=n", "--accessibility=n"})));

TEST(EncryptedByQPDFWithAnEmptyOwnersPassword, opens) {
    const Bench bench;
    const std::string encrypted = writtenByQPDF(
        bench, "encrypted.pdf", {"--encrypt", "user", "", "256", "--allow-insecure", "--"});
    const std::string plain = writtenByQPDF(bench, "plain.pdf", {});
    EXPECT_EQ(contentOf(bench.merge({encrypted})), contentOf(bench.merge({plain}, "p.pdf")));
}

TEST(EncryptedByQPDFAndLinearized, arrivesAsIfItWereNeither) {
    const Bench bench;
    const std::string encrypted =
        writtenByQPDF(bench, "encrypted.pdf",
                      {"--linearize", "--encrypt", "", "owner", "128", "--use-aes=y", "--"});
    const std::string plain = writtenByQPDF(bench, "plain.pdf", {"--linearize"});
    EXPECT_EQ(contentOf(bench.merge({encrypted})), contentOf(bench.merge({plain}, "p.pdf")));
}

}  // namespace
}  // namespace quirebind::pdftest
