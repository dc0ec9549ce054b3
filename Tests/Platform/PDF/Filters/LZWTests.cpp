// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Platform/PDF/Filters/LZW.h"
#include "Tests/Platform/PDF/Filters/FilterTestSupport.h"

namespace quirebind {
namespace {

using namespace filtertest;

/// Writes codes, whatever they mean, from the high-order bit down.
class CodeWriter {
 public:
    void put(unsigned code, unsigned width) {
        for (unsigned bit = width; bit-- > 0;) {
            if (bitCount_ % 8 == 0) bytes_.push_back('\0');
            const unsigned set = ((code >> bit) & 1U) << (7U - bitCount_ % 8U);
            bytes_.back() = static_cast<char>(static_cast<unsigned char>(bytes_.back()) | set);
            ++bitCount_;
        }
    }
    [[nodiscard]] const std::string& bytes() const { return bytes_; }

 private:
    std::string bytes_;
    unsigned bitCount_ = 0;
};

std::string codesOf9Bits(std::initializer_list<unsigned> codes) {
    CodeWriter writer;
    for (const unsigned code : codes) writer.put(code, 9);
    return writer.bytes();
}

struct Encoding {
    bool earlyChange = true;
    bool startsWithClear = true;
    bool endsWithEnd = true;
    bool clearsFullTable = true;
};

/// A plain encoder: its table says which code stands for a code and a byte after it.
class Encoder {
 public:
    explicit Encoder(Encoding encoding) : encoding_(encoding) {}

    std::string encode(std::string_view text) {
        if (encoding_.startsWithClear) writer_.put(256, width_);
        std::optional<unsigned> current;
        for (const char c : text) {
            const unsigned byte = static_cast<unsigned char>(c);
            if (!current) {
                current = byte;
            } else if (const auto found = table_.find({*current, byte}); found != table_.end()) {
                current = found->second;
            } else {
                put(*current);
                if (next_ <= 4096) table_[{*current, byte}] = next_ - 1;
                clearFullTable();
                current = byte;
            }
        }
        if (current) put(*current);
        if (encoding_.endsWithEnd) writer_.put(257, width_);
        return writer_.bytes();
    }

 private:
    // Codes grow a bit once the table has the entry 511, 1023 or 2047, or, without early change,
    // one entry later. The last code makes room for an entry as all others do.
    void put(unsigned code) {
        writer_.put(code, width_);
        const unsigned last = encoding_.earlyChange ? next_ + 1 : next_;
        if (last == 512 || last == 1024 || last == 2048) ++width_;
        if (next_ <= 4096) ++next_;
    }

    // One entry before the table is full: the last moment that suits both kinds of change.
    void clearFullTable() {
        if (!encoding_.clearsFullTable || next_ != 4095) return;
        writer_.put(256, width_);
        table_.clear();
        next_ = 258;
        width_ = 9;
    }

    Encoding encoding_;
    CodeWriter writer_;
    std::map<std::pair<unsigned, unsigned>, unsigned> table_;
    unsigned next_ = 258;
    unsigned width_ = 9;
};

std::string lzwOf(std::string_view text, Encoding encoding) {
    return Encoder(encoding).encode(text);
}

TEST(LZWFilter, DecodesTheStandardsExample) {
    // ISO 32000-2, 7.4.4.2, table 7.
    const std::string encoded = bytes({0x80, 0x0B, 0x60, 0x50, 0x22, 0x0C, 0x0C, 0x85, 0x01});
    const std::string decoded = bytes({45, 45, 45, 45, 45, 65, 45, 45, 45, 66});
    EXPECT_THAT(decodeLZW(encoded, true, kNoLimit), isComplete(decoded));
    EXPECT_THAT(decodeLZW(encoded, false, kNoLimit), isComplete(decoded));
}

void expectRoundTrip(const std::string& text, Encoding encoding) {
    EXPECT_THAT(decodeLZW(lzwOf(text, encoding), encoding.earlyChange, kNoLimit), isComplete(text))
        << "size " << text.size() << ", early change " << encoding.earlyChange;
}

TEST(LZWFilter, DecodesWhatAnEncoderMade) {
    for (const std::size_t size : {0U, 1U, 2U, 253U, 254U, 255U, 256U, 1000U, 3838U, 50'000U}) {
        for (const std::string& text :
             {randomBytes(1, size), repetitiveBytes(2, size), std::string(size, 'a')}) {
            expectRoundTrip(text, {.earlyChange = true});
            expectRoundTrip(text, {.earlyChange = false});
        }
    }
}

TEST(LZWFilter, DecodesEveryLengthAroundAChangeOfWidth) {
    const std::string text = randomBytes(5, 2000);
    for (const std::size_t from : {245U, 755U, 1780U}) {
        for (std::size_t size = from; size < from + 30; ++size) {
            expectRoundTrip(text.substr(0, size), {.earlyChange = true});
            expectRoundTrip(text.substr(0, size), {.earlyChange = false});
        }
    }
}

TEST(LZWFilter, ChangesTheWidthAtAnotherCodeWithEarlyChange) {
    const std::string text = randomBytes(6, 1000);
    const std::string encoded = lzwOf(text, {.earlyChange = false});
    EXPECT_NE(decodeLZW(encoded, true, kNoLimit).bytes, text);
    EXPECT_THAT(decodeLZW(encoded, false, kNoLimit), isComplete(text));
}

TEST(LZWFilter, DecodesAStringThatIsNamedWhileItIsWritten) {
    EXPECT_THAT(decodeLZW(codesOf9Bits({256, 'a', 258, 259, 257}), true, kNoLimit),
                isComplete("aaaaaa"));
    EXPECT_THAT(decodeLZW(codesOf9Bits({256, 'a', 'b', 258, 260, 257}), true, kNoLimit),
                isComplete("abababa"));
}

TEST(LZWFilter, NeedsNoClearCodeAtTheStart) {
    const std::string text = repetitiveBytes(3, 20'000);
    expectRoundTrip(text, {.startsWithClear = false});
}

TEST(LZWFilter, NeedsNoEndCode) {
    for (std::size_t size = 0; size < 400; ++size) {
        expectRoundTrip(repetitiveBytes(4, size), {.endsWithEnd = false});
    }
    EXPECT_THAT(decodeLZW("", true, kNoLimit), isComplete(""));
}

TEST(LZWFilter, EndsAtTheEndCodeAndIgnoresTheRest) {
    const std::string encoded = lzwOf("abcabcabc", {}) + "\r\nrest";
    EXPECT_THAT(decodeLZW(encoded, true, kNoLimit), isComplete("abcabcabc"));
}

TEST(LZWFilter, GoesOnWithAFullTable) {
    for (const std::string& text : {randomBytes(8, 20'000), repetitiveBytes(9, 200'000)}) {
        expectRoundTrip(text, {.earlyChange = true, .clearsFullTable = false});
        expectRoundTrip(text, {.earlyChange = false, .clearsFullTable = false});
    }
}

TEST(LZWFilter, ForgetsTheTableAtAClearCode) {
    EXPECT_THAT(decodeLZW(codesOf9Bits({256, 'a', 'b', 258, 256, 'c', 258, 257}), true, kNoLimit),
                isComplete("ababccc"));
    EXPECT_THAT(decodeLZW(codesOf9Bits({256, 256, 'a', 256, 256, 257}), true, kNoLimit),
                isComplete("a"));
    EXPECT_THAT(decodeLZW(codesOf9Bits({256, 'a', 'b', 256, 258}), true, kNoLimit),
                isDamagedAfter("ab"));
}

TEST(LZWFilter, KeepsWhatPrecedesACodeOutOfRange) {
    EXPECT_THAT(decodeLZW(codesOf9Bits({256, 258, 'a', 257}), true, kNoLimit), isDamagedAfter(""));
    EXPECT_THAT(decodeLZW(codesOf9Bits({256, 'a', 259, 257}), true, kNoLimit), isDamagedAfter("a"));
    EXPECT_THAT(decodeLZW(codesOf9Bits({256, 'a', 'b', 511, 257}), true, kNoLimit),
                isDamagedAfter("ab"));
}

TEST(LZWFilter, GivesTheStartOfTruncatedData) {
    const std::string text = repetitiveBytes(10, 3000);
    const std::string encoded = lzwOf(text, {});
    std::size_t previous = 0;
    for (std::size_t size = 0; size < encoded.size(); ++size) {
        const Decoded decoded = decodeLZW(encoded.substr(0, size), true, kNoLimit);
        EXPECT_THAT(decoded, isComplete(text.substr(0, decoded.bytes.size()))) << "size " << size;
        EXPECT_GE(decoded.bytes.size(), previous) << "size " << size;
        previous = decoded.bytes.size();
    }
    EXPECT_EQ(previous, text.size());
}

TEST(LZWFilter, HoldsTheLimitExactly) {
    for (const std::string& text : {repetitiveBytes(11, 3000), std::string(3000, 'a')}) {
        const std::string encoded = lzwOf(text, {});
        expectExactLimit(text, [&](std::size_t limit) { return decodeLZW(encoded, true, limit); });
    }
}

TEST(LZWFilter, StopsABombAtTheLimit) {
    // Each code is the newest string, a byte longer than the one before; then the longest again and
    // again.
    CodeWriter writer;
    writer.put(0, 9);
    for (unsigned code = 258; code < 4096; ++code) {
        writer.put(code, std::clamp(static_cast<unsigned>(std::bit_width(code + 1)), 9U, 12U));
    }
    for (int i = 0; i < 1000; ++i) writer.put(4095, 12);
    const std::size_t size = 1 + (2 + 3839) * 3838 / 2 + 1000 * 3839;
    EXPECT_THAT(decodeLZW(writer.bytes(), true, size), isComplete(std::string(size, '\0')));
    EXPECT_THAT(decodeLZW(writer.bytes(), true, 1'000'000), isTooLarge());
}

TEST(LZWFilter, HoldsTheLimitForRandomBytes) {
    for (const bool earlyChange : {true, false}) {
        expectLimitHoldsForRandomBytes([&](std::string_view input, std::size_t limit) {
            return decodeLZW(input, earlyChange, limit);
        });
    }
}

// Random bytes soon meet a code out of range; a few wrong bits in sound data get further.
TEST(LZWFilter, HoldsTheLimitForSoundDataWithAWrongByte) {
    const std::string text = repetitiveBytes(12, 2000);
    const std::string sound = lzwOf(text, {});
    for (std::size_t at = 0; at < sound.size(); ++at) {
        std::string encoded = sound;
        encoded[at] = static_cast<char>(~static_cast<unsigned char>(encoded[at]));
        EXPECT_LE(decodeLZW(encoded, true, 2500).bytes.size(), 2500);
        EXPECT_LE(decodeLZW(encoded, false, 2500).bytes.size(), 2500);
    }
}

}  // namespace
}  // namespace quirebind
