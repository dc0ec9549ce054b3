// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "Platform/PDF/Encryption/Ciphers.h"
#include "Platform/PDF/Encryption/CryptFilters.h"
#include "Platform/PDF/Syntax/ValueScanner.h"

namespace quirebind {

/// Decrypts the strings of one object, or its body.
class ObjectCipher {
 public:
    /// `id` is the number and the generation of the object in its file. Throws DamagedDocument
    /// where the method is unknown.
    ObjectCipher(CryptMethod method, std::string_view fileKey, Reference id);

    /// One string or one body, in clear. AES data is one block that the chain begins with, then
    /// whole blocks, the last of them padded (ISO 32000-2, 7.6.3). Of data that is otherwise, what
    /// makes up whole blocks is decrypted, and what is no padding stays.
    [[nodiscard]] std::string decrypt(std::string data) const;

 private:
    std::variant<std::monostate, RC4, AESDecryption> cipher_;
};

}  // namespace quirebind
