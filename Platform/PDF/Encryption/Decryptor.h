// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

#include "Platform/PDF/Encryption/CryptFilters.h"
#include "Platform/PDF/Filters/StreamFilters.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Syntax/Value.h"

namespace quirebind {

/// Decrypts what an encrypted document's objects contain. Objects are named by their number and
/// generation in the file, which keys are made from.
///
/// Encrypted are the strings and the bodies of objects that stand in the file. Not encrypted are
/// (ISO 32000-2, 7.6.2): cross-reference streams; the trailer; the encryption dictionary; the
/// /Contents of signatures; and what is in object streams, which are encrypted as a whole.
class Decryptor {
 public:
    /// `fileKey` is the key of the document; `encryptsMetadata` says whether metadata streams are
    /// encrypted, too.
    Decryptor(std::string fileKey, CryptFilters filters, bool encryptsMetadata);

    /// The text of an object, or of a stream's dictionary, with its strings in clear. Nothing where
    /// the text is in clear as it is. What that takes is spent of `budget`, counted in bytes of
    /// text that are looked at; throws DamagedDocument where it is not there.
    [[nodiscard]] std::optional<std::string> decryptStrings(Value value, Reference id,
                                                            WorkBudget& budget) const;

    /// The body of a stream in clear; its filters still apply. Throws DamagedDocument where the
    /// stream is encrypted by a method that is not known.
    [[nodiscard]] std::string decryptBody(std::string body, Value dictionary,
                                          const StreamFilters& filters, Reference id) const;

 private:
    [[nodiscard]] CryptMethod methodFor(Value dictionary, const StreamFilters& filters) const;

    std::string fileKey_;
    CryptFilters filters_;
    bool encryptsMetadata_;
};

/// Whether this is the dictionary of a cross-reference stream, where nothing is encrypted.
[[nodiscard]] bool isCrossReferenceStream(Value dictionary);

}  // namespace quirebind
