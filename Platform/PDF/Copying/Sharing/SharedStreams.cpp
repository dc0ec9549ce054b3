// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Copying/Sharing/SharedStreams.h"

#include <algorithm>
#include <utility>

#include <xxhash.h>

namespace quirebind {
namespace {

/// Bodies are read in pieces of that many bytes, so that no large one is held as a whole.
constexpr std::size_t kPiece = std::size_t{256} << 10U;

/// Bytes of a body's beginning, middle and end that its digest is made of. (The beginnings of
/// pictures that one camera took are the same.)
constexpr std::size_t kSample = 256;

std::uint64_t digest(const SharedStreams::Candidate& candidate) {
    constexpr std::uint64_t kFactor = 31;
    const auto hash = [](std::string_view bytes) {
        return XXH3_64bits(bytes.data(), bytes.size());
    };
    const std::size_t sample = std::min(kSample, candidate.bodySize);
    const std::size_t end = candidate.bodySize - sample;
    std::uint64_t digest = hash(candidate.dictionary);
    for (const std::size_t at : {std::size_t{0}, end / 2, end})
        digest = kFactor * digest + hash(candidate.readBody(at, sample));
    return digest;
}

bool isSame(const SharedStreams::Candidate& a, const SharedStreams::Candidate& b) {
    if (a.dictionary != b.dictionary || a.bodySize != b.bodySize) return false;
    for (std::size_t at = 0; at < a.bodySize; at += kPiece) {
        const std::size_t size = std::min(kPiece, a.bodySize - at);
        if (a.readBody(at, size) != b.readBody(at, size)) return false;
    }
    return true;
}

}  // namespace

/// The dictionary is the output's own; the body may be borrowed.
SharedStreams::Candidate SharedStreams::asCandidate(const Stream& stream,
                                                    const ByteBuffer& output) {
    return {.dictionary = output.text().substr(stream.dictionary, stream.dictionarySize),
            .bodySize = stream.bodySize,
            .readBody = [this, &output, begin = stream.body](std::size_t offset, std::size_t size) {
                return output.view(begin + offset, size, piece_);
            }};
}

void SharedStreams::beginSource() {
    for (const Stream& stream : std::exchange(added_, {}))
        byLength_[stream.bodySize].notDigested.push_back(stream);
}

std::optional<std::uint32_t> SharedStreams::find(const Candidate& candidate,
                                                 const ByteBuffer& output) {
    const auto group = byLength_.find(candidate.bodySize);
    if (group == byLength_.end()) return std::nullopt;
    auto& [notDigested, byDigest] = group->second;
    for (const Stream& stream : std::exchange(notDigested, {}))
        byDigest.emplace(digest(asCandidate(stream, output)), stream);
    const auto found = byDigest.find(digest(candidate));
    if (found == byDigest.end() || !isSame(candidate, asCandidate(found->second, output)))
        return std::nullopt;
    return found->second.number;
}

}  // namespace quirebind
