// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Documents that need a password, and hostile ones that say they are encrypted.

#include <algorithm>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "Platform/PDF/PDFDocument.h"
#include "Tests/Platform/PDF/Encryption/EncryptedFixtures.h"

namespace quirebind::pdftest {
namespace {

using test::FixtureCipher;
using test::FixtureEncryption;

/// A document with that under /Encrypt.
std::string encryptedBy(const std::string& entry, const std::string& objects = "") {
    return replaced(onePageWith(objects), "/Root 1 0 R",
                    "/Root 1 0 R /ID [<61> <61>] /Encrypt " + entry);
}

std::optional<bool> isFixtureLocked(const Bench& bench, const std::string& text) {
    return isLocked(bench.fixture("a.pdf", text));
}

TEST(LockedDocument, saysSoAndNothingElse) {
    const Bench bench;
    for (test::FixtureEncryptionOptions options : everyEncryption()) {
        options.userPassword = "user";
        options.ownerPassword = "owner";
        const FixtureEncryption crypt(options);
        const std::string path = bench.fixture("a.pdf", pageWrittenBy(Writer(crypt), ""));
        const auto source = PDFDocument::open(URL::file(path));
        if (!source || !source->isLocked()) {
            ADD_FAILURE() << ::testing::PrintToString(options);
            continue;
        }
        EXPECT_EQ(source->pageCount(), 0U);
        EXPECT_FALSE(source->pageAtIndex(0));
    }
}

TEST(LockedDocument, isOneOfAnotherHandler) {
    const Bench bench;
    EXPECT_EQ(isFixtureLocked(bench, encryptedBy("<< /Filter /Adobe.PubSec /V 4 >>")), true);
    EXPECT_EQ(
        isFixtureLocked(bench, encryptedBy("9 0 R", "{{object 9 0}} << /Filter /X >> endobj\n")),
        true);
    EXPECT_EQ(isFixtureLocked(bench, encryptedBy("<< >>")), true);
}

TEST(LockedDocument, isNotOneWithoutADictionary) {
    const Bench bench;
    EXPECT_EQ(isFixtureLocked(bench, encryptedBy("null")), false);
    EXPECT_EQ(isFixtureLocked(bench, encryptedBy("9 0 R")), false);
    EXPECT_EQ(isFixtureLocked(bench, encryptedBy("9 0 R", "{{object 9 0}} null endobj\n")), false);
}

TEST(LockedDocument, isOneOfWhichNobodyKnowsHowItIsEncrypted) {
    const Bench bench;
    EXPECT_EQ(
        isFixtureLocked(bench, "trailer << <> /Encrypt 9 0 R >>\n9 0 obj << /Filter /Standard"),
        true);
    EXPECT_EQ(isFixtureLocked(bench, encryptedBy("9 0 R", "{{object 9 0}} << /Filter ]\n")), true);
}

TEST(LockedDocument, isNotOneThatIsDamaged) {
    const Bench bench;
    EXPECT_EQ(isFixtureLocked(bench, encryptedBy("5")), std::nullopt);
    EXPECT_EQ(isFixtureLocked(bench, encryptedBy("[<< /Filter /Standard >>]")), std::nullopt);
    EXPECT_EQ(isFixtureLocked(bench, encryptedBy("(Standard)")), std::nullopt);
    EXPECT_EQ(isFixtureLocked(bench, encryptedBy("<< /Filter /Standard /V 2 /R 3 >>")),
              std::nullopt);
}

TEST(HostileEncryption, referencesThatLeadBack) {
    const Bench bench;
    const std::string loops =
        "{{object 9 0}} 9 0 R endobj\n{{object 10 0}} << /StdCF 11 0 R >> endobj\n"
        "{{object 11 0}} 10 0 R endobj\n{{object 12 0}} [12 0 R] endobj\n";
    const FixtureEncryption crypt(encryptedWith(4, 4, 16, FixtureCipher::aes128));
    const std::string good = crypt.dictionary();
    static_cast<void>(isFixtureLocked(bench, encryptedBy("9 0 R", loops)));
    for (const std::string key : {"/Filter", "/V", "/R", "/O", "/U", "/P", "/CF", "/StmF", "/StrF"})
        for (const std::string to : {"9", "10", "11", "12", "1", "4", "99"})
            static_cast<void>(isFixtureLocked(
                bench,
                encryptedBy(replaced(good, key,
                                     std::string(key).append(" ").append(to).append(" 0 R /Was")),
                            loops)));
}

TEST(HostileEncryption, dictionaryInAnObjectStream) {
    const Bench bench;
    const FixtureEncryption crypt({});
    const std::string text(kOnePage);
    const std::string packed = replaced(
        "{{header 1.5}}\n" + text + "{{objectstream 8 0}}\n{{object 9}}\n" + crypt.dictionary() +
            "\n{{endobjectstream}}\n{{xrefstream 99 0}}\n/Root 1 0 R /Encrypt 9 0 R /ID " +
            crypt.identifier() + "\n{{endxrefstream}}\n{{startxref}}\n%%EOF\n",
        "/MediaBox", "/Again 9 0 R /MediaBox");
    // Only what is in clear can be read before there is a key.
    EXPECT_EQ(isFixtureLocked(bench, packed), false);
    static_cast<void>(bench.tryMerge({bench.fixture("a.pdf", packed)}));
}

TEST(HostileEncryption, entriesOfMegabytes) {
    const Bench bench;
    const std::string large = "/U <" + std::string(std::size_t{2} << 20U, '7') + "> /Was";
    for (const auto& options : {encryptedWith(2, 3, 16, FixtureCipher::rc4),
                                encryptedWith(5, 6, 32, FixtureCipher::aes256)}) {
        const FixtureEncryption crypt(options);
        EXPECT_EQ(isFixtureLocked(bench, encryptedBy(replaced(crypt.dictionary(), "/U", large))),
                  true);
    }
}

TEST(HostileEncryption, manyCryptFilters) {
    const Bench bench;
    const FixtureEncryption crypt(encryptedWith(4, 4, 16, FixtureCipher::aes128));
    std::string filters;
    for (int i = 0; i < 100'000; ++i) filters += "/F" + std::to_string(i) + "<</CFM/V2>>";
    const std::string text =
        replaced(pageWrittenBy(Writer(crypt), ""), "/CF <<", "/CF <<" + filters);
    expectPages(bench.mergeFixture(text), {200}, {"one"});
}

// Each reference to it makes us decrypt it again.
TEST(HostileEncryption, manyReferencesToALargeString) {
    const Bench bench;
    const FixtureEncryption crypt(encryptedWith(4, 4, 16, FixtureCipher::aes128));
    const Writer writer(crypt);
    std::string kids;
    for (int i = 0; i < 20'000; ++i) kids += "3 0 R ";
    std::string text = pageWrittenBy(
        writer, "/Large " + writer.string(3, std::string(std::size_t{1} << 20U, 'x')));
    text = replaced(text, "/Kids [3 0 R]", "/Kids [" + kids + "]");
    EXPECT_FALSE(bench.tryMerge({bench.fixture("a.pdf", text)}));
}

TEST(HostileEncryption, manyReferencesFromOneObject) {
    const Bench bench;
    const FixtureEncryption crypt(encryptedWith(4, 4, 16, FixtureCipher::aes128));
    const Writer writer(crypt);
    std::string filters;
    for (int i = 0; i < 20'000; ++i) filters += " 7 0 R";
    const std::string text =
        pageWrittenBy(writer, "/Here 6 0 R",
                      writer.stream(6, "/Filter [" + filters + "]", "body") + "{{object 7 0}}\n" +
                          writer.string(7, std::string(std::size_t{1} << 20U, 'x')) + "\nendobj\n");
    EXPECT_FALSE(bench.tryMerge({bench.fixture("a.pdf", text)}));
}

TEST(HostileEncryption, deeplyNestedStrings) {
    const Bench bench;
    const FixtureEncryption crypt({});
    std::string deep;
    for (int i = 0; i < 90; ++i) deep += i % 2 == 0 ? "[" : "<</Contents";
    deep += crypt.string(3, 0, "deep");
    for (int i = 89; i >= 0; --i) deep += i % 2 == 0 ? "]" : "/ByteRange[]>>";
    expectPages(bench.mergeFixture(pageWrittenBy(Writer(crypt), "/Deep " + deep)), {200}, {"one"});
}

/// Merges a document with every byte of its encryption dictionary replaced by others, one at a
/// time.
void expectAnEndWithAnyByteWrong(const test::FixtureEncryptionOptions& options) {
    const Bench bench;
    const FixtureEncryption crypt(options);
    const std::string good = test::fixturePDF(pageWrittenBy(Writer(crypt), ""));
    const std::size_t begin = good.find("/Filter /Standard");
    ASSERT_NE(begin, std::string::npos);
    const std::size_t end = good.find("endobj", begin);
    for (std::size_t at = begin; at < end; ++at) {
        for (const char wrong : {'\0', '9', '>', '('}) {
            std::string bytes = good;
            bytes[at] = wrong;
            static_cast<void>(bench.tryMerge({bench.add("wrong.pdf", bytes)}));
        }
    }
}

TEST(HostileEncryption, anyByteOfTheDictionaryWrong) {
    expectAnEndWithAnyByteWrong(encryptedWith(2, 3, 16, FixtureCipher::rc4));
    expectAnEndWithAnyByteWrong(encryptedWith(4, 4, 16, FixtureCipher::aes128));
    expectAnEndWithAnyByteWrong(encryptedWith(5, 5, 32, FixtureCipher::aes256));
}

}  // namespace
}  // namespace quirebind::pdftest
