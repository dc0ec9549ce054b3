// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "Platform/PDF/Filters/StreamDecoder.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// How bytes are encrypted (ISO 32000-2, table 25, /CFM).
enum class CryptMethod : std::uint8_t {
    identity,  ///< They are not.
    rc4,       ///< /V2, and what there was before crypt filters.
    aes128,    ///< /AESV2
    aes256,    ///< /AESV3
    unknown,   ///< Some other way, or a filter that is not defined.
};

/// Which method decrypts what (ISO 32000-2, 7.6.6). Before version 4 it is RC4 for everything; from
/// then on the encryption dictionary names a crypt filter for each of three kinds of data, and a
/// stream may name another.
///
///     << /Filter /Standard /V 4 /CF << /StdCF << /CFM /AESV2 /Length 16 >> >>
///        /StmF /StdCF /StrF /StdCF ... >>
class CryptFilters {
 public:
    /// RC4 for everything.
    CryptFilters() = default;

    /// As `dictionary`, an encryption dictionary of `version` 4 or 5, says. Where it leaves out
    /// which filter is for strings or streams, there is none. Throws DamagedDocument where it names
    /// one for them that it does not define.
    CryptFilters(Value dictionary, int version, const Resolve& resolve);

    /// How strings are encrypted (/StrF).
    [[nodiscard]] CryptMethod strings() const { return strings_; }
    /// How streams are that name no filter themselves (/StmF).
    [[nodiscard]] CryptMethod streams() const { return streams_; }
    /// How the streams that are embedded files are (/EFF); as other streams where that is left out.
    [[nodiscard]] CryptMethod embeddedFiles() const { return embeddedFiles_; }

    /// That of a stream that names the filter itself (7.4.10). Before version 4 there is nothing to
    /// be named.
    [[nodiscard]] CryptMethod named(std::string_view name) const;

 private:
    bool hasFilters_ = false;
    CryptMethod strings_ = CryptMethod::rc4;
    CryptMethod streams_ = CryptMethod::rc4;
    CryptMethod embeddedFiles_ = CryptMethod::rc4;
    std::map<std::string, CryptMethod, std::less<>> filters_;
};

}  // namespace quirebind
