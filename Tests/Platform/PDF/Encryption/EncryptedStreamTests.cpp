// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Which streams are encrypted and how: crypt filters, metadata, embedded files, cross-reference
// streams; and bodies that are not as they should be.

#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Encryption/EncryptedFixtures.h"

namespace quirebind::pdftest {
namespace {

using test::FixtureCipher;
using test::FixtureEncryption;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

/// Documents, of version 4 with AES unless a test changes that, whose page has under /Here a
/// stream, object 7.
class EncryptedStream : public ::testing::Test {
 protected:
    /// The document with that stream; `body` is as it stands in the file.
    [[nodiscard]] std::string documentWith(const std::string& entries,
                                           std::string_view body) const {
        const FixtureEncryption crypt(options_);
        return pageWrittenBy(Writer(crypt), "/Here 7 0 R", Writer().stream(7, entries, body));
    }
    [[nodiscard]] std::string encrypted(std::string_view body) const {
        return FixtureEncryption(options_).encrypt(7, 0, body);
    }

    /// Expects in the output a stream with the body "the body" and that dictionary, as qpdf says
    /// it.
    void expectBody(const std::string& document,
                    const std::string& dictionary = "<< /Length 8 >>") const {
        const std::string result = mergeInClear(bench_, document);
        EXPECT_THAT(Bench::read(result), HasSubstr("stream\nthe body\nendstream"));
        EXPECT_THAT(everyObject(result), HasSubstr("\n" + dictionary));
    }
    void expectEncrypted(const std::string& entries,
                         const std::string& dictionary = "<< /Length 8 >>") const {
        expectBody(documentWith(entries, encrypted("the body")), dictionary);
    }
    void expectClear(const std::string& entries,
                     const std::string& dictionary = "<< /Length 8 >>") const {
        expectBody(documentWith(entries, "the body"), dictionary);
    }
    [[nodiscard]] std::optional<std::string> tryMerge(const std::string& document) const {
        return bench_.tryMerge({bench_.fixture("a.pdf", document)});
    }

    [[nodiscard]] const Bench& bench() const { return bench_; }
    [[nodiscard]] test::FixtureEncryptionOptions& options() { return options_; }

 private:
    Bench bench_;
    test::FixtureEncryptionOptions options_ = encryptedWith(4, 4, 16, FixtureCipher::aes128);
};

TEST_F(EncryptedStream, isDecrypted) {
    expectEncrypted("");
}

TEST_F(EncryptedStream, isInClearWhereItsFilterIsIdentity) {
    expectClear("/Filter /Crypt");
    expectClear("/Filter [/Crypt]");
    expectClear("/Filter /Crypt /DecodeParms << /Name /Identity >>");
    expectClear("/Filter [/Crypt] /DecodeParms [<< /Name /Identity >>]");
    expectClear("/Filter [/Crypt] /DP [<< /Type /CryptFilterDecodeParms /Name /Identity >>]");
    expectClear("/Filter /C#72ypt /DecodeParms null /DP null");
}

TEST_F(EncryptedStream, hasAFilterOfItsOwn) {
    options().streams = "Identity";
    expectClear("");
    expectEncrypted("/Filter /Crypt /DecodeParms << /Name /StdCF >>");
    expectEncrypted("/Filter [/Crypt] /DecodeParms << /Name /StdCF >>");
}

TEST_F(EncryptedStream, keepsItsOtherFilters) {
    expectEncrypted("/Filter /Other /DecodeParms << /K 3 >>",
                    "<< /DecodeParms << /K 3 >> /Filter /Other /Length 8 >>");
    expectClear("/Filter [/Crypt /Other]",
                "<< /DecodeParms [ null ] /Filter [ /Other ] /Length 8 >>");
    expectClear("/Filter [/Crypt /Other /More] /DecodeParms [null null << /K 3 >>]",
                "<< /DecodeParms [ null << /K 3 >> ] /Filter [ /Other /More ] /Length 8 >>");
    expectClear("/Filter [/Crypt /Other] /DP [<< /Name /Identity >> << /K 3 >>]",
                "<< /DecodeParms [ << /K 3 >> ] /Filter [ /Other ] /Length 8 >>");
}

TEST_F(EncryptedStream, keepsFiltersThatStandElsewhere) {
    const std::string elsewhere =
        replaced(documentWith("/Filter 8 0 R /DecodeParms [null 9 0 R]", "the body"), "{{xref}}",
                 "{{object 8 0}} [/Crypt 10 0 R] endobj\n{{object 9 0}} << /K 3 >> endobj\n"
                 "{{object 10 0}} /Other endobj\n{{xref}}");
    const std::string all = everyObject(mergeInClear(bench(), elsewhere));
    EXPECT_THAT(all, ContainsRegex("<< /DecodeParms \\[ [0-9]+ 0 R \\] /Filter \\[ [0-9]+ 0 R "
                                   "\\] /Length 8 >>"));
    EXPECT_THAT(all, HasSubstr("\n/Other\n"));
    EXPECT_THAT(all, HasSubstr("\n<< /K 3 >>\n"));
    EXPECT_THAT(all, Not(HasSubstr("/Crypt")));
}

TEST_F(EncryptedStream, isRefusedWhereItsFilterIsNotKnown) {
    for (const std::string filter : {"/Undefined", "/Mine", "/Old"}) {
        const std::string text = replaced(
            documentWith("/Filter /Crypt /DecodeParms << /Name " + filter + " >>", "the body"),
            "/CF <<", "/CF << /Mine << /CFM /Secret >> /Old << /CFM /AESV3 >>");
        EXPECT_FALSE(tryMerge(text)) << filter;
    }
}

TEST_F(EncryptedStream, isNotAffectedByFiltersThatNobodyUses) {
    expectBody(replaced(documentWith("", encrypted("the body")), "/CF <<",
                        "/CF << /Mine << /CFM /Secret >> /Odd 5 /Identity << /CFM /Secret >>"));
}

TEST_F(EncryptedStream, ofMetadataIsInClearWhereTheDocumentSaysSo) {
    const std::string metadata = "/Type /Metadata /Subtype /XML";
    const std::string expected = "<< /Length 8 /Subtype /XML /Type /Metadata >>";
    expectEncrypted(metadata, expected);
    options().encryptMetadata = false;
    expectClear(metadata, expected);
    expectEncrypted(metadata + " /Filter /Crypt /DecodeParms << /Name /StdCF >>", expected);
    expectEncrypted("");
}

TEST_F(EncryptedStream, ofMetadataIsEncryptedBeforeVersion4) {
    options() = encryptedWith(2, 3, 16, FixtureCipher::rc4);
    const std::string text = documentWith("/Type /Metadata", encrypted("the body"));
    expectBody(replaced(text, "/V 2", "/V 2 /EncryptMetadata false"),
               "<< /Length 8 /Type /Metadata >>");
}

TEST_F(EncryptedStream, ofAnEmbeddedFileHasAFilterForFiles) {
    const std::string file = "/Type /EmbeddedFile";
    const std::string expected = "<< /Length 8 /Type /EmbeddedFile >>";
    expectEncrypted(file, expected);
    options().files = "Identity";
    expectClear(file, expected);
    expectEncrypted(file + " /Filter /Crypt /DecodeParms << /Name /StdCF >>", expected);
    options().files = "StdCF";
    options().streams = "Identity";
    expectEncrypted(file, expected);
    expectClear("");
}

TEST_F(EncryptedStream, thatIsACrossReferenceStreamIsInClear) {
    const std::string entries = "/Type /XRef /Note (in clear)";
    expectClear(entries, "<< /Length 8 /Note (in clear) /Type /XRef >>");
}

TEST_F(EncryptedStream, mayBeInClearWhereStringsAreEncrypted) {
    options().streams = "";
    expectClear("/Note " + FixtureEncryption(options()).string(7, 0, "note"),
                "<< /Length 8 /Note (note) >>");
    options().streams = "Identity";
    expectClear("/Note " + FixtureEncryption(options()).string(7, 0, "note"),
                "<< /Length 8 /Note (note) >>");
}

TEST_F(EncryptedStream, mayBeEncryptedWhereStringsAreInClear) {
    for (const std::string strings : {"", "Identity"}) {
        options().strings = strings;
        expectEncrypted("/Note (note)", "<< /Length 8 /Note (note) >>");
    }
}

TEST_F(EncryptedStream, hasNoFilterOfItsOwnBeforeVersion4) {
    options() = encryptedWith(2, 3, 16, FixtureCipher::rc4);
    expectEncrypted("/Filter /Crypt");
}

TEST_F(EncryptedStream, findsItsEndWhereTheLengthIsWrong) {
    options() = encryptedWith(2, 3, 16, FixtureCipher::rc4);
    const std::string text = documentWith("/Z 1", encrypted("the body"));
    for (const std::string length :
         {"", "/Length 2", "/Length 99999", "/Length -1", "/Length 8 0 R", "/Length /A"})
        expectBody(replaced(text, "/Z 1 /Length {{length}}", length));
}

TEST_F(EncryptedStream, saysItsLengthOnce) {
    options() = encryptedWith(2, 3, 16, FixtureCipher::rc4);
    const std::string text = documentWith("/Z 1", encrypted("the body"));
    expectBody(
        replaced(text, "/Z 1 /Length {{length}}", "/Z 1/Length {{length}}/Length 99/Y[2]/Length"),
        "<< /Length 8 /Y [ 2 ] /Z 1 >>");
}

/// What becomes of a body with AES that is not as it should be.
TEST_F(EncryptedStream, isDecryptedAsFarAsItIsWhole) {
    const std::string whole = encrypted("sixteen letters. the body");
    ASSERT_EQ(whole.size(), 48U);
    const auto bodyOf = [&](const std::string& body) {
        const std::string read = Bench::read(mergeInClear(bench(), documentWith("/It 1", body)));
        const std::size_t begin = read.find("stream\n", read.find("/It 1")) + 7;
        return read.substr(begin, read.find("\nendstream", begin) - begin);
    };
    EXPECT_EQ(bodyOf(whole), "sixteen letters. the body");
    EXPECT_EQ(bodyOf(whole + "xyz"), "sixteen letters. the body");
    EXPECT_EQ(bodyOf(whole.substr(0, 47)), "sixteen letters.");
    EXPECT_EQ(bodyOf(whole.substr(0, 32)), "sixteen letters.");
    EXPECT_EQ(bodyOf(whole.substr(0, 16)), "");
    EXPECT_EQ(bodyOf(whole.substr(0, 15)), "");
    EXPECT_EQ(bodyOf(""), "");
}

}  // namespace
}  // namespace quirebind::pdftest
