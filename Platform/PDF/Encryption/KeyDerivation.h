// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Platform/PDF/Syntax/ValueScanner.h"

namespace quirebind {

/// What the keys of the standard security handler are derived from (ISO 32000-2, tables 20 and 21),
/// as read from the file: any length may be wrong.
struct PasswordEntries {
    int revision = 0;               ///< /R: 2 to 6.
    std::string owner;              ///< /O
    std::string user;               ///< /U
    std::string ownerKey;           ///< /OE, from revision 5 on
    std::string userKey;            ///< /UE, from revision 5 on
    std::uint32_t permissions = 0;  ///< /P
    std::string documentID;         ///< The first string of the trailer's /ID.
    bool encryptsMetadata = true;   ///< /EncryptMetadata
};

/// The file encryption key that `password` opens, as the user's password or as the owner's; nothing
/// where it is neither.
///
/// For revisions 2 to 4 (algorithms 2, 4 to 7). The key has one of `lengths`, in bytes from 5 to
/// 16: the dictionary's own statement about it is often wrong, and only with the right length the
/// password fits.
[[nodiscard]] std::optional<std::string> fileKeyByMD5(std::string_view password,
                                                      const PasswordEntries& entries,
                                                      std::span<const std::size_t> lengths);

/// The same for revisions 5 and 6, whose keys have 32 bytes (algorithms 2.A, 11 and 12).
[[nodiscard]] std::optional<std::string> fileKeyBySHA(std::string_view password,
                                                      const PasswordEntries& entries);

/// Algorithm 2.B: the hash that revision 6 makes of a password with its salt (and, for the owner's
/// password, /U), `input`; `user` is the first 48 bytes of /U for the owner's, else empty.
[[nodiscard]] std::string hardenedHash(std::string_view input, std::string_view password,
                                       std::string_view user);

/// Algorithm 1: the key for the strings and the body of the object `id` where the file's key is not
/// used as it is. `forAES` tells AES from RC4.
[[nodiscard]] std::string objectKey(std::string_view fileKey, Reference id, bool forAES);

}  // namespace quirebind
