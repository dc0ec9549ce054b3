// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Writing/CrossReferenceWriter.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <string_view>

#include <xxhash.h>

#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

/// A hash of where all objects are and of the file so far: of all of a small one, and of a large
/// one samples, since to look at every byte would take as long as to copy it.
class FileHash {
 public:
    explicit FileHash(std::size_t fileSize)
        : state_(XXH3_createState(), &XXH3_freeState), isSmall_(fileSize <= kSmall) {
        if (!state_) throw std::bad_alloc();
        XXH3_128bits_reset(state_.get());
    }

    void add(std::span<const OutputLocation> locations) {
        XXH3_128bits_update(state_.get(), locations.data(), locations.size_bytes());
    }

    void add(std::string_view text) {
        const std::size_t sample = isSmall_ ? kBlock : kBlock / 16;
        for (std::size_t at = 0; at < text.size(); at += kBlock) add(text, at, sample);
    }

    /// Adds less of a long body: it is compressed, mostly, and thus differs everywhere from where
    /// it differs at all.
    void add(const ByteBuffer& file, const LongBody& body) {
        constexpr std::size_t kLongBlock = 64 * kBlock;
        for (std::size_t at = 0; at < body.size; at += kLongBlock) {
            const std::size_t sample = std::min(kBlock / 16, body.size - at);
            add(file.view(body.begin + at, sample, room_), 0, sample);
        }
    }

    [[nodiscard]] XXH128_hash_t value() const { return XXH3_128bits_digest(state_.get()); }

 private:
    static constexpr std::size_t kSmall = std::size_t{1} << 20U;
    static constexpr std::size_t kBlock = std::size_t{4} << 10U;

    void add(std::string_view text, std::size_t at, std::size_t count) {
        const std::string_view part = text.substr(at, count);
        XXH3_128bits_update(state_.get(), part.data(), part.size());
    }

    std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> state_;
    bool isSmall_;
    std::string room_;  // for samples
};

XXH128_hash_t hashOf(const ByteBuffer& file, std::span<const OutputLocation> locations,
                     std::span<const LongBody> longBodies) {
    const std::string_view text = file.text();
    FileHash hash(text.size());
    hash.add(locations);
    std::size_t at = 0;
    for (const LongBody& body : longBodies) {
        hash.add(text.substr(at, body.begin - at));
        hash.add(file, body);
        at = body.begin + body.size;
    }
    hash.add(text.substr(at));
    return hash.value();
}

/// Appends " /ID [...]" (ISO 32000-2, 14.4), derived from what was written so far, so that the same
/// inputs give the same file and different ones different identifiers.
void appendIdentifier(ByteBuffer& out, std::span<const OutputLocation> locations,
                      std::span<const LongBody> longBodies) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const XXH128_hash_t hash = hashOf(out, locations, longBodies);
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(&canonical, hash);
    std::array<char, 2 * sizeof(canonical.digest)> digits{};
    for (std::size_t i = 0; i < sizeof(canonical.digest); ++i) {
        digits[2 * i] = kDigits[canonical.digest[i] >> 4U];
        digits[2 * i + 1] = kDigits[canonical.digest[i] & 15U];
    }
    const std::string_view text(digits.data(), digits.size());
    out.append("/ID[<");
    out.append(text);
    out.append("><");
    out.append(text);
    out.append(">]");
}

void appendTrailerEntries(ByteBuffer& out, std::span<const OutputLocation> locations,
                          std::uint32_t root, std::span<const LongBody> longBodies) {
    out.append("/Size ");
    out.append(std::uint64_t{locations.size()});
    out.append("/Root ");
    appendReference(root, out);
    appendIdentifier(out, locations, longBodies);
}

void appendEnd(ByteBuffer& out, std::uint64_t offset) {
    out.append("startxref\n");
    out.append(offset);
    out.append("\n%%EOF\n");
}

/// For each free object the next free one, in a ring that begins at object 0.
class FreeList {
 public:
    explicit FreeList(const std::vector<OutputLocation>& locations) : locations_(locations) {}

    /// The free object after `number`; 0 behind the last. Ask in rising order.
    std::uint64_t after(std::size_t number) {
        if (next_ <= number) {
            next_ = number + 1;
            while (next_ < locations_.size() && !locations_[next_].isFree()) ++next_;
        }
        return next_ < locations_.size() ? next_ : 0;
    }

 private:
    const std::vector<OutputLocation>& locations_;
    std::size_t next_ = 0;
};

/// Writes `value` with leading zeros.
void fillDecimal(std::span<char> field, std::uint64_t value) {
    for (std::size_t i = field.size(); i-- > 0; value /= 10)
        field[i] = static_cast<char>('0' + value % 10);
}

void fillBigEndian(std::span<char> field, std::uint64_t value) {
    for (std::size_t i = field.size(); i-- > 0; value >>= 8U)
        field[i] = static_cast<char>(value & 0xffU);
}

std::size_t bytesFor(std::uint64_t value) {
    std::size_t bytes = 1;
    while ((value >>= 8U) != 0) ++bytes;
    return bytes;
}

/// The three fields of one row (ISO 32000-2, table 18).
struct Row {
    std::uint8_t type = 0;
    std::uint64_t second = 0;
    std::uint32_t third = 0;
};

Row rowFor(std::size_t number, OutputLocation location, FreeList& freeList) {
    if (location.isFree()) return {0, freeList.after(number), number == 0 ? 65535U : 0U};
    if (location.isPacked()) return {2, location.position(), location.index()};
    return {1, location.position(), 0};
}

/// All rows, each as its difference from the one above (the PNG predictor Up): the offsets rise
/// slowly, so nearly all of that is zeros.
ByteBuffer predictedRows(const std::vector<OutputLocation>& locations, std::size_t positionWidth) {
    constexpr char kUp = 2;
    const std::size_t width = 1 + positionWidth + 2;
    ByteBuffer rows;
    FreeList freeList(locations);
    std::vector<char> above(width);
    std::vector<char> fields(width);
    for (std::size_t number = 0; number < locations.size(); ++number) {
        const Row row = rowFor(number, locations[number], freeList);
        const std::span<char> all(fields);
        fillBigEndian(all.first(1), row.type);
        fillBigEndian(all.subspan(1, positionWidth), row.second);
        fillBigEndian(all.last(2), row.third);
        const auto predicted = rows.extend(1 + width);
        predicted[0] = kUp;
        for (std::size_t i = 0; i < width; ++i)
            predicted[i + 1] = static_cast<char>(fields[i] - above[i]);
        above.swap(fields);
    }
    return rows;
}

}  // namespace

void writeCrossReferenceTable(ByteBuffer& out, const std::vector<OutputLocation>& locations,
                              std::uint32_t root, std::span<const LongBody> longBodies) {
    const std::uint64_t start = out.size();
    out.append("xref\n0 ");
    out.append(std::uint64_t{locations.size()});
    out.append("\n");
    FreeList freeList(locations);
    constexpr std::string_view kEntry = "0000000000 00000 n \n";
    const auto entries = out.extend(kEntry.size() * locations.size());
    for (std::size_t number = 0; number < locations.size(); ++number) {
        const bool isFree = locations[number].isFree();
        const auto entry = entries.subspan(kEntry.size() * number, kEntry.size());
        kEntry.copy(entry.data(), entry.size());
        fillDecimal(entry.first(10),
                    isFree ? freeList.after(number) : locations[number].position());
        if (number == 0) fillDecimal(entry.subspan(11, 5), 65535);
        if (isFree) entry[17] = 'f';
    }
    out.append("trailer\n<<");
    appendTrailerEntries(out, locations, root, longBodies);
    out.append(">>\n");
    appendEnd(out, start);
}

void writeCrossReferenceStream(ByteBuffer& out, std::vector<OutputLocation>& locations,
                               std::uint32_t number, std::uint32_t root, FrugalEncoder& encoder,
                               std::span<const LongBody> longBodies) {
    const std::uint64_t start = out.size();
    locations[number] = OutputLocation::inFile(start);
    // No position exceeds this one but the numbers of objects.
    const std::size_t positionWidth = bytesFor(std::max<std::uint64_t>(start, locations.size()));
    ByteBuffer body;
    encoder.encode(predictedRows(locations, positionWidth).text(), body);

    out.append(std::uint64_t{number});
    out.append(" 0 obj\n<</Type/XRef/W[1 ");
    out.append(std::uint64_t{positionWidth});
    out.append(" 2]/Filter/FlateDecode/DecodeParms<</Predictor 12/Columns ");
    out.append(std::uint64_t{1 + positionWidth + 2});
    out.append(">>/Length ");
    out.append(std::uint64_t{body.size()});
    appendTrailerEntries(out, locations, root, longBodies);
    out.append(">>stream\n");
    out.append(body.text());
    out.append("\nendstream\nendobj\n");
    appendEnd(out, start);
}

}  // namespace quirebind
