// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include <nettle/aes.h>
#include <nettle/arcfour.h>

namespace quirebind {

// The hashes that encryption in PDF is made of, as bytes.

/// MD5 (RFC 1321): 16 bytes.
[[nodiscard]] std::string md5(std::string_view data);
/// SHA-256 (FIPS 180-4): 32 bytes.
[[nodiscard]] std::string sha256(std::string_view data);
/// SHA-384 (FIPS 180-4): 48 bytes.
[[nodiscard]] std::string sha384(std::string_view data);
/// SHA-512 (FIPS 180-4): 64 bytes.
[[nodiscard]] std::string sha512(std::string_view data);

/// The RC4 stream cipher with one key. Encrypting and decrypting are the same.
class RC4 {
 public:
    /// `key` has 1 to 256 bytes.
    explicit RC4(std::string_view key);

    /// Replaces `data` by its counterpart, each time from the beginning of the key stream.
    void apply(std::span<char> data) const;

 private:
    arcfour_ctx start_{};
};

/// Decryption with AES in cipher block chaining mode with one key, of 16 bytes or of 32.
class AESDecryption {
 public:
    /// Bytes of a block, whatever the length of the key.
    static constexpr std::size_t kBlock = AES_BLOCK_SIZE;

    /// `key` has 16 or 32 bytes.
    explicit AESDecryption(std::string_view key);

    /// Decrypts `data`, a whole number of blocks, in place. `initial` has one block.
    void apply(std::string_view initial, std::span<char> data) const;

 private:
    std::variant<aes128_ctx, aes256_ctx> key_;
};

/// `data`, a whole number of blocks, encrypted with AES-128 in cipher block chaining mode. `key`
/// and `initial` have 16 bytes.
[[nodiscard]] std::string encryptAES128(std::string_view key, std::string_view initial,
                                        std::string_view data);

}  // namespace quirebind
