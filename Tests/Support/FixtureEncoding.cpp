// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Tests/Support/FixtureEncoding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <ranges>
#include <stdexcept>

#include <zlib.h>

namespace quirebind::test {

namespace {

constexpr std::array<std::string_view, 5> kKnownFilters{
    "/FlateDecode", "/LZWDecode", "/RunLengthDecode", "/ASCIIHexDecode", "/ASCII85Decode"};

int byteAt(std::string_view data, std::size_t i) {
    return static_cast<unsigned char>(data[i]);
}

char toByte(int value) {
    return static_cast<char>(static_cast<unsigned char>(value & 0xFF));
}

/// Packs codes of varying width, the highest bit first.
class BitWriter {
 public:
    void write(unsigned code, unsigned width) {
        pending_ = (pending_ << width) | code;
        pendingBits_ += width;
        while (pendingBits_ >= 8) {
            pendingBits_ -= 8;
            bytes_.push_back(toByte(static_cast<int>((pending_ >> pendingBits_) & 0xFFU)));
        }
    }

    [[nodiscard]] std::string finish() {
        if (pendingBits_ > 0) write(0, 8 - pendingBits_);
        return bytes_;
    }

 private:
    std::string bytes_;
    std::uint64_t pending_ = 0;
    unsigned pendingBits_ = 0;
};

/// The Paeth function of the PNG specification (RFC 2083, 6.6).
int paeth(int left, int above, int aboveLeft) {
    const int estimate = left + above - aboveLeft;
    const int byLeft = std::abs(estimate - left);
    const int byAbove = std::abs(estimate - above);
    const int byAboveLeft = std::abs(estimate - aboveLeft);
    if (byLeft <= byAbove && byLeft <= byAboveLeft) return left;
    return byAbove <= byAboveLeft ? above : aboveLeft;
}

int predictPNG(int function, int left, int above, int aboveLeft) {
    switch (function) {
        case 1:
            return left;
        case 2:
            return above;
        case 3:
            return (left + above) / 2;
        case 4:
            return paeth(left, above, aboveLeft);
        default:
            return 0;
    }
}

std::string encodeWith(const std::string& filter, const std::string& data, bool earlyChange) {
    if (filter == "/FlateDecode") return encodeFlate(data);
    if (filter == "/LZWDecode") return encodeLZW(data, earlyChange);
    if (filter == "/RunLengthDecode") return encodeRunLength(data);
    if (filter == "/ASCIIHexDecode") return encodeASCIIHex(data);
    return encodeASCII85(data);
}

}  // namespace

std::string encodeFlate(std::string_view data) {
    auto size = compressBound(static_cast<uLong>(data.size()));
    std::vector<Bytef> out(size);
    const std::vector<Bytef> in(data.begin(), data.end());
    if (compress(out.data(), &size, in.data(), static_cast<uLong>(in.size())) != Z_OK) {
        throw std::runtime_error("zlib cannot compress");
    }
    return {out.begin(), out.begin() + static_cast<std::ptrdiff_t>(size)};
}

std::string encodeLZW(std::string_view data, bool earlyChange) {
    constexpr unsigned kClear = 256;
    constexpr unsigned kEnd = 257;
    constexpr unsigned kFirstFree = 258;
    constexpr unsigned kLastEntry = 4094;  // Entry 4095 would need codes of 13 bits.
    const unsigned early = earlyChange ? 1 : 0;
    std::map<std::string, unsigned, std::less<>> table;
    unsigned next = kFirstFree;
    unsigned width = 9;
    BitWriter out;
    out.write(kClear, width);
    std::string run;
    const auto codeOf = [&table](const std::string& bytes) {
        return bytes.size() == 1 ? static_cast<unsigned>(byteAt(bytes, 0)) : table.at(bytes);
    };
    for (const char byte : data) {
        const std::string longer = run + byte;
        if (longer.size() == 1 || table.contains(longer)) {
            run = longer;
            continue;
        }
        out.write(codeOf(run), width);
        table.emplace(longer, next);
        if (next + early == (1U << width)) ++width;
        if (next++ == kLastEntry) {
            out.write(kClear, width);
            table.clear();
            next = kFirstFree;
            width = 9;
        }
        run.assign(1, byte);
    }
    if (!run.empty()) {
        out.write(codeOf(run), width);
        // The decoder makes an entry of this code too, and may widen before the end marker.
        if (next + early == (1U << width)) ++width;
    }
    out.write(kEnd, width);
    return out.finish();
}

std::string encodeRunLength(std::string_view data) {
    constexpr std::size_t kLongest = 128;
    std::string out;
    const auto runAt = [&](std::size_t i) {
        const auto end = data.find_first_not_of(data[i], i);
        return std::min(std::min(end, data.size()) - i, kLongest);
    };
    std::size_t i = 0;
    while (i < data.size()) {
        const std::size_t run = runAt(i);
        if (run >= 2) {
            out.push_back(toByte(257 - static_cast<int>(run)));
            out.push_back(data[i]);
            i += run;
            continue;
        }
        std::size_t end = i + 1;
        while (end < data.size() && end - i < kLongest && runAt(end) == 1) ++end;
        out.push_back(toByte(static_cast<int>(end - i) - 1));
        out.append(data.substr(i, end - i));
        i = end;
    }
    out.push_back(toByte(128));
    return out;
}

std::string encodeASCIIHex(std::string_view data) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string out;
    for (std::size_t i = 0; i < data.size(); ++i) {
        out.push_back(kDigits[static_cast<std::size_t>(byteAt(data, i)) / 16]);
        out.push_back(kDigits[static_cast<std::size_t>(byteAt(data, i)) % 16]);
    }
    return out + '>';
}

std::string encodeASCII85(std::string_view data) {
    std::string out;
    for (std::size_t i = 0; i < data.size(); i += 4) {
        const std::size_t count = std::min<std::size_t>(4, data.size() - i);
        std::uint32_t word = 0;
        for (std::size_t j = 0; j < 4; ++j) {
            word = word * 256 + (j < count ? static_cast<std::uint32_t>(byteAt(data, i + j)) : 0U);
        }
        if (word == 0 && count == 4) {
            out.push_back('z');
            continue;
        }
        std::array<char, 5> digits{};
        for (char& digit : std::views::reverse(digits)) {
            digit = static_cast<char>('!' + word % 85);
            word /= 85;
        }
        out.append(digits.data(), count + 1);
    }
    return out + "~>";
}

std::string applyPredictor(std::string_view data, int predictor, std::size_t columns) {
    const bool png = predictor >= 10 && predictor <= 15;
    if (!png && predictor != 2) throw std::invalid_argument("unknown predictor");
    if (columns == 0) throw std::invalid_argument("a predictor needs columns");
    std::string out;
    for (std::size_t row = 0; row < data.size(); row += columns) {
        const int function = predictor == 15 ? static_cast<int>(row / columns % 5) : predictor - 10;
        if (png) out.push_back(toByte(function));
        const std::size_t end = std::min(row + columns, data.size());
        for (std::size_t i = row; i < end; ++i) {
            const int left = i > row ? byteAt(data, i - 1) : 0;
            const int above = row > 0 ? byteAt(data, i - columns) : 0;
            const int aboveLeft = i > row && row > 0 ? byteAt(data, i - columns - 1) : 0;
            const int guess = png ? predictPNG(function, left, above, aboveLeft) : left;
            out.push_back(toByte(byteAt(data, i) - guess));
        }
    }
    return out;
}

StreamEncoding StreamEncoding::fromDirective(const FixtureDirective& directive,
                                             std::size_t defaultColumns) {
    StreamEncoding encoding;
    if (directive.has("filter")) encoding.filters = splitAtCommas(directive.option("filter", ""));
    for (const std::string& filter : encoding.filters) {
        if (std::ranges::find(kKnownFilters, filter) == kKnownFilters.end()) {
            failAtLine(directive.line, "unknown filter '" + filter + "'");
        }
    }
    const auto predictor = directive.optionNumber("predictor", 1);
    if (predictor != 1 && predictor != 2 && (predictor < 10 || predictor > 15)) {
        failAtLine(directive.line, "unknown predictor " + std::to_string(predictor));
    }
    encoding.predictor = static_cast<int>(predictor);
    encoding.columns = directive.optionNumber("columns", defaultColumns);
    if (encoding.columns == 0) failAtLine(directive.line, "a predictor needs columns");
    const std::string last = encoding.filters.empty() ? "" : encoding.filters.back();
    if (predictor != 1 && last != "/FlateDecode" && last != "/LZWDecode") {
        failAtLine(directive.line, "a predictor needs /FlateDecode or /LZWDecode as last filter");
    }
    encoding.earlyChange = directive.optionNumber("early", 1) != 0;
    return encoding;
}

std::string StreamEncoding::encode(std::string_view data) const {
    std::string encoded = predictor == 1 ? std::string(data)  //
                                         : applyPredictor(data, predictor, columns);
    for (const std::string& filter : std::views::reverse(filters)) {
        encoded = encodeWith(filter, encoded, earlyChange);
    }
    return encoded;
}

std::string StreamEncoding::filterValue() const {
    if (filters.empty()) return {};
    if (filters.size() == 1) return filters.front();
    std::string value = "[";
    for (const std::string& filter : filters) value += (value.size() > 1 ? " " : "") + filter;
    return value + "]";
}

std::string StreamEncoding::parametersValue() const {
    std::string value;
    bool any = false;
    for (std::size_t i = 0; i < filters.size(); ++i) {
        std::string entries;
        if (predictor != 1 && i + 1 == filters.size()) {
            entries = " /Predictor " + std::to_string(predictor) +  //
                      " /Columns " + std::to_string(columns);
        }
        if (!earlyChange && filters[i] == "/LZWDecode") entries += " /EarlyChange 0";
        any = any || !entries.empty();
        if (i > 0) value += ' ';
        value += entries.empty() ? "null" : "<<" + entries + " >>";
    }
    if (!any) return {};
    return filters.size() == 1 ? value : "[" + value + "]";
}

}  // namespace quirebind::test
