// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Encryption/KeyDerivation.h"

#include <algorithm>
#include <numeric>

#include "Platform/PDF/Encryption/Ciphers.h"

namespace quirebind {
namespace {

constexpr std::size_t kEntry = 32;  ///< Bytes of /O and /U up to revision 4.
constexpr int kLastRC4Key = 19;     ///< From revision 3 on, RC4 is applied with keys 0 to 19.
constexpr int kRehashings = 50;     ///< Rounds of MD5 from revision 3 on.

/// What passwords are padded with, to 32 bytes (ISO 32000-2, 7.6.4.3.2, step a).
constexpr std::string_view kPadding(
    "\x28\xBF\x4E\x5E\x4E\x75\x8A\x41\x64\x00\x4E\x56\xFF\xFA\x01\x08"
    "\x2E\x2E\x00\xB6\xD0\x68\x3E\x80\x2F\x0C\xA9\xFE\x64\x53\x69\x7A",
    kEntry);

std::string padded(std::string_view password) {
    std::string result(password.substr(0, kEntry));
    return result.append(kPadding.substr(0, kEntry - result.size()));
}

/// The first 32 bytes of /O or /U. Some files cut zeros off their end.
std::string firstBytes(std::string_view entry) {
    std::string result(entry.substr(0, kEntry));
    result.resize(kEntry);
    return result;
}

std::string withRC4(std::string_view key, std::string data) {
    RC4(key).apply(data);
    return data;
}

/// The exclusive or of each byte of `key` and `number` (algorithms 5 and 7).
std::string variedKey(std::string_view key, int number) {
    std::string result(key);
    for (char& c : result)
        c = static_cast<char>(static_cast<unsigned char>(c) ^ static_cast<unsigned>(number));
    return result;
}

void appendLittleEndian(std::string& text, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) text += static_cast<char>((value >> (8 * i)) & 0xffU);
}

/// Algorithm 2: the key that `password` gives as the user's, right or wrong.
std::string computeKey(std::string_view password, const PasswordEntries& entries,
                       std::size_t length) {
    std::string input = padded(password) + firstBytes(entries.owner);
    appendLittleEndian(input, entries.permissions, 4);
    input += entries.documentID;
    if (entries.revision >= 4 && !entries.encryptsMetadata) input.append(4, '\xff');
    std::string hash = md5(input);
    if (entries.revision >= 3)
        for (int i = 0; i < kRehashings; ++i) hash = md5(std::string_view(hash).substr(0, length));
    hash.resize(length);
    return hash;
}

/// Algorithms 4 to 6: whether /U was made with the key.
bool fitsUserEntry(std::string_view key, const PasswordEntries& entries) {
    if (entries.revision == 2)
        return withRC4(key, std::string(kPadding)) == firstBytes(entries.user);
    std::string expected = md5(std::string(kPadding) + entries.documentID);
    for (int i = 0; i <= kLastRC4Key; ++i)
        expected = withRC4(variedKey(key, i), std::move(expected));
    return std::string_view(entries.user).starts_with(expected);  // what follows is arbitrary
}

/// Algorithm 7: the user's password (padded) by the owner's, right or wrong.
std::string userPassword(std::string_view ownerPassword, const PasswordEntries& entries,
                         std::size_t length) {
    std::string key = md5(padded(ownerPassword));
    if (entries.revision >= 3)
        for (int i = 0; i < kRehashings; ++i) key = md5(key);
    key.resize(length);
    std::string result = firstBytes(entries.owner);
    for (int i = entries.revision >= 3 ? kLastRC4Key : 0; i >= 0; --i)
        result = withRC4(variedKey(key, i), std::move(result));
    return result;
}

/// The parts of /O and /U from revision 5 on; what follows the 48 bytes is padding.
struct HashedPassword {
    explicit HashedPassword(std::string_view entry)
        : hash(entry.substr(0, 32)),
          validationSalt(entry.substr(32, 8)),
          keySalt(entry.substr(40, 8)) {}

    std::string_view hash;
    std::string_view validationSalt;
    std::string_view keySalt;
};

constexpr std::size_t kHashedPassword = 48;

/// 32 bytes (ISO 32000-2, table 21), or more where files pad strings with zeros. Of any other
/// length it has been damaged: what it opened would come out as garbage.
bool isEncryptedKey(std::string_view key) {
    return key.size() >= kEntry && key.find_first_not_of('\0', kEntry) == std::string_view::npos;
}

/// Step c or d of algorithm 2.A, for either password.
std::optional<std::string> openKey(std::string_view password, const PasswordEntries& entries,
                                   std::string_view entry, std::string_view encryptedKey,
                                   std::string_view user) {
    if (entry.size() < kHashedPassword || !isEncryptedKey(encryptedKey)) return std::nullopt;
    const HashedPassword parts(entry);
    const auto hash = [&](std::string_view salt) {
        const std::string input = std::string(password).append(salt).append(user);
        return entries.revision == 5 ? sha256(input) : hardenedHash(input, password, user);
    };
    if (hash(parts.validationSalt) != parts.hash) return std::nullopt;
    std::string key(encryptedKey.substr(0, kEntry));
    AESDecryption(hash(parts.keySalt)).apply(std::string(AESDecryption::kBlock, '\0'), key);
    return key;
}

}  // namespace

std::optional<std::string> fileKeyByMD5(std::string_view password, const PasswordEntries& entries,
                                        std::span<const std::size_t> lengths) {
    for (const std::size_t length : lengths) {
        std::string key = computeKey(password, entries, length);
        if (fitsUserEntry(key, entries)) return key;
        key = computeKey(userPassword(password, entries, length), entries, length);
        if (fitsUserEntry(key, entries)) return key;
    }
    return std::nullopt;
}

std::optional<std::string> fileKeyBySHA(std::string_view password, const PasswordEntries& entries) {
    if (auto key = openKey(password, entries, entries.user, entries.userKey, {})) return key;
    const std::string_view user = std::string_view(entries.user).substr(0, kHashedPassword);
    return openKey(password, entries, entries.owner, entries.ownerKey, user);
}

std::string hardenedHash(std::string_view input, std::string_view password, std::string_view user) {
    constexpr int kFewestRounds = 64;
    constexpr int kRepetitions = 64;
    std::string hash = sha256(input);
    int lastByte = 0;
    for (int round = 0; round < kFewestRounds || lastByte > round - 32; ++round) {
        const std::string once = std::string(password).append(hash).append(user);
        std::string text;
        for (int i = 0; i < kRepetitions; ++i) text += once;
        const std::string_view key(hash);
        text = encryptAES128(key.substr(0, 16), key.substr(16, 16), text);
        const auto valueOf = [](int sum, char c) { return sum + static_cast<unsigned char>(c); };
        // The first 16 bytes as one number modulo 3 are the sum of the bytes modulo 3.
        switch (std::accumulate(text.begin(), text.begin() + 16, 0, valueOf) % 3) {
            case 0:
                hash = sha256(text);
                break;
            case 1:
                hash = sha384(text);
                break;
            default:
                hash = sha512(text);
        }
        lastByte = valueOf(0, text.back());
    }
    hash.resize(32);
    return hash;
}

std::string objectKey(std::string_view fileKey, Reference id, bool forAES) {
    constexpr std::size_t kLongest = 16;
    std::string input(fileKey);
    appendLittleEndian(input, id.number, 3);
    appendLittleEndian(input, id.generation, 2);
    if (forAES) input += "sAlT";
    std::string key = md5(input);
    key.resize(std::min(fileKey.size() + 5, kLongest));
    return key;
}

}  // namespace quirebind
