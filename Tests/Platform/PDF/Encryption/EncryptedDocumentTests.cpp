// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// An encrypted document and the same document without encryption: their merges are the same.

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Platform/PDF/Encryption/EncryptedFixtures.h"

namespace quirebind::pdftest {
namespace {

using test::FixtureCipher;
using test::FixtureEncryption;
using ::testing::HasSubstr;

std::string allBytes() {
    std::string result;
    for (int i = 0; i < 256; ++i) result += static_cast<char>(i);
    return result;
}

/// A page with about everything that strings and streams are used for.
std::string richPage(const Writer& writer) {
    const std::string annotations =
        "/Annots [6 0 R 7 0 R 11 0 R << /Type /Annot /Subtype /Text /Rect [0 0 9 9] /Contents " +
        writer.string(3, "directly on the page") + " >>] /PieceInfo << /A << /LastModified " +
        writer.string(3, "D:20260101") +
        " /Private 15 0 R >> >> /Metadata 13 0 R /Images [10 0 R 14 3 R]";
    return pageWrittenBy(
        writer, annotations,
        "{{object 6 0}}\n<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /P 3 0 R /Contents " +
            writer.string(6, "brackets ((, \\ and\r\nlines") + " /T " +
            writer.string(6, "\xfe\xff\x04\x16\x04\x17") + " /M " + writer.string(6, allBytes()) +
            " >>\nendobj\n"
            "{{object 7 0}}\n<< /Type /Annot /Subtype /FileAttachment /Rect [0 0 9 9] /FS 8 0 R "
            ">>\nendobj\n"
            "{{object 8 0}}\n<< /Type /Filespec /F " +
            writer.string(8, "data.bin") + " /EF << /F 9 0 R >> >>\nendobj\n" +
            writer.stream(9,
                          "/Type /EmbeddedFile /Params << /Size 512 /CheckSum " +
                              writer.string(9, "0123456789abcdef") + " >>",
                          allBytes() + allBytes()) +
            writer.stream(10,
                          "/Type /XObject /Subtype /Image /Width 2 /Height 2 /BitsPerComponent 8 "
                          "/ColorSpace [/Indexed /DeviceRGB 3 " +
                              writer.string(10, "rgbRGBrgbRGB") + "]",
                          std::string("\0\1\2\3", 4)) +
            "{{object 11 0}}\n<< /Type /Annot /Subtype /Widget /FT /Sig /T " +
            writer.string(11, "signature") + " /Rect [0 0 9 9] /V 12 0 R >>\nendobj\n" +
            "{{object 12 0}}\n<< /Type /Sig /Filter /Adobe.PPKLite /ByteRange [0 10 20 30] "
            "/Contents <3082aabbccdd00> /Name " +
            writer.string(12, "somebody") + " >>\nendobj\n" +
            writer.stream(13, "/Type /Metadata /Subtype /XML", "<x:xmpmeta/>") +
            writer.stream(14, "/Note " + writer.string(14, "third generation", 3), "", 3) +
            "{{object 15 0}}\n[" + writer.string(15, "in an array") + " [[" +
            writer.string(15, "deeper") + "]] () <> << /Contents " +
            writer.string(15, "no signature") + " >> 16 0 R]\nendobj\n" + "{{object 16 0}}\n" +
            writer.string(16, "an object of its own") + "\nendobj\n");
}

class EncryptedDocument : public ::testing::TestWithParam<test::FixtureEncryptionOptions> {};

TEST_P(EncryptedDocument, arrivesAsIfItWereNotEncrypted) {
    const Bench bench;
    const FixtureEncryption crypt(GetParam());
    const std::string plain =
        bench.merge({bench.fixture("plain.pdf", richPage(Writer()))}, "p.pdf");
    const std::string merged = mergeInClear(bench, richPage(Writer(crypt)));
    EXPECT_EQ(contentOf(merged), contentOf(plain));
}

TEST_P(EncryptedDocument, isNotLocked) {
    const Bench bench;
    const FixtureEncryption crypt(GetParam());
    EXPECT_EQ(isLocked(bench.fixture("a.pdf", richPage(Writer(crypt)))), false);
}

/// The same with its objects in an object stream, which is encrypted as a whole, so that the
/// strings in it are not encrypted again; and with a cross-reference stream, which is not
/// encrypted.
/// `packer` writes the object stream, with `filter` in its dictionary.
std::string packedPage(const Writer& writer, const Writer& packer, const std::string& filter = "") {
    const std::string first = "1 0 2 50 3 120 6 400 ";
    std::string members = "<< /Type /Catalog /Pages 2 0 R >>";
    members.resize(50, ' ');
    members += "<< /Type /Pages /Kids [3 0 R] /Count 1 /Rotate 0 >>";
    members.resize(120, ' ');
    members +=
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 4 0 R /Annots [6 0 R] "
        "/Note (in a packed object) /Resources << /Font << /F1 5 0 R >> >> >>";
    members.resize(400, ' ');
    members += "<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /Contents (packed) /P 3 0 R >>";
    const std::string text(kOnePage);
    return "{{header 1.5}}\n" + writer.stream(4, "", "BT /F1 12 Tf 20 150 Td (one) Tj ET") +
           text.substr(text.find("{{object 5 0}}")) +
           packer.stream(8, filter + "/Type /ObjStm /N 4 /First " + std::to_string(first.size()),
                         first + members) +
           writer.encryptionObject() +
           "{{entry 1 2 8 0}}\n{{entry 2 2 8 1}}\n{{entry 3 2 8 2}}\n{{entry 6 2 8 3}}\n"
           "{{xrefstream 99 0 filter=/FlateDecode predictor=12}}\n/Root 1 0 R " +
           writer.trailerEntries() + "\n{{endxrefstream}}\n{{startxref}}\n%%EOF\n";
}

TEST_P(EncryptedDocument, arrivesOutOfObjectStreams) {
    const Bench bench;
    const FixtureEncryption crypt(GetParam());
    const std::string plain =
        bench.merge({bench.fixture("plain.pdf", packedPage(Writer(), Writer()))}, "p.pdf");
    const std::string merged = mergeInClear(bench, packedPage(Writer(crypt), Writer(crypt)));
    EXPECT_EQ(contentOf(merged), contentOf(plain));
    EXPECT_THAT(contentOf(merged), HasSubstr("/Contents (packed)"));
}

TEST_P(EncryptedDocument, arrivesWithTheOthers) {
    const Bench bench;
    const FixtureEncryption crypt(GetParam());
    const std::string encrypted = bench.fixture("a.pdf", richPage(Writer(crypt)));
    const std::string plain = bench.fixture("b.pdf", richPage(Writer()));
    const std::string merged = bench.merge({encrypted, plain, encrypted});
    expectPages(merged, {200, 200, 200}, {"one", "one", "one"});
    EXPECT_EQ(contentOf(merged), contentOf(bench.merge({plain, plain, plain}, "plain.pdf")));
}

INSTANTIATE_TEST_SUITE_P(All, EncryptedDocument, ::testing::ValuesIn(everyEncryption()));

/// What the page of a document looks like after the merge, and the page of its plain form.
void expectSame(const Bench& bench, const std::string& encrypted, const std::string& plain) {
    const std::string expected = bench.merge({bench.fixture("plain.pdf", plain)}, "p.pdf");
    EXPECT_EQ(contentOf(mergeInClear(bench, encrypted)), contentOf(expected));
}

TEST(EncryptedDocuments, inheritWhatIsDecrypted) {
    const auto inheriting = [](const Writer& writer) {
        return replaced(pageWrittenBy(writer, ""), "/Kids",
                        "/Resources << /Properties << /P << /Note " +
                            writer.string(2, "inherited") + " /Long " +
                            writer.string(2, std::string(300, 'x')) +
                            " >> >> /Font << /F1 5 0 R >> >> /Kids");
    };
    const auto withoutOwn = [](const std::string& text) {
        return replaced(text, "   /Resources << /Font << /F1 5 0 R >> >> >>", ">>");
    };
    const Bench bench;
    const FixtureEncryption crypt(encryptedWith(4, 4, 16, FixtureCipher::aes128));
    expectSame(bench, withoutOwn(inheriting(Writer(crypt))), withoutOwn(inheriting(Writer())));
}

TEST(EncryptedDocuments, mayHaveTheDictionaryInTheTrailer) {
    const Bench bench;
    const FixtureEncryption crypt({});
    expectSame(
        bench,
        replaced(richPage(Writer(crypt)), "/Encrypt 90 0 R", "/Encrypt " + crypt.dictionary()),
        richPage(Writer()));
}

TEST(EncryptedDocuments, mayHaveTheEntriesInObjectsOfTheirOwn) {
    const Bench bench;
    const FixtureEncryption crypt(encryptedWith(4, 4, 16, FixtureCipher::aes128));
    std::string text = richPage(Writer(crypt));
    const std::size_t begin = text.find("/O <");
    const std::size_t end = text.find('>', begin) + 1;
    const std::string owner = text.substr(begin + 3, end - begin - 3);
    text.replace(begin, end - begin, "/O 91 0 R");
    text = replaced(text, "/AESV2", "92 0 R");
    text = replaced(text, "/ID " + crypt.identifier(), "/ID 93 0 R");
    text = replaced(text, "{{object 90 0}}",
                    "{{object 91 0}} " + owner + " endobj\n{{object 92 0}} /AESV2 endobj\n" +
                        "{{object 93 0}} " + crypt.identifier() + " endobj\n{{object 90 0}}");
    expectSame(bench, text, richPage(Writer()));
}

// It is of no use in the output, and its strings are not encrypted like those of other objects.
TEST(EncryptedDocuments, keepTheirDictionaryBehind) {
    const Bench bench;
    const FixtureEncryption crypt({});
    const std::string merged =
        mergeInClear(bench, pageWrittenBy(Writer(crypt), "/Mine 90 0 R /Other 6 0 R",
                                          "{{object 6 0}}\n/there\nendobj\n"));
    EXPECT_THAT(everyObject(merged), HasSubstr("/Other"));
    EXPECT_THAT(everyObject(merged), Not(HasSubstr("/Standard")));
}

TEST(EncryptedDocuments, keepTheContentsOfSignaturesByteForByte) {
    const Bench bench;
    const FixtureEncryption crypt(encryptedWith(5, 6, 32, FixtureCipher::aes256));
    const Writer writer(crypt);
    const std::string digits = "<308201Ab 00" + std::string(64, '0') + ">";
    const std::string merged = mergeInClear(
        bench, pageWrittenBy(writer,
                             "/A << /Contents " + digits + " /ByteRange [0 1 2 3] /Cert " +
                                 writer.string(3, "certificate") + " >> /B 6 0 R",
                             "{{object 6 0}}\n<< /Byte#52ange [0 1 2 3] /Contents " + digits +
                                 " /Reason " + writer.string(6, "reason") + " >>\nendobj\n"));
    const std::string bytes = Bench::read(merged);
    EXPECT_THAT(bytes, HasSubstr("<< /Contents " + digits +
                                 " /ByteRange [0 1 2 3] /Cert (certificate) >>"));
    EXPECT_THAT(bytes, HasSubstr("/Contents " + digits + " /Reason (reason) >>"));
}

TEST(EncryptedDocuments, keepReferencesBetweenStrings) {
    const Bench bench;
    const FixtureEncryption crypt({});
    const auto text = [](const Writer& writer) {
        return pageWrittenBy(writer, "/A 6 0 R",
                             "{{object 6 0}}\n[" + writer.string(6, "5 0 R") + " 7 0 R " +
                                 writer.string(6, std::string(99, '(')) +
                                 " 7 0 R 3 0 R]\nendobj\n"
                                 "{{object 7 0}}\n/seven\nendobj\n");
    };
    expectSame(bench, text(Writer(crypt)), text(Writer()));
}

TEST(EncryptedDocuments, areDecryptedByTheGenerationThatTheObjectSays) {
    const Bench bench;
    const FixtureEncryption crypt({});
    const auto text = [](const Writer& writer) {
        return pageWrittenBy(writer, "/A 6 2 R /B 7 2 R",
                             "{{object 6 2}}\n" + writer.string(6, "string", 2) + "\nendobj\n" +
                                 writer.stream(7, "", "body", 2) +
                                 "{{entry 6 1 @6 0}}\n{{entry 7 1 @7 0}}\n");
    };
    expectSame(bench, text(Writer(crypt)), text(Writer()));
}

TEST(EncryptedDocuments, haveObjectStreamsWithFiltersOfTheirOwn) {
    const Bench bench;
    const std::string plain = packedPage(Writer(), Writer());
    auto options = encryptedWith(4, 4, 16, FixtureCipher::aes128);
    const FixtureEncryption crypt(options);
    expectSame(bench, packedPage(Writer(crypt), Writer(), "/Filter /Crypt "), plain);
    expectSame(bench,
               packedPage(Writer(crypt), Writer(crypt),
                          "/Filter [/Crypt] /DecodeParms << /Name /StdCF >> "),
               plain);
    options.streams = "Identity";
    const FixtureEncryption others(options);
    expectSame(bench, packedPage(Writer(others), Writer()), plain);
    expectSame(bench,
               packedPage(Writer(others), Writer(crypt),
                          "/Filter [/Crypt] /DecodeParms [<< /Name /StdCF >>] "),
               plain);
}

TEST(EncryptedDocuments, haveCrossReferenceStreamsWithACryptFilter) {
    const Bench bench;
    const FixtureEncryption crypt(encryptedWith(4, 4, 16, FixtureCipher::aes128));
    for (const std::string name : {"Identity", "StdCF"})
        expectSame(bench,
                   replaced(packedPage(Writer(crypt), Writer(crypt)),
                            "filter=/FlateDecode predictor=12}}\n",
                            "}}\n/Filter [/Crypt] /DecodeParms << /Name /" + name + " >> "),
                   packedPage(Writer(), Writer()));
}

TEST(EncryptedDocuments, haveHighObjectNumbers) {
    const Bench bench;
    const FixtureEncryption crypt({});
    const auto text = [](const Writer& writer) {
        return pageWrittenBy(writer, "/A 8000001 0 R /B 70000 0 R",
                             "{{object 8000001 0}}\n" + writer.string(8000001, "high") +
                                 "\nendobj\n" + writer.stream(70000, "", "body"));
    };
    expectSame(bench, text(Writer(crypt)), text(Writer()));
}

TEST(EncryptedDocuments, areDecryptedInEveryRevisionOfTheFile) {
    const Bench bench;
    const FixtureEncryption crypt(encryptedWith(4, 4, 16, FixtureCipher::aes128));
    const auto text = [](const Writer& writer) {
        const std::string update =
            "{{object 6 0}}\n" + writer.string(6, "updated") +
            "\nendobj\n{{xref}}\ntrailer\n<< /Size {{size}} /Root 1 0 R /Prev "
            "{{prev}} " +
            writer.trailerEntries() + " >>\n{{startxref}}\n%%EOF\n";
        return pageWrittenBy(writer, "/A 6 0 R /B 7 0 R",
                             "{{object 6 0}}\n" + writer.string(6, "old") +
                                 "\nendobj\n{{object 7 0}}\n" + writer.string(7, "kept") +
                                 "\nendobj\n") +
               update;
    };
    expectSame(bench, text(Writer(crypt)), text(Writer()));
}

}  // namespace
}  // namespace quirebind::pdftest
