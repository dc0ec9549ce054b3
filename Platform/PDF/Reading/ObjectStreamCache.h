// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>

#include "Platform/PDF/Reading/ObjectStream.h"

namespace quirebind {

/// The decoded object streams of one source, by their numbers. Those that were used last stay
/// longest. Used by one thread.
class ObjectStreamCache {
 public:
    /// The stream, which counts as used now; null where it is not here. Valid until `trim` or
    /// `clear`.
    [[nodiscard]] ObjectStream* find(std::uint32_t number);

    /// Takes over a stream that is not here yet. Valid as long.
    ObjectStream& add(std::uint32_t number, ObjectStream stream);

    /// Forgets streams until the others take at most `room` bytes of memory, or one is left.
    void trim(std::uint64_t room);

    /// Forgets them all.
    void clear();

 private:
    struct Entry {
        std::uint32_t number = 0;
        std::size_t cost = 0;  // when it was added: looking objects up adds a little
        ObjectStream stream;
    };
    std::list<Entry> recent_;  // the most recently used first
    std::map<std::uint32_t, std::list<Entry>::iterator> byNumber_;
    std::size_t cost_ = 0;  // bytes of memory
};

}  // namespace quirebind
