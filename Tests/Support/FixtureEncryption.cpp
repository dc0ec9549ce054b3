// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Support/FixtureEncryption.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <utility>
#include <vector>

#include <nettle/aes.h>
#include <nettle/arcfour.h>
#include <nettle/cbc.h>
#include <nettle/md5.h>
#include <nettle/sha2.h>

namespace quirebind::test {

namespace {

using Octets = std::vector<std::uint8_t>;

constexpr std::size_t kBlock = 16;

constexpr std::array<std::uint8_t, 32> kPadding{
    0x28, 0xBF, 0x4E, 0x5E, 0x4E, 0x75, 0x8A, 0x41, 0x64, 0x00, 0x4E, 0x56, 0xFF, 0xFA, 0x01, 0x08,
    0x2E, 0x2E, 0x00, 0xB6, 0xD0, 0x68, 0x3E, 0x80, 0x2F, 0x0C, 0xA9, 0xFE, 0x64, 0x53, 0x69, 0x7A};

Octets octets(std::string_view text) {
    return {text.begin(), text.end()};
}

std::string text(const Octets& data) {
    return {data.begin(), data.end()};
}

std::string md5(std::string_view data) {
    md5_ctx context{};
    md5_init(&context);
    md5_update(&context, data.size(), octets(data).data());
    Octets out(MD5_DIGEST_SIZE);
    md5_digest(&context, out.size(), out.data());
    return text(out);
}

std::string sha256(std::string_view data) {
    sha256_ctx context{};
    sha256_init(&context);
    sha256_update(&context, data.size(), octets(data).data());
    Octets out(SHA256_DIGEST_SIZE);
    sha256_digest(&context, out.size(), out.data());
    return text(out);
}

std::string sha384(std::string_view data) {
    sha384_ctx context{};
    sha384_init(&context);
    sha384_update(&context, data.size(), octets(data).data());
    Octets out(SHA384_DIGEST_SIZE);
    sha384_digest(&context, out.size(), out.data());
    return text(out);
}

std::string sha512(std::string_view data) {
    sha512_ctx context{};
    sha512_init(&context);
    sha512_update(&context, data.size(), octets(data).data());
    Octets out(SHA512_DIGEST_SIZE);
    sha512_digest(&context, out.size(), out.data());
    return text(out);
}

std::string rc4(std::string_view key, std::string_view data) {
    arcfour_ctx context{};
    arcfour_set_key(&context, key.size(), octets(key).data());
    Octets out(data.size());
    arcfour_crypt(&context, out.size(), out.data(), octets(data).data());
    return text(out);
}

void encryptBlock(std::string_view key, std::uint8_t* block) {
    if (key.size() == AES128_KEY_SIZE) {
        aes128_ctx context{};
        aes128_set_encrypt_key(&context, octets(key).data());
        aes128_encrypt(&context, kBlock, block, block);
    } else {
        aes256_ctx context{};
        aes256_set_encrypt_key(&context, octets(key).data());
        aes256_encrypt(&context, kBlock, block, block);
    }
}

/// Cipher block chaining by hand; `data` is whole blocks.
std::string aes(std::string_view key, std::string_view initial, std::string_view data) {
    Octets previous = octets(initial);
    std::string out;
    for (std::size_t at = 0; at < data.size(); at += kBlock) {
        for (std::size_t i = 0; i < kBlock; ++i)
            previous[i] ^= static_cast<std::uint8_t>(data[at + i]);
        encryptBlock(key, previous.data());
        out += text(previous);
    }
    return out;
}

std::string paddedPassword(std::string_view password) {
    std::string result(password);
    result.append(kPadding.begin(), kPadding.end());
    return result.substr(0, kPadding.size());
}

std::string xored(std::string key, int with) {
    for (char& c : key) c = static_cast<char>(static_cast<std::uint8_t>(c) ^ with);
    return key;
}

/// The big-endian number that these bytes are, modulo 3.
int moduloThree(std::string_view bytes) {
    int remainder = 0;
    for (const char c : bytes) remainder = (remainder * 256 + static_cast<std::uint8_t>(c)) % 3;
    return remainder;
}

/// Algorithm 2.B, or in revision 5 what stands in its place.
std::string passwordHash(int revision, const std::string& password, const std::string& salt,
                         const std::string& user) {
    std::string k = sha256(password + salt + user);
    if (revision == 5) return k;
    for (int round = 0;; ++round) {
        std::string k1;
        for (int i = 0; i < 64; ++i) k1.append(password).append(k).append(user);
        const std::string e = aes(k.substr(0, 16), k.substr(16, 16), k1);
        const int hash = moduloThree(e.substr(0, 16));
        k = hash == 0 ? sha256(e) : sha384(e);
        if (hash == 2) k = sha512(e);
        // From round 64 on, a round may be the last.
        if (round >= 63 && static_cast<std::uint8_t>(e.back()) <= round + 1 - 32) break;
    }
    return k.substr(0, 32);
}

std::string methodName(FixtureCipher cipher) {
    switch (cipher) {
        case FixtureCipher::identity:
            return "None";
        case FixtureCipher::rc4:
            return "V2";
        case FixtureCipher::aes128:
            return "AESV2";
        case FixtureCipher::aes256:
            break;
    }
    return "AESV3";
}

}  // namespace

void PrintTo(const FixtureEncryptionOptions& options, std::ostream* out) {
    *out << "V " << options.version << " R " << options.revision << ", " << options.keyBytes
         << " bytes, " << methodName(options.cipher) << ", passwords '" << options.userPassword
         << "' '" << options.ownerPassword << "'";
}

FixtureEncryption::FixtureEncryption(FixtureEncryptionOptions options)
    : options_(std::move(options)) {
    if (options_.revision < 5)
        makeOldKeys();
    else
        makeNewKeys();
}

std::string FixtureEncryption::permissionBytes() const {
    std::string bytes;
    const auto bits = static_cast<std::uint32_t>(options_.permissions);
    for (const unsigned shift : {0U, 8U, 16U, 24U})
        bytes += static_cast<char>((bits >> shift) & 255U);
    return bytes;
}

/// Algorithms 3 (/O), 2 (the key), 4 and 5 (/U).
void FixtureEncryption::makeOldKeys() {
    const bool old = options_.revision == 2;
    std::string ownerKey = md5(paddedPassword(options_.ownerPassword));
    for (int i = 0; i < (old ? 0 : 50); ++i) ownerKey = md5(ownerKey);
    ownerKey.resize(options_.keyBytes);
    o_ = paddedPassword(options_.userPassword);
    for (int i = 0; i < (old ? 1 : 20); ++i) o_ = rc4(xored(ownerKey, i), o_);

    std::string seed = paddedPassword(options_.userPassword) + o_ + permissionBytes();
    seed += options_.identifier;
    if (options_.revision >= 4 && !options_.encryptMetadata) seed += "\xff\xff\xff\xff";
    key_ = md5(seed);
    for (int i = 0; i < (old ? 0 : 50); ++i) key_ = md5(key_.substr(0, options_.keyBytes));
    key_.resize(options_.keyBytes);

    u_ = paddedPassword("");
    if (!old) u_ = md5(u_ + options_.identifier);
    for (int i = 0; i < (old ? 1 : 20); ++i) u_ = rc4(xored(key_, i), u_);
    if (!old) u_ += "sixteen any byte";
}

/// Algorithms 8 (/U, /UE), 9 (/O, /OE) and 10 (/Perms). The key and the salts, which ought to be
/// random, are whatever comes to mind.
void FixtureEncryption::makeNewKeys() {
    const auto hash = [&](const std::string& password, const std::string& salt,
                          const std::string& user) {
        return passwordHash(options_.revision, password, salt, user);
    };
    const std::string zeros(kBlock, '\0');
    const std::string& user = options_.userPassword;
    const std::string& owner = options_.ownerPassword;
    key_ = "thirty-two bytes make a good key";
    u_ = hash(user, "validate", "") + "validate" + "key salt";
    ue_ = aes(hash(user, "key salt", ""), zeros, key_);
    o_ = hash(owner, "Validate", u_) + "Validate" + "Key Salt";
    oe_ = aes(hash(owner, "Key Salt", u_), zeros, key_);
    perms_ =
        permissionBytes() + "\xff\xff\xff\xff" + (options_.encryptMetadata ? 'T' : 'F') + "adbany.";
    perms_ = aes(key_, zeros, perms_.substr(0, kBlock));
}

std::string FixtureEncryption::dictionary() const {
    const auto hex = [](std::string_view bytes) { return " <" + hexDigits(bytes) + ">"; };
    std::string result = "<< /Filter /Standard /V " + std::to_string(options_.version) + " /R " +
                         std::to_string(options_.revision) + " /Length " +
                         std::to_string(8 * options_.keyBytes) + " /P " +
                         std::to_string(options_.permissions) + " /O" + hex(o_) + " /U" + hex(u_);
    if (options_.revision >= 5) {
        result += " /OE" + hex(oe_) + " /UE" + hex(ue_) + " /Perms" + hex(perms_);
    }
    if (options_.version >= 4) {
        result += " /CF << /StdCF << /Type /CryptFilter /CFM /" + methodName(options_.cipher) +
                  " /AuthEvent /DocOpen /Length " + std::to_string(options_.keyBytes) + " >> >>";
        if (!options_.streams.empty()) result += " /StmF /" + options_.streams;
        if (!options_.strings.empty()) result += " /StrF /" + options_.strings;
        if (!options_.files.empty()) result += " /EFF /" + options_.files;
        if (!options_.encryptMetadata) result += " /EncryptMetadata false";
    }
    return result + " >>";
}

std::string FixtureEncryption::identifier() const {
    const std::string one = "<" + hexDigits(options_.identifier) + ">";
    return "[" + one + " " + one + "]";
}

/// Algorithms 1 and 1.A.
std::string FixtureEncryption::encrypt(std::uint32_t number, std::uint32_t generation,
                                       std::string_view data) const {
    if (options_.cipher == FixtureCipher::identity) return std::string(data);
    std::string key = key_;
    if (options_.cipher != FixtureCipher::aes256) {
        for (const unsigned shift : {0U, 8U, 16U})
            key += static_cast<char>((number >> shift) & 255U);
        for (const unsigned shift : {0U, 8U})
            key += static_cast<char>((generation >> shift) & 255U);
        if (options_.cipher == FixtureCipher::aes128) key += "sAlT";
        key = md5(key).substr(0, std::min(key_.size() + 5, kBlock));
    }
    if (options_.cipher == FixtureCipher::rc4) return rc4(key, data);
    // As different from object to object as it would be at random.
    const std::string initial =
        md5(std::to_string(number) + ' ' + std::to_string(generation) + std::string(data));
    const std::size_t padding = kBlock - data.size() % kBlock;
    return initial +
           aes(key, initial, std::string(data) + std::string(padding, static_cast<char>(padding)));
}

std::string FixtureEncryption::string(std::uint32_t number, std::uint32_t generation,
                                      std::string_view text) const {
    const bool clear = options_.version >= 4 && options_.strings != "StdCF";
    return "<" + hexDigits(clear ? std::string(text) : encrypt(number, generation, text)) + ">";
}

std::string FixtureEncryption::data(std::uint32_t number, std::uint32_t generation,
                                    std::string_view body) const {
    const bool clear = options_.version >= 4 && options_.streams != "StdCF";
    return hexDirective(clear ? std::string(body) : encrypt(number, generation, body));
}

std::string hexDigits(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string result;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        result += {kDigits[byte >> 4U], kDigits[byte & 15U]};
    }
    return result;
}

std::string hexDirective(std::string_view bytes) {
    if (bytes.empty()) return "";
    std::string result = "{{hex";
    for (const char c : bytes) result += ' ' + hexDigits({&c, 1});
    return result + "}}";
}

}  // namespace quirebind::test
