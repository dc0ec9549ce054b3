// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Copying/KeyedHash.h"

#include <array>
#include <cstdint>

#include "Platform/Files/RandomBytes.h"

namespace quirebind {

umac128_ctx& KeyedHash::state() {
    if (!state_) {
        std::array<std::uint8_t, UMAC_KEY_SIZE> key{};
        fillRandom(key);
        umac128_set_key(&state_.emplace(), key.data());
    }
    return *state_;
}

std::string KeyedHash::of(std::string_view text) {
    umac128_ctx& state = this->state();
    // A message has a nonce of its own, so that nobody who sees its code learns of the key; here
    // nobody does, and the same text is to have the same one.
    constexpr std::array<std::uint8_t, 1> kNonce{};
    umac128_set_nonce(&state, kNonce.size(), kNonce.data());
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are bytes
    umac128_update(&state, text.size(), reinterpret_cast<const std::uint8_t*>(text.data()));
    std::array<std::uint8_t, UMAC128_DIGEST_SIZE> digest{};
    umac128_digest(&state, digest.size(), digest.data());
    return {digest.begin(), digest.end()};
}

}  // namespace quirebind
