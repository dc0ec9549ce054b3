// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Which encryption dictionaries open without a password, which stay locked, and which are damaged.

#include <array>
#include <ostream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Platform/PDF/Encryption/StandardSecurityHandler.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/PDFDocument.h"
#include "Tests/Platform/PDF/Encryption/EncryptedFixtures.h"

namespace quirebind::pdftest {
namespace {

using test::FixtureCipher;
using test::FixtureEncryption;
using test::FixtureEncryptionOptions;

enum class Outcome : std::uint8_t { opened, locked, damaged };

// NOLINTNEXTLINE(readability-identifier-naming): GoogleTest finds it by this name.
void PrintTo(Outcome outcome, std::ostream* out) {
    constexpr std::array<std::string_view, 3> kNames{"opened", "locked", "damaged"};
    *out << kNames.at(static_cast<std::size_t>(outcome));
}

/// As for a document in which every reference leads nowhere.
Value direct(Value value) {
    return value.reference() ? Value() : value;
}

Outcome outcomeOf(const std::string& dictionary, const std::string& identifier) {
    try {
        return openWithoutPassword(Value(dictionary), Value(identifier), direct) ? Outcome::opened
                                                                                 : Outcome::locked;
    } catch (const DamagedDocument&) {
        return Outcome::damaged;
    }
}

Outcome outcomeOf(const FixtureEncryptionOptions& options) {
    const FixtureEncryption crypt(options);
    return outcomeOf(crypt.dictionary(), crypt.identifier());
}

/// With one thing in the dictionary written otherwise.
Outcome outcomeOf(const FixtureEncryptionOptions& options, const std::string& what,
                  const std::string& with) {
    const FixtureEncryption crypt(options);
    return outcomeOf(replaced(crypt.dictionary(), what, with), crypt.identifier());
}

const FixtureEncryptionOptions kRC4 = encryptedWith(2, 3, 16, FixtureCipher::rc4);
const FixtureEncryptionOptions kAES = encryptedWith(4, 4, 16, FixtureCipher::aes128);
const FixtureEncryptionOptions kAES256 = encryptedWith(5, 6, 32, FixtureCipher::aes256);

/// The entry with that key, of whatever value, in the dictionary that the options make.
std::string entryOf(const FixtureEncryptionOptions& options, const std::string& key) {
    const std::string text = FixtureEncryption(options).dictionary();
    const std::string value(Value(text).find(key).text());
    return "/" + key + " " + value;
}

TEST(SecurityHandler, opensEveryEncryption) {
    for (const FixtureEncryptionOptions& options : everyEncryption())
        EXPECT_EQ(outcomeOf(options), Outcome::opened) << ::testing::PrintToString(options);
}

TEST(SecurityHandler, staysLockedWhereThereIsAPassword) {
    for (FixtureEncryptionOptions options : everyEncryption()) {
        options.userPassword = "user";
        options.ownerPassword = "owner";
        EXPECT_EQ(outcomeOf(options), Outcome::locked) << ::testing::PrintToString(options);
    }
}

// Even if nothing but attached files is encrypted: they could not be copied.
TEST(SecurityHandler, staysLockedWhereFilesHaveAPassword) {
    FixtureEncryptionOptions options = kAES256;
    options.userPassword = "user";
    options.streams = "Identity";
    options.strings = "Identity";
    options.files = "StdCF";
    EXPECT_EQ(outcomeOf(options), Outcome::locked);
}

TEST(SecurityHandler, doesNotBelieveLengths) {
    for (const auto& options : {kRC4, encryptedWith(1, 2, 5, FixtureCipher::rc4),
                                encryptedWith(2, 3, 11, FixtureCipher::rc4), kAES, kAES256}) {
        const std::string length = "/Length " + std::to_string(8 * options.keyBytes) + " /P";
        for (const std::string wrong :
             {"", "/Length 16", "/Length 5", "/Length 40", "/Length 128", "/Length 0",
              "/Length -128", "/Length 129", "/Length 4294967304", "/Length /A", "/Length 9 0 R"})
            EXPECT_EQ(outcomeOf(options, length, wrong + " /P"), Outcome::opened) << wrong;
    }
}

TEST(SecurityHandler, doesNotAskTheLengthOfACryptFilter) {
    for (const std::string length : {"", "/Length 128", "/Length 5", "/Length (a)", "/Length 999"})
        EXPECT_EQ(outcomeOf(kAES, "/Length 16", length), Outcome::opened) << length;
}

TEST(SecurityHandler, takesPermissionsAsTheirBits) {
    EXPECT_EQ(outcomeOf(kRC4, "/P -44", "/P 4294967252"), Outcome::opened);
    EXPECT_EQ(outcomeOf(kRC4, "/P -44", "/P -44.0"), Outcome::opened);
    EXPECT_EQ(outcomeOf(kAES256, "/P -44", ""), Outcome::opened);
    FixtureEncryptionOptions none = kRC4;
    none.permissions = 0;
    EXPECT_EQ(outcomeOf(none, "/P 0", ""), Outcome::opened);
}

TEST(SecurityHandler, takesAMissingIdentifierForAnEmptyOne) {
    FixtureEncryptionOptions options = kRC4;
    options.identifier = "";
    const FixtureEncryption crypt(options);
    for (const std::string identifier :
         {"", "null", "[]", "[()]", "[<> <>]", "[5]", "5", "[", "<61>", "[9 0 R]"})
        EXPECT_EQ(outcomeOf(crypt.dictionary(), identifier), Outcome::opened) << identifier;
    EXPECT_EQ(outcomeOf(FixtureEncryption(kRC4).dictionary(), ""), Outcome::locked);
    EXPECT_EQ(outcomeOf(FixtureEncryption(kAES256).dictionary(), ""), Outcome::opened);
}

TEST(SecurityHandler, takesEntriesThatAreTooLong) {
    for (const auto& options : {kRC4, kAES, kAES256}) {
        for (const std::string key : {"O", "U"}) {
            const std::string entry = entryOf(options, key);
            const std::string longer = entry.substr(0, entry.size() - 1) + std::string(158, '0');
            EXPECT_EQ(outcomeOf(options, entry, longer + ">"), Outcome::opened) << key;
        }
    }
}

TEST(SecurityHandler, takesZerosThatAreCutOff) {
    const FixtureEncryptionOptions options = encryptedWith(1, 2, 5, FixtureCipher::rc4);
    FixtureEncryptionOptions changing = options;
    // Some owner's password gives an /O that ends in zero.
    for (int i = 0; i < 10'000; ++i) {
        changing.ownerPassword = std::to_string(i);
        const std::string entry = entryOf(changing, "O");
        if (!entry.ends_with("00>")) continue;
        EXPECT_EQ(outcomeOf(changing, entry, entry.substr(0, entry.size() - 3) + ">"),
                  Outcome::opened);
        return;
    }
    FAIL() << "no such password";
}

TEST(SecurityHandler, staysLockedWhereEntriesAreTooShort) {
    for (const auto& options : {kRC4, kAES, kAES256}) {
        for (const std::string key : {"O", "U"}) {
            if (key == "O" && options.version == 5) continue;  // the owner's alone
            const std::string entry = entryOf(options, key);
            EXPECT_EQ(outcomeOf(options, entry, "/" + key + " ()"), Outcome::locked);
            EXPECT_EQ(outcomeOf(options, entry, entry.substr(0, 12) + ">"), Outcome::locked);
        }
    }
    const std::string entry = entryOf(kAES256, "UE");
    EXPECT_EQ(outcomeOf(kAES256, entry, entry.substr(0, entry.size() - 3) + ">"), Outcome::locked);
    EXPECT_EQ(outcomeOf(kAES256, entry, ""), Outcome::locked);
}

// The password fits all the same, but the key would turn every page into garbage.
TEST(SecurityHandler, staysLockedWhereTheFileKeyIsTooLong) {
    const std::string entry = entryOf(kAES256, "UE");
    const std::string start = entry.substr(0, entry.size() - 1);
    EXPECT_EQ(outcomeOf(kAES256, entry, start + "a7>"), Outcome::locked);
    EXPECT_EQ(outcomeOf(kAES256, entry, start + "0000>"), Outcome::opened);
}

TEST(SecurityHandler, isDamagedWithoutItsEntries) {
    for (const auto& options : {kRC4, kAES, kAES256}) {
        for (const std::string key : {"O", "U"}) {
            const std::string entry = entryOf(options, key);
            EXPECT_EQ(outcomeOf(options, entry, ""), Outcome::damaged) << key;
            for (const std::string_view value : {"null", "5", "/A", "[(a)]", "<< >>", "9 0 R"})
                EXPECT_EQ(outcomeOf(options, entry, ("/" + key + " ").append(value)),
                          Outcome::damaged)
                    << key << value;
        }
    }
}

TEST(SecurityHandler, staysLockedWhereTheHandlerIsNotTheStandardOne) {
    for (const std::string filter : {"/Filter /Adobe.PubSec", "/Filter /Entrust.PPKEF",
                                     "/Filter (Standard)", "/Filter 9 0 R", ""})
        EXPECT_EQ(outcomeOf(kRC4, "/Filter /Standard", filter), Outcome::locked) << filter;
}

TEST(SecurityHandler, staysLockedInVersionsThatAreNotKnown) {
    for (const std::string version : {"/V 0", "/V 3", "/V 6", "/V -1", "/V 5", "/V 4294967298",
                                      "/V /A", "/V null", "/V 2.5", ""})
        EXPECT_EQ(outcomeOf(kRC4, "/V 2", version), Outcome::locked) << version;
    for (const std::string revision :
         {"/R 0", "/R 1", "/R 5", "/R 6", "/R 7", "/R -3", "/R 4294967299", "/R (3)", ""})
        EXPECT_EQ(outcomeOf(kRC4, "/R 3", revision), Outcome::locked) << revision;
    for (const std::string revision : {"/R 2", "/R 3", "/R 4", "/R 7"})
        EXPECT_EQ(outcomeOf(kAES256, "/R 6", revision), Outcome::locked) << revision;
}

TEST(SecurityHandler, staysLockedWhereTheRevisionIsAnother) {
    EXPECT_EQ(outcomeOf(kRC4, "/R 3", "/R 2"), Outcome::locked);
    EXPECT_EQ(outcomeOf(kAES256, "/R 6", "/R 5"), Outcome::locked);
}

TEST(SecurityHandler, staysLockedWhereTheMethodIsNotKnown) {
    for (const std::string method : {"/AESV3", "/AESV4", "/Secret", "(AESV2)", "5"})
        EXPECT_EQ(outcomeOf(kAES, "/AESV2", method), Outcome::locked) << method;
    for (const std::string method : {"/AESV2", "/V2", "/AESV4"})
        EXPECT_EQ(outcomeOf(kAES256, "/AESV3", method), Outcome::locked) << method;
}

TEST(SecurityHandler, isDamagedWhereACryptFilterIsNotDefined) {
    EXPECT_EQ(outcomeOf(kAES, "/StmF /StdCF", "/StmF /Other"), Outcome::damaged);
    EXPECT_EQ(outcomeOf(kAES, "/StrF /StdCF", "/StrF /Other"), Outcome::damaged);
    EXPECT_EQ(outcomeOf(kAES, "/StrF /StdCF", "/StrF (StdCF)"), Outcome::damaged);
    EXPECT_EQ(outcomeOf(kAES, "/StrF /StdCF", "/StrF 5"), Outcome::damaged);
    const std::string filters = entryOf(kAES, "CF");
    for (const std::string other : {"", "/CF null", "/CF 5", "/CF []", "/CF << >>", "/CF 9 0 R"})
        EXPECT_EQ(outcomeOf(kAES, filters, other), Outcome::damaged) << other;
}

TEST(SecurityHandler, doesWithoutFiltersThatAreNotUsed) {
    EXPECT_EQ(outcomeOf(kAES, "/StmF /StdCF", "/StmF /StdCF /EFF /Other"), Outcome::opened);
    EXPECT_EQ(outcomeOf(kAES, "/CF <<", "/CF << /Other 5 /Third /StdCF"), Outcome::opened);
    EXPECT_EQ(outcomeOf(kAES, "/StmF /StdCF /StrF /StdCF", ""), Outcome::opened);
}

}  // namespace
}  // namespace quirebind::pdftest
