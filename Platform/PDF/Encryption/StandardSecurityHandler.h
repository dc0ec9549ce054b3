// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>

#include "Platform/PDF/Encryption/Decryptor.h"
#include "Platform/PDF/Filters/StreamDecoder.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Opens an encrypted document with the empty password, be it the user's or the owner's: what the
/// document permits makes no difference here. `dictionary` is its encryption dictionary
/// (ISO 32000-2, 7.6.4):
///
///     << /Filter /Standard /V 2 /R 3 /Length 128 /O (32 bytes) /U (32 bytes) /P -1028 >>
///
///     /V   /R     key          cipher
///     1    2      40 bits      RC4
///     2    3      40 to 128    RC4
///     4    4      128          as the crypt filters say: RC4, AES
///     5    5, 6   256          as the crypt filters say: AES; /O, /U: 48 bytes; /OE, /UE: 32
///
/// and `identifier` the trailer's /ID, a part of the keys up to revision 4. `resolve` gives objects
/// as they stand in the file.
///
/// Nothing where the document stays locked: it has a password, or another handler, or is encrypted
/// in a way that is not known. Throws DamagedDocument where the dictionary is broken.
[[nodiscard]] std::optional<Decryptor> openWithoutPassword(Value dictionary, Value identifier,
                                                           const Resolve& resolve);

}  // namespace quirebind
