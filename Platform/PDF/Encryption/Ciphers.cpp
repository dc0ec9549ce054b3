// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Encryption/Ciphers.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <nettle/cbc.h>
#include <nettle/md5.h>
#include <nettle/nettle-meta.h>
#include <nettle/sha2.h>

namespace quirebind {
namespace {

/// nettle calls bytes what everything else here calls text.
// NOLINTBEGIN(cppcoreguidelines-pro-type-reinterpret-cast)
const std::uint8_t* octets(std::string_view text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
}
std::uint8_t* octets(std::span<char> text) {
    return reinterpret_cast<std::uint8_t*>(text.data());
}
// NOLINTEND(cppcoreguidelines-pro-type-reinterpret-cast)

template <typename Context>
std::string digest(const nettle_hash& hash, std::string_view data) {
    Context context{};
    hash.init(&context);
    hash.update(&context, data.size(), octets(data));
    std::string result(hash.digest_size, '\0');
    hash.digest(&context, result.size(), octets(std::span(result)));
    return result;
}

using Block = std::array<std::uint8_t, AES_BLOCK_SIZE>;

/// The chaining value, which nettle changes as it goes.
Block blockOf(std::string_view initial) {
    Block block{};
    std::ranges::copy(initial.substr(0, block.size()), block.begin());
    return block;
}

}  // namespace

std::string md5(std::string_view data) {
    return digest<md5_ctx>(nettle_md5, data);
}

std::string sha256(std::string_view data) {
    return digest<sha256_ctx>(nettle_sha256, data);
}

std::string sha384(std::string_view data) {
    return digest<sha512_ctx>(nettle_sha384, data);
}

std::string sha512(std::string_view data) {
    return digest<sha512_ctx>(nettle_sha512, data);
}

RC4::RC4(std::string_view key) {
    arcfour_set_key(&start_, key.size(), octets(key));
}

void RC4::apply(std::span<char> data) const {
    arcfour_ctx state = start_;
    arcfour_crypt(&state, data.size(), octets(data), octets(data));
}

AESDecryption::AESDecryption(std::string_view key) {
    if (key.size() == AES256_KEY_SIZE)
        aes256_set_decrypt_key(&key_.emplace<aes256_ctx>(), octets(key));
    else
        aes128_set_decrypt_key(&key_.emplace<aes128_ctx>(), octets(key));
}

void AESDecryption::apply(std::string_view initial, std::span<char> data) const {
    Block chain = blockOf(initial);
    const auto run = [&](const void* key, nettle_cipher_func* decrypt) {
        cbc_decrypt(key, decrypt, kBlock, chain.data(), data.size(), octets(data), octets(data));
    };
    if (const auto* const key = std::get_if<aes256_ctx>(&key_))
        run(key, nettle_aes256.decrypt);
    else
        run(&std::get<aes128_ctx>(key_), nettle_aes128.decrypt);
}

std::string encryptAES128(std::string_view key, std::string_view initial, std::string_view data) {
    aes128_ctx context{};
    aes128_set_encrypt_key(&context, octets(key));
    Block chain = blockOf(initial);
    std::string result(data.size(), '\0');
    cbc_encrypt(&context, nettle_aes128.encrypt, AES_BLOCK_SIZE, chain.data(), data.size(),
                octets(std::span(result)), octets(data));
    return result;
}

}  // namespace quirebind
