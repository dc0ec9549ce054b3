// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

#include <nettle/umac.h>

namespace quirebind {

/// A hash with a key that is drawn at random for each of these: texts with the same hash are the
/// same, and no file can be made to look like another. Several times as fast as a hash that has to
/// promise this without a key (UMAC-128, RFC 4418). Hashes of different objects of this class have
/// nothing to do with one another. Used by one thread.
class KeyedHash {
 public:
    /// Throws where the system gives no random numbers.
    KeyedHash();

    /// 16 bytes.
    [[nodiscard]] std::string of(std::string_view text);

 private:
    umac128_ctx state_{};
};

}  // namespace quirebind
