// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Files/ByteBuffer.h"

namespace quirebind {

/// The streams of an output that a later source can share instead of bringing the same again, as
/// the sources do that one program made: fonts, images, colour profiles. Streams are the same when
/// their dictionaries, as they stand in the output, and their bodies are the same byte for byte.
///
/// Most streams are told apart by their lengths. Those that are as long as another one are told
/// apart by a hash of the dictionary and of samples of the body; the bytes are compared where that
/// is the same, with one stream only, so that no choice of streams makes this slow. Used by one
/// thread.
class SharedStreams {
 public:
    /// Where a stream stands in the output.
    struct Stream {
        std::uint32_t number = 0;
        std::size_t dictionary = 0;  ///< Offsets and sizes in bytes.
        std::size_t dictionarySize = 0;
        std::size_t body = 0;
        std::size_t bodySize = 0;
    };

    /// A stream of a source: its dictionary as it would stand in the output, and how to get pieces
    /// of its body.
    struct Candidate {
        std::string_view dictionary;
        std::size_t bodySize = 0;
        /// The piece, valid until the next; another one where the body is lost.
        std::function<std::string_view(std::size_t offset, std::size_t size)> readBody;
    };

    /// Lets a stream that was written be shared by the sources that begin after this.
    void add(const Stream& stream) { added_.push_back(stream); }

    /// A source begins.
    void beginSource();

    /// Whether the sources before the current one brought nothing that could be shared.
    [[nodiscard]] bool empty() const { return byLength_.empty(); }
    /// Whether there is a stream with a body of that many bytes.
    [[nodiscard]] bool hasLength(std::uint64_t length) const { return byLength_.contains(length); }

    /// The number of the stream in `output`, which is what was written so far, that is the same.
    [[nodiscard]] std::optional<std::uint32_t> find(const Candidate& candidate,
                                                    const ByteBuffer& output);

 private:
    struct SameLength {
        std::vector<Stream> notDigested;
        std::map<std::uint64_t, Stream> byDigest;
    };

    [[nodiscard]] Candidate asCandidate(const Stream& stream, const ByteBuffer& output);

    std::vector<Stream> added_;
    std::map<std::uint64_t, SameLength> byLength_;
    std::string piece_;  // of a body that was written, reused
};

}  // namespace quirebind
