// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/OutputIntents/ColourProfile.h"

#include <algorithm>
#include <array>
#include <utility>

#include "Platform/PDF/Filters/StreamDecoder.h"
#include "Platform/PDF/Filters/StreamFilters.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/OutputIntents/PlainEntries.h"

namespace quirebind {
namespace {

bool tellsCoding(Value key) {
    constexpr std::array<std::string_view, 4> kKeys{"Filter", "F", "DecodeParms", "DP"};
    return std::ranges::any_of(kKeys, [&](std::string_view name) { return key.isName(name); });
}

std::string bodyOf(ObjectReader& reader, const SourceObject& stream) {
    const std::uint64_t length = reader.bodyLength(stream);
    if (length > limits::kColourProfile) throw DamagedDocument("too large a colour profile");
    const auto resolve = [&](Value value) { return reader.resolve(value); };
    if (reader.isEncrypted() && StreamFilters(stream.value, resolve).cryptFilter())
        throw DamagedDocument("a profile with a crypt filter");
    return reader.body(stream, length);
}

/// Clears what the header of an ICC profile says of its making (ICC.1, 7.2): the date, and the
/// digest that is of the date, too.
void clearMaking(std::string& profile) {
    constexpr std::size_t kHeader = 128;
    if (profile.size() < kHeader) return;
    constexpr std::size_t kDate = 24;
    constexpr std::size_t kDateLength = 12;
    constexpr std::size_t kDigest = 84;
    constexpr std::size_t kDigestLength = 16;
    std::fill_n(profile.begin() + kDate, kDateLength, '\0');
    std::fill_n(profile.begin() + kDigest, kDigestLength, '\0');
}

}  // namespace

ColourProfile ColourProfile::read(ObjectReader& reader, const SourceObject& stream) {
    ColourProfile profile;
    profile.entries_ = plainEntries(reader, stream.value, [](Value key) {
        return !tellsCoding(key) && !key.isName("Length") && !key.isName("Metadata");
    });
    profile.coding_ = plainEntries(reader, stream.value, tellsCoding);
    profile.body_ = bodyOf(reader, stream);
    return profile;
}

bool ColourProfile::matches(ColourProfile& other, KeyedHash& hash, WorkBudget& budget) {
    if (entries_ != other.entries_) return false;
    if (coding_ == other.coding_ && body_ == other.body_) return true;
    return !digest(hash, budget).empty() && digest_ == other.digest(hash, budget);
}

/// Of the profile, decoded, without when it was made. The profile itself is not kept: a small body
/// may decode to a large one.
const std::string& ColourProfile::digest(KeyedHash& hash, WorkBudget& budget) {
    if (digest_) return *digest_;
    std::string& digest = digest_.emplace();
    const std::string dictionary = "<<" + coding_ + ">>";
    const auto itself = [](Value value) { return value; };
    try {
        Decoded decoded = decodeStream(Value(dictionary), body_, itself, budget);
        if (decoded.status != DecodeStatus::complete) return digest;
        clearMaking(decoded.bytes);
        digest = hash.of(decoded.bytes);
    } catch (const DamagedDocument&) {
        digest.clear();  // Beyond the budget.
    }
    return digest;
}

std::uint32_t ColourProfile::write(DocumentWriter& writer) const {
    const std::uint32_t number = writer.reserve();
    ByteBuffer& out = writer.beginStream(number);
    out.append("<<");
    out.append(entries_);
    out.append(coding_);
    out.append("/Length ");
    out.append(std::uint64_t{body_.size()});
    out.append(">>");
    std::ranges::copy(body_, writer.streamBody(body_.size()).begin());
    writer.endStream();
    return number;
}

}  // namespace quirebind
