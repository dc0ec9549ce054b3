// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// The published test vectors: RFC 1321, FIPS 180-4, NIST SP 800-38A (F.2), and those commonly given
// for RC4.

#include <string>

#include <gtest/gtest.h>

#include "Platform/PDF/Encryption/Ciphers.h"
#include "Tests/Platform/PDF/Encryption/EncryptionTestSupport.h"

namespace quirebind::pdftest {
namespace {

const std::string_view kPlain =
    "6bc1bee22e409f96e93d7e117393172aae2d8a571e03ac9c9eb76fac45af8e51"
    "30c81c46a35ce411e5fbc1191a0a52eff69f2445df4f9b17ad2b417be66c3710";
const std::string_view kInitial = "000102030405060708090a0b0c0d0e0f";
const std::string_view kKey128 = "2b7e151628aed2a6abf7158809cf4f3c";
const std::string_view kCipher128 =
    "7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2"
    "73bed6b8e3c1743b7116e69e222295163ff1caa1681fac09120eca307586e1a7";
const std::string_view kKey256 = "603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4";
const std::string_view kCipher256 =
    "f58c4c04d6e5f1ba779eabfb5f7bfbd69cfc4e967edb808d679f777bc6702c7d"
    "39f23369a9d9bacfa530e26304231461b2eb05e2c39be9fcda6c19078c6a9d1b";

std::string withRC4(std::string_view key, std::string data) {
    RC4(key).apply(data);
    return data;
}

std::string withAES(std::string_view key, std::string_view data) {
    std::string result = fromHex(data);
    AESDecryption(fromHex(key)).apply(fromHex(kInitial), result);
    return result;
}

TEST(Hashes, areThePublishedOnes) {
    EXPECT_EQ(md5(""), fromHex("d41d8cd98f00b204e9800998ecf8427e"));
    EXPECT_EQ(md5("abc"), fromHex("900150983cd24fb0d6963f7d28e17f72"));
    EXPECT_EQ(sha256("abc"),
              fromHex("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"));
    EXPECT_EQ(sha384("abc"), fromHex("cb00753f45a35e8bb5a03d699ac65007272c32ab0eded163"
                                     "1a8b605a43ff5bed8086072ba1e7cc2358baeca134c825a7"));
    EXPECT_EQ(sha512("abc"),
              fromHex("ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
                      "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f"));
}

TEST(Ciphers, decryptRC4) {
    EXPECT_EQ(withRC4("Key", "Plaintext"), fromHex("bbf316e8d940af0ad3"));
    EXPECT_EQ(withRC4("Wiki", "pedia"), fromHex("1021bf0420"));
    EXPECT_EQ(withRC4("Key", ""), "");
}

TEST(Ciphers, beginRC4AnewForEveryString) {
    const RC4 cipher("Key");
    for (int i = 0; i < 2; ++i) {
        std::string data = fromHex("bbf316e8d940af0ad3");
        cipher.apply(data);
        EXPECT_EQ(data, "Plaintext");
    }
}

TEST(Ciphers, decryptAES128) {
    EXPECT_EQ(withAES(kKey128, kCipher128), fromHex(kPlain));
    EXPECT_EQ(withAES(kKey128, ""), "");
}

TEST(Ciphers, decryptAES256) {
    EXPECT_EQ(withAES(kKey256, kCipher256), fromHex(kPlain));
}

TEST(Ciphers, encryptAES128) {
    EXPECT_EQ(encryptAES128(fromHex(kKey128), fromHex(kInitial), fromHex(kPlain)),
              fromHex(kCipher128));
}

}  // namespace
}  // namespace quirebind::pdftest
