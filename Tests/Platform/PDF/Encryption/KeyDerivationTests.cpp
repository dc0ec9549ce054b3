// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

// Keys of documents that qpdf encrypted, as qpdf itself says them; and what a few lines of another
// language make of the algorithms.

#include <array>
#include <numeric>
#include <string>

#include <gtest/gtest.h>

#include "Platform/PDF/Encryption/KeyDerivation.h"
#include "Tests/Platform/PDF/Encryption/EncryptionTestSupport.h"

namespace quirebind::pdftest {
namespace {

constexpr std::array<std::size_t, 1> k40Bits{5};
constexpr std::array<std::size_t, 1> k128Bits{16};

PasswordEntries entries(int revision, std::string_view owner, std::string_view user) {
    PasswordEntries result;
    result.revision = revision;
    result.owner = fromHex(owner);
    result.user = fromHex(user);
    result.permissions = 0xfffffffc;
    result.documentID = fromHex("10c922017c8d1993311dcad17ffc390b");
    return result;
}

/// With the owner's password "owner" and no user's.
PasswordEntries entriesOf40Bits() {
    return entries(2, "c92422687facee686e373f10b5c7d04738053152f7e2ee30e11c69ec442576ab",
                   "2cb76443a2a953e9f109981dbf0bb2a1a66ea09d5494a20325fabee40f2dde85");
}

PasswordEntries entriesOf128Bits() {
    return entries(3, "566fa873ee33c797cd3b904fdadf814afa34df9a38f6ed41b984e2c6da2aa6f5",
                   "a90f218098f6f6dc55edea2de5542db20122456a91bae5134273a6db134c87c4");
}

PasswordEntries entriesWithClearMetadata() {
    PasswordEntries result =
        entries(4, "566fa873ee33c797cd3b904fdadf814afa34df9a38f6ed41b984e2c6da2aa6f5",
                "9f45048b79db6ecec53c07c7232e38d10122456a91bae5134273a6db134c87c4");
    result.encryptsMetadata = false;
    return result;
}

PasswordEntries entriesOfRevision5() {
    PasswordEntries result = entries(5,
                                     "94c5c5053ae267cbfa53c224c4396febb6d4a8858f3eabf5"
                                     "ceb25094c062344f181f78e54d64d2f186c0a6498a59e31d",
                                     "daa3694e625894701962dec3d69a770a54874ba92bcdc9fe"
                                     "3772b38bed8ab31456858864a2084cab366544b5204a2722");
    result.ownerKey = fromHex("0453ec94342a4b5b7b3fc54ffc4895c03c0e87fa95b80a95072e99812db82579");
    result.userKey = fromHex("3bfdb749363407bb9e95a6d562dec4a80d169e3ab2cd7e6900f908aeee86da26");
    return result;
}

PasswordEntries entriesOfRevision6() {
    PasswordEntries result = entries(6,
                                     "30ff28fd7e1631ac476f857a95cb7abb6dae499da72d7638"
                                     "815eb14111dbc74d3af8ddde8e902870bfb2e04bcaf45261",
                                     "032d811e61725951f9121d21788b757d8822726908b4e27a"
                                     "c060e37c013512035020637a7236cbb791818b14045f88c3");
    result.ownerKey = fromHex("874ce02e29fe0dd0300c96b00e09904cfd1da326bb57cd0d8d46ca660e84eba4");
    result.userKey = fromHex("0c38dd8e402c4253c7d8f2ebc44a4eb677faeacda83f26176ab678937e5c0169");
    return result;
}

TEST(FileKey, isDerivedWith40Bits) {
    for (const std::string password : {"", "owner"})
        EXPECT_EQ(fileKeyByMD5(password, entriesOf40Bits(), k40Bits), fromHex("0adc784bdf"));
    EXPECT_FALSE(fileKeyByMD5("other", entriesOf40Bits(), k40Bits));
    EXPECT_FALSE(fileKeyByMD5("", entriesOf40Bits(), k128Bits));
}

TEST(FileKey, isDerivedWith128Bits) {
    for (const std::string password : {"", "owner"})
        EXPECT_EQ(fileKeyByMD5(password, entriesOf128Bits(), k128Bits),
                  fromHex("a4d7a536ad646825bb8d0c7c5d9f1723"));
    EXPECT_FALSE(fileKeyByMD5("other", entriesOf128Bits(), k128Bits));
    EXPECT_FALSE(fileKeyByMD5("", entriesOf128Bits(), k40Bits));
}

TEST(FileKey, isTheOneOfTheLengthAtWhichThePasswordFits) {
    constexpr std::array<std::size_t, 4> kSome{5, 15, 16, 6};
    EXPECT_EQ(fileKeyByMD5("", entriesOf128Bits(), kSome),
              fromHex("a4d7a536ad646825bb8d0c7c5d9f1723"));
    EXPECT_EQ(fileKeyByMD5("", entriesOf40Bits(), kSome), fromHex("0adc784bdf"));
}

TEST(FileKey, isDerivedWithMetadataInClear) {
    EXPECT_EQ(fileKeyByMD5("", entriesWithClearMetadata(), k128Bits),
              fromHex("96aac059a622fe510b357de14617b754"));
    PasswordEntries wrong = entriesWithClearMetadata();
    wrong.encryptsMetadata = true;
    EXPECT_FALSE(fileKeyByMD5("", wrong, k128Bits));
}

TEST(FileKey, isDerivedInRevision5) {
    for (const std::string password : {"", "owner"})
        EXPECT_EQ(fileKeyBySHA(password, entriesOfRevision5()),
                  fromHex("77dd948afdae17b2b7b2a3b09514e3ff121800aa97abd3209e5563c1f0c7484a"));
    EXPECT_FALSE(fileKeyBySHA("other", entriesOfRevision5()));
}

TEST(FileKey, isDerivedInRevision6) {
    for (const std::string password : {"", "owner"})
        EXPECT_EQ(fileKeyBySHA(password, entriesOfRevision6()),
                  fromHex("c6593edae2952d0361a3d059ca0a9e889d67c5fedf52bbf843287709338b0a5b"));
    EXPECT_FALSE(fileKeyBySHA("other", entriesOfRevision6()));
}

TEST(FileKey, doesNotAskWhatFollowsTheEntries) {
    PasswordEntries padded = entriesOfRevision6();
    padded.user += std::string(79, '\0');
    padded.owner += std::string(79, 'x');
    padded.userKey += std::string(95, '\0');
    EXPECT_TRUE(fileKeyBySHA("", padded));
    EXPECT_TRUE(fileKeyBySHA("owner", padded));
    PasswordEntries old = entriesOf128Bits();
    old.owner += "more";
    old.user = old.user.substr(0, 16) + "sixteen others..and more";
    EXPECT_TRUE(fileKeyByMD5("", old, k128Bits));
    EXPECT_TRUE(fileKeyByMD5("owner", old, k128Bits));
}

TEST(FileKey, isNotGivenWhereEntriesAreTooShort) {
    for (const std::size_t length : {0U, 1U, 31U, 40U, 47U}) {
        PasswordEntries cut = entriesOfRevision6();
        cut.user.resize(length);
        EXPECT_FALSE(fileKeyBySHA("", cut)) << length;
        cut = entriesOfRevision6();
        cut.owner.resize(length);
        EXPECT_FALSE(fileKeyBySHA("owner", cut)) << length;
        EXPECT_TRUE(fileKeyBySHA("", cut)) << length;
    }
    for (const std::size_t length : {0U, 1U, 31U}) {
        PasswordEntries cut = entriesOfRevision6();
        cut.userKey.resize(length);
        EXPECT_FALSE(fileKeyBySHA("", cut)) << length;
        cut = entriesOf128Bits();
        cut.owner.resize(length);
        EXPECT_FALSE(fileKeyByMD5("", cut, k128Bits)) << length;
    }
    PasswordEntries cut = entriesOf128Bits();
    cut.user.resize(15);
    EXPECT_FALSE(fileKeyByMD5("", cut, k128Bits));
}

std::string zeroTo(int end) {
    std::string result(static_cast<std::size_t>(end), '\0');
    std::iota(result.begin(), result.end(), '\0');
    return result;
}

TEST(HardenedHash, isWhatTheAlgorithmSays) {
    EXPECT_EQ(hardenedHash("", "", ""),
              fromHex("e825c1720943863282ae4cd80df41c285b89678dc3d79533204d9e6a88cf5113"));
    EXPECT_EQ(hardenedHash("saltsalt", "", ""),
              fromHex("f383e1cdcd8e7e67f45a599473d3f5a7bd181c381364391074cafe0713e3331d"));
    EXPECT_EQ(hardenedHash("password12345678", "password", ""),
              fromHex("0bad081f344ebb88e92cd414d1e5c0232655b6dd2f0de7367481133f0551fa27"));
    EXPECT_EQ(hardenedHash("owner12345678" + zeroTo(48), "owner", zeroTo(48)),
              fromHex("16b37367f6acf5352ae1abc136f1be170a4309d616cbde5d2e6968d54cfc8dfd"));
}

TEST(ObjectKey, isMadeFromNumberAndGeneration) {
    const std::string key = fromHex("0123456789");
    EXPECT_EQ(objectKey(key, {7, 0}, false), fromHex("2b63ce486176a9ae4bf0"));
    EXPECT_EQ(objectKey(key, {0x123456, 0x0102}, false), fromHex("79dc33fd0777a426ff1e"));
}

TEST(ObjectKey, hasAtMost16Bytes) {
    EXPECT_EQ(objectKey(zeroTo(16), {7, 3}, false), fromHex("5f12da0f89c2faaae6530689a41a12cd"));
    EXPECT_EQ(objectKey(zeroTo(16), {7, 3}, true), fromHex("45e2ad02f9c7b5869800590c927c8b36"));
}

}  // namespace
}  // namespace quirebind::pdftest
