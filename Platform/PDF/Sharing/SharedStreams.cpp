// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Sharing/SharedStreams.h"

#include <algorithm>
#include <utility>

namespace quirebind {
namespace {

/// Bodies are read in pieces of that many bytes, so that no large one is held as a whole.
constexpr std::size_t kPiece = std::size_t{256} << 10U;

/// Bytes of a body's beginning, middle and end that its digest is made of. (The beginnings of
/// pictures that one camera took are the same.)
constexpr std::size_t kSample = 256;

SharedStreams::Candidate asCandidate(const SharedStreams::Stream& stream, std::string_view output) {
    return {.dictionary = output.substr(stream.dictionary, stream.dictionarySize),
            .bodySize = stream.bodySize,
            .readBody = [body = output.substr(stream.body, stream.bodySize)](std::size_t offset,
                                                                             std::span<char> into) {
                std::ranges::copy(body.substr(offset, into.size()), into.begin());
            }};
}

}  // namespace

void SharedStreams::beginSource() {
    for (const Stream& stream : std::exchange(added_, {}))
        byLength_[stream.bodySize].notDigested.push_back(stream);
}

std::optional<std::uint32_t> SharedStreams::find(const Candidate& candidate,
                                                 std::string_view output) {
    const auto group = byLength_.find(candidate.bodySize);
    if (group == byLength_.end()) return std::nullopt;
    auto& [notDigested, byDigest] = group->second;
    for (const Stream& stream : std::exchange(notDigested, {}))
        byDigest.emplace(digest(asCandidate(stream, output)), stream);
    const auto found = byDigest.find(digest(candidate));
    if (found == byDigest.end() || !isSame(candidate, found->second, output)) return std::nullopt;
    return found->second.number;
}

std::size_t SharedStreams::digest(const Candidate& candidate) {
    constexpr std::size_t kFactor = 31;
    const std::hash<std::string_view> hash;
    const std::size_t sample = std::min(kSample, candidate.bodySize);
    const std::size_t end = candidate.bodySize - sample;
    std::size_t digest = hash(candidate.dictionary);
    for (const std::size_t at : {std::size_t{0}, end / 2, end})
        digest = kFactor * digest + hash(readPiece(candidate, at, sample));
    return digest;
}

bool SharedStreams::isSame(const Candidate& candidate, const Stream& stream,
                           std::string_view output) {
    if (candidate.dictionary != output.substr(stream.dictionary, stream.dictionarySize))
        return false;
    const std::string_view body = output.substr(stream.body, stream.bodySize);
    for (std::size_t at = 0; at < body.size(); at += kPiece)
        if (readPiece(candidate, at, std::min(kPiece, body.size() - at)) != body.substr(at, kPiece))
            return false;
    return true;
}

std::string_view SharedStreams::readPiece(const Candidate& candidate, std::size_t at,
                                          std::size_t size) {
    if (piece_.size() < size) piece_.resize(size);
    candidate.readBody(at, std::span(piece_).first(size));
    return std::string_view(piece_).substr(0, size);
}

}  // namespace quirebind
