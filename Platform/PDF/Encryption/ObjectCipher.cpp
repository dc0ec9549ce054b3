// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Encryption/ObjectCipher.h"

#include <algorithm>
#include <span>

#include "Platform/PDF/Encryption/KeyDerivation.h"
#include "Platform/PDF/Guards/DamagedDocument.h"

namespace quirebind {
namespace {

/// How many bytes at the end are padding: as many as each of them says, 1 to 16. Some writers pad
/// in other ways or not at all.
std::size_t paddingOf(std::string_view data) {
    const std::size_t count = data.empty() ? 0 : static_cast<unsigned char>(data.back());
    if (count > AESDecryption::kBlock || count > data.size()) return 0;
    const auto isPadding = [&](char c) { return c == data.back(); };
    return std::ranges::all_of(data.substr(data.size() - count), isPadding) ? count : 0;
}

std::string decryptAES(const AESDecryption& cipher, std::string data) {
    constexpr std::size_t kBlock = AESDecryption::kBlock;
    data.resize(data.size() - data.size() % kBlock);
    if (data.empty()) return data;
    const std::string initial = data.substr(0, kBlock);
    data.erase(0, kBlock);
    cipher.apply(initial, data);
    data.resize(data.size() - paddingOf(data));
    return data;
}

}  // namespace

ObjectCipher::ObjectCipher(CryptMethod method, std::string_view fileKey, Reference id) {
    switch (method) {
        case CryptMethod::identity:
            break;
        case CryptMethod::rc4:
            cipher_.emplace<RC4>(objectKey(fileKey, id, false));
            break;
        case CryptMethod::aes128:
            cipher_.emplace<AESDecryption>(objectKey(fileKey, id, true));
            break;
        case CryptMethod::aes256:  // the same key for every object
            cipher_.emplace<AESDecryption>(fileKey);
            break;
        case CryptMethod::unknown:
            throw DamagedDocument("data encrypted by a method that is not known");
    }
}

std::string ObjectCipher::decrypt(std::string data) const {
    if (const auto* const aes = std::get_if<AESDecryption>(&cipher_))
        return decryptAES(*aes, std::move(data));
    if (const auto* const rc4 = std::get_if<RC4>(&cipher_)) rc4->apply(data);
    return data;
}

}  // namespace quirebind
