// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "Platform/PDF/Encryption/Decryptor.h"
#include "Platform/PDF/Guards/WorkBudget.h"
#include "Platform/PDF/Reading/SourceObject.h"

namespace quirebind {

/// Reads the objects of an encrypted source in clear, and holds their texts as long as somebody may
/// look at them. Used by one thread.
class ObjectDecryption {
 public:
    /// For a file of `fileSize` bytes.
    ObjectDecryption(Decryptor decryptor, std::uint64_t fileSize);

    /// Puts the strings of an object, which stands in the file itself, in clear. What that takes is
    /// spent from `budget`; throws DamagedDocument where it is not there.
    void decryptStrings(SourceObject& object, FoundParts* parts, WorkBudget& budget);

    /// The `body` of a stream, in clear. Its filters still apply.
    [[nodiscard]] std::string decryptBody(std::string body, const SourceObject& stream,
                                          const StreamFilters& filters) const;

    /// Ends the validity of every object that was decrypted.
    void trim();

 private:
    Decryptor decryptor_;
    std::uint64_t room_;                          // bytes that may be held: more than a file
    WorkBudget left_;                             // has, even if every byte is escaped
    std::map<std::uint32_t, std::string> texts_;  // by object number
};

}  // namespace quirebind
