// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Encryption/StandardSecurityHandler.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include "Platform/PDF/Encryption/KeyDerivation.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Syntax/PDFString.h"

namespace quirebind {
namespace {

constexpr std::string_view kEmptyPassword;

/// The lengths of keys that are tried before version 4, in bytes, the usual ones first. /Length is
/// not asked: files state it in bits or in bytes, wrongly or not at all, and the password fits at
/// one length only.
constexpr std::array<std::size_t, 12> kKeyLengths{16, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
constexpr std::array<std::size_t, 1> kKeyLengthOfVersion4{16};

/// Such strings are binary: they hold hashes and keys.
std::string bytesOf(Value value) {
    return stringBytes(value, LineEnds::kept);
}

int intOf(Value value) {
    constexpr std::int64_t kHighest = 1000;
    const auto number = value.integer();
    return number && *number >= 0 && *number <= kHighest ? static_cast<int>(*number) : -1;
}

bool isKnown(int version, int revision) {
    if (version == 5) return revision == 5 || revision == 6;
    return (version == 1 || version == 2 || version == 4) && revision >= 2 && revision <= 4;
}

}  // namespace

std::optional<Decryptor> openWithoutPassword(Value dictionary, Value identifier,
                                             const Resolve& resolve) {
    const auto entry = [&](std::string_view key) { return resolve(dictionary.find(key)); };
    const int version = intOf(entry("V"));
    PasswordEntries entries;
    entries.revision = intOf(entry("R"));
    if (!entry("Filter").isName("Standard") || !isKnown(version, entries.revision))
        return std::nullopt;

    if (!isString(entry("O")) || !isString(entry("U")))
        throw DamagedDocument("an encryption dictionary without /O or /U");
    entries.owner = bytesOf(entry("O"));
    entries.user = bytesOf(entry("U"));
    entries.ownerKey = bytesOf(entry("OE"));
    entries.userKey = bytesOf(entry("UE"));
    // Some files write the 32 bits as an unsigned number.
    entries.permissions = static_cast<std::uint32_t>(entry("P").integer().value_or(0));
    ArrayReader identifiers(resolve(identifier));
    entries.documentID = bytesOf(resolve(identifiers.next().value_or(Value())));
    entries.encryptsMetadata = version < 4 || entry("EncryptMetadata").boolean().value_or(true);

    CryptFilters filters =
        version < 4 ? CryptFilters() : CryptFilters(dictionary, version, resolve);
    if (filters.strings() == CryptMethod::unknown || filters.streams() == CryptMethod::unknown)
        return std::nullopt;
    const std::span<const std::size_t> lengths =
        version == 4 ? std::span<const std::size_t>(kKeyLengthOfVersion4) : kKeyLengths;
    auto key = version == 5 ? fileKeyBySHA(kEmptyPassword, entries)
                            : fileKeyByMD5(kEmptyPassword, entries, lengths);
    if (!key) return std::nullopt;
    return Decryptor(std::move(*key), std::move(filters), entries.encryptsMetadata);
}

}  // namespace quirebind
