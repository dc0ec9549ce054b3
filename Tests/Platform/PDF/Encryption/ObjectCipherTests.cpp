// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Single strings and bodies, and above all those that are not as they should be.

#include <string>

#include <gtest/gtest.h>

#include "Platform/PDF/Encryption/KeyDerivation.h"
#include "Platform/PDF/Encryption/ObjectCipher.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Tests/Support/FixtureEncryption.h"

namespace quirebind::pdftest {
namespace {

constexpr Reference kObject{7, 3};
constexpr std::size_t kBlock = 16;

test::FixtureEncryption encryption(test::FixtureCipher cipher) {
    test::FixtureEncryptionOptions options;
    options.cipher = cipher;
    if (cipher == test::FixtureCipher::aes256) {
        options.version = 5;
        options.revision = 6;
        options.keyBytes = 32;
    }
    return test::FixtureEncryption(options);
}

class AESData : public ::testing::TestWithParam<CryptMethod> {
 protected:
    AESData()
        : crypt_(encryption(GetParam() == CryptMethod::aes128 ? test::FixtureCipher::aes128
                                                              : test::FixtureCipher::aes256)),
          cipher_(GetParam(), crypt_.fileKey(), kObject) {}

    [[nodiscard]] std::string encrypted(const std::string& data) const {
        return crypt_.encrypt(kObject.number, kObject.generation, data);
    }
    /// The same without the padding, which makes up a block of its own.
    [[nodiscard]] std::string unpadded(const std::string& blocks) const {
        EXPECT_EQ(blocks.size() % kBlock, 0U);
        const std::string whole = encrypted(blocks);
        return whole.substr(0, whole.size() - kBlock);
    }
    [[nodiscard]] const ObjectCipher& cipher() const { return cipher_; }

 private:
    test::FixtureEncryption crypt_;
    ObjectCipher cipher_;
};

TEST_P(AESData, isDecryptedAtAnyLength) {
    for (std::size_t length = 0; length < 100; ++length) {
        const std::string plain(length, 'x');
        EXPECT_EQ(cipher().decrypt(encrypted(plain)), plain);
    }
}

TEST_P(AESData, thatIsEmptyIsEmpty) {
    EXPECT_EQ(cipher().decrypt(""), "");
}

TEST_P(AESData, thatHasNoBlockIsEmpty) {
    for (std::size_t length = 1; length < 2 * kBlock; ++length)
        EXPECT_EQ(cipher().decrypt(std::string(length, 'x')), "") << length;
}

TEST_P(AESData, isDecryptedAsFarAsItIsWhole) {
    const std::string whole = encrypted("sixteen bytes.. and twenty-two more..");
    for (std::size_t more = 1; more < kBlock; ++more)
        EXPECT_EQ(cipher().decrypt(whole + std::string(more, '\n')),
                  "sixteen bytes.. and twenty-two more..");
    EXPECT_EQ(cipher().decrypt(whole.substr(0, whole.size() - 1)),
              "sixteen bytes.. and twenty-two m");
}

TEST_P(AESData, keepsWhatIsNoPadding) {
    for (const std::string& blocks :
         {std::string("sixteen letters."), std::string(15, 'x') + '\x11',
          std::string(15, 'x') + '\0', std::string(14, 'x') + "\x03\x03",
          std::string(15, 'x') + '\x02', std::string(16, '\0')})
        EXPECT_EQ(cipher().decrypt(unpadded(blocks)), blocks);
}

TEST_P(AESData, losesPaddingOfAWholeBlock) {
    EXPECT_EQ(cipher().decrypt(unpadded(std::string(16, '\x10'))), "");
    EXPECT_EQ(cipher().decrypt(unpadded(std::string(15, 'x') + '\x01')), std::string(15, 'x'));
}

INSTANTIATE_TEST_SUITE_P(All, AESData, ::testing::Values(CryptMethod::aes128, CryptMethod::aes256));

TEST(ObjectCipher, decryptsRC4) {
    const auto crypt = encryption(test::FixtureCipher::rc4);
    const ObjectCipher cipher(CryptMethod::rc4, crypt.fileKey(), kObject);
    for (const std::string plain : {"", "a", "some more bytes than a block has"})
        EXPECT_EQ(cipher.decrypt(crypt.encrypt(7, 3, plain)), plain);
    EXPECT_NE(cipher.decrypt(crypt.encrypt(7, 0, "other generation")), "other generation");
    EXPECT_NE(cipher.decrypt(crypt.encrypt(8, 3, "other number")), "other number");
}

TEST(ObjectCipher, leavesAloneWhatIsNotEncrypted) {
    EXPECT_EQ(ObjectCipher(CryptMethod::identity, "key", kObject).decrypt("as it is"), "as it is");
}

TEST(ObjectCipher, refusesAnUnknownMethod) {
    EXPECT_THROW(ObjectCipher(CryptMethod::unknown, "key", kObject), DamagedDocument);
}

}  // namespace
}  // namespace quirebind::pdftest
