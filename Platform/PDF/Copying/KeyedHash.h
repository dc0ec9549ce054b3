// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <nettle/umac.h>

namespace quirebind {

/// A hash with a key that is drawn at random for each of these, so that no file can be made to look
/// like another: any two texts that differ have the same hash once in 2^100 draws at most. Several
/// times as fast as a hash that has to do without a key (UMAC-128, RFC 4418). Hashes of different
/// objects of this class have nothing to do with one another. Used by one thread.
class KeyedHash {
 public:
    /// 16 bytes. The first one draws the key: throws std::system_error where the system gives no
    /// random numbers.
    [[nodiscard]] std::string of(std::string_view text);

 private:
    /// What a text is hashed with; draws the key where there is none yet.
    umac128_ctx& state();

    std::optional<umac128_ctx> state_;
};

}  // namespace quirebind
