// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/CrossReferenceReader.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "Platform/PDF/Filters/StreamDecoder.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Reading/ReadIndirectObject.h"
#include "Platform/PDF/Reading/StreamBody.h"
#include "Platform/PDF/Syntax/Characters.h"
#include "Platform/PDF/Syntax/UnsignedNumber.h"

namespace quirebind {
namespace {

using Kind = ObjectLocation::Kind;

/// Cross-reference streams are read before there is a table to follow references by.
Value directOnly(Value value) {
    return value.reference() ? Value() : value;
}

/// The offset under `key`, where there is one. Some writers put 0 for none.
std::optional<std::uint64_t> offsetUnder(Value trailer, std::string_view key) {
    const auto offset = trailer.find(key).integer();
    if (!offset || *offset <= 0) return std::nullopt;
    return static_cast<std::uint64_t>(*offset);
}

/// Whether an object begins somewhere in `text`.
bool hasObject(std::string_view text) {
    constexpr std::string_view kBehindNumber = " obj";
    for (std::size_t at = text.find(kBehindNumber); at != std::string_view::npos;
         at = text.find(kBehindNumber, at + 1))
        if (at > 0 && isDigit(text[at - 1])) return true;
    return false;
}

/// The columns of a cross-reference stream's rows: widths in bytes (ISO 32000-2, table 17).
struct RowFormat {
    std::array<std::size_t, 3> widths{};
    std::size_t size = 0;
};

RowFormat rowFormat(Value widths) {
    constexpr std::int64_t kWidest = 8;
    RowFormat format;
    ArrayReader reader(widths);
    for (std::size_t& width : format.widths) {
        const auto element = reader.next();
        const auto value = element ? element->integer() : std::nullopt;
        if (!value || *value < 0 || *value > kWidest)
            throw DamagedDocument("a cross-reference stream without usable /W");
        width = static_cast<std::size_t>(*value);
        format.size += width;
    }
    if (format.size == 0) throw DamagedDocument("a cross-reference stream of empty rows");
    return format;
}

/// The next big-endian number of a row.
std::uint64_t takeField(std::string_view& row, std::size_t width) {
    std::uint64_t value = 0;
    for (const char c : row.substr(0, width)) value = value << 8U | static_cast<unsigned char>(c);
    row.remove_prefix(width);
    return value;
}

ObjectLocation parseRow(std::string_view row, const RowFormat& format) {
    constexpr std::uint64_t kInFile = 1;
    constexpr std::uint64_t kInStream = 2;
    const std::uint64_t type = format.widths[0] == 0 ? kInFile : takeField(row, format.widths[0]);
    const std::uint64_t second = takeField(row, format.widths[1]);
    const std::uint64_t third = takeField(row, format.widths[2]);
    if (type == kInFile && third <= 65535)
        return {second, static_cast<std::uint32_t>(third), Kind::inFile};
    if (type == kInStream && second <= limits::kObjectNumber && third <= limits::kObjectNumber)
        return {second, static_cast<std::uint32_t>(third), Kind::inStream};
    return {0, 0, Kind::free};  // other types too: a reference to them is null (7.5.8.3)
}

}  // namespace

std::string readTrailerDictionary(SourceImage& image, std::uint64_t offset, WorkBudget& budget) {
    std::size_t length = 1024;
    for (;;) {
        const std::string_view text = image.view(offset, length);
        const bool isWhole = offset + text.size() >= image.size();
        const Extent extent = scanValue(text, 0);
        budget.spend(extent.looked);
        if (extent.isValue() && extent.in(text).starts_with("<<"))
            return std::string(extent.in(text));
        if (isWhole || extent.looked < text.size()) throw DamagedDocument("no trailer dictionary");
        length = 2 * text.size();
    }
}

namespace {

/// An entry of a classic table.
struct TableEntry {
    std::uint64_t offset = 0;
    std::uint64_t generation = 0;
    bool inUse = false;
};

constexpr std::size_t kUsualEntry = 20;

/// The number that all of these bytes are the digits of. That they are is looked at once, in the
/// end: a large file has millions.
std::optional<std::uint64_t> wholeNumber(std::string_view digits) {
    std::uint64_t number = 0;
    unsigned largest = 0;
    for (const char c : digits) {
        const unsigned digit = static_cast<unsigned char>(c) - unsigned{'0'};
        largest = std::max(largest, digit);
        number = number * 10 + digit;
    }
    if (largest > 9) return std::nullopt;
    return number;
}

/// The entry that `text` begins with, if it is written as it should be (ISO 32000-2, 7.5.4):
/// 20 bytes, of which two are the end of the line. Nearly all are.
///
///     nnnnnnnnnn ggggg n
std::optional<TableEntry> usualEntry(std::string_view text) {
    if (text.size() < kUsualEntry || text[10] != ' ' || text[16] != ' ') return std::nullopt;
    if (text[17] != 'n' && text[17] != 'f') return std::nullopt;
    const std::string_view end = text.substr(18, 2);
    if (end != " \n" && end != " \r" && end != "\r\n") return std::nullopt;
    const auto offset = wholeNumber(text.substr(0, 10));
    const auto generation = wholeNumber(text.substr(11, 5));
    if (!offset || !generation) return std::nullopt;
    return TableEntry{*offset, *generation, text[17] == 'n'};
}

}  // namespace

/// Reads a classic table token by token, fetching the file as it goes.
class TableCursor {
 public:
    TableCursor(SourceImage& image, std::uint64_t offset, WorkBudget& budget)
        : image_(image), offset_(offset), budget_(budget) {}

    /// Moves behind the next token; false where it is no unsigned number.
    bool number(std::uint64_t& value) {
        toToken();
        return readUnsigned(text_, at_, value);
    }

    /// Moves behind the next token if it begins with `word`.
    bool keyword(std::string_view word) {
        toToken();
        if (!text_.substr(at_).starts_with(word)) return false;
        at_ += word.size();
        return true;
    }

    /// Reads an entry and moves behind its line.
    TableEntry entry() {
        toToken();
        if (const auto usual = usualEntry(text_.substr(at_))) {
            at_ += kUsualEntry;
            return *usual;
        }
        TableEntry entry;
        if (!number(entry.offset) || !number(entry.generation))
            throw DamagedDocument("a broken cross-reference entry");
        entry.inUse = keyword("n");
        if (!entry.inUse && !keyword("f")) throw DamagedDocument("a broken cross-reference entry");
        skipRemark();
        return entry;
    }

    [[nodiscard]] std::uint64_t offset() const { return offset_ + at_; }

 private:
    /// Passes over what some writers remark behind an entry, up to the end of its line.
    void skipRemark() {
        while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t')) ++at_;
        fetch();
        if (at_ < text_.size() && (isDigit(text_[at_]) || text_.substr(at_).starts_with("trailer")))
            return;
        while (at_ < text_.size() && text_[at_] != '\n' && text_[at_] != '\r') {
            ++at_;
            fetch();
        }
    }

    /// Moves to the next token, with all of it in view.
    void toToken() {
        do {
            fetch();
            at_ = skipWhite(text_, at_);
        } while (needsMore());
    }

    [[nodiscard]] bool needsMore() const {
        constexpr std::size_t kLongestToken = 128;
        if (text_.empty()) return offset_ < image_.size();
        return at_ + kLongestToken > text_.size() && offset_ + text_.size() < image_.size();
    }

    void fetch() {
        constexpr std::size_t kWindow = std::size_t{64} << 10U;
        if (!needsMore()) return;
        budget_.spend(at_);
        offset_ += at_;
        at_ = 0;
        text_ = image_.view(offset_, kWindow);
    }

    SourceImage& image_;
    std::uint64_t offset_;
    WorkBudget& budget_;
    std::string_view text_;
    std::size_t at_ = 0;
};

CrossReferenceReader::CrossReferenceReader(SourceImage& image)
    : image_(image),
      budget_(limits::kSyntax, image.storedBytes()),
      result_{ObjectTable(image.size()), {}} {}

CrossReference CrossReferenceReader::read() {
    result_.newest = startOffset();
    std::optional<std::uint64_t> next = result_.newest;
    while (next) {
        if (visited_.size() == limits::kCrossReferenceSections)
            throw DamagedDocument("too many cross-reference sections");
        if (!visited_.insert(*next).second) break;  // a loop: everything has been read
        std::string trailer = readSection(*next);
        next = offsetUnder(Value(trailer), "Prev");
        if (result_.trailer.empty() && !Value(trailer).find("Root").isNull())
            result_.trailer = std::move(trailer);
    }
    if (result_.trailer.empty()) throw DamagedDocument("no trailer with a /Root");
    return std::move(result_);
}

std::uint64_t CrossReferenceReader::startOffset() {
    const std::uint64_t tail =
        image_.size() - std::min<std::uint64_t>(image_.size(), limits::kTail);
    const std::string_view text = image_.view(tail, limits::kTail);
    constexpr std::string_view kKeyword = "startxref";
    std::size_t at = text.rfind(kKeyword);
    if (at == std::string_view::npos) throw DamagedDocument("no startxref");
    at = skipWhite(text, at + kKeyword.size());
    std::uint64_t offset = 0;
    if (!readUnsigned(text, at, offset)) throw DamagedDocument("startxref without an offset");
    // A short one is overlooked, by all readers: the revision before it is sound.
    if (text.size() - at > limits::kUsualTail && hasObject(text.substr(at)))
        throw DamagedDocument("a revision without a cross-reference section");
    return offset;
}

std::string CrossReferenceReader::readSection(std::uint64_t offset) {
    if (offset >= image_.size()) throw DamagedDocument("a section beyond the end of the file");
    TableCursor cursor(image_, offset, budget_);
    return cursor.keyword("xref") ? readTable(cursor.offset()) : readStream(offset);
}

std::string CrossReferenceReader::readTable(std::uint64_t offset) {
    TableCursor cursor(image_, offset, budget_);
    std::vector<std::uint64_t> freed;
    while (!cursor.keyword("trailer")) readSubsection(cursor, freed);
    result_.table.addStored(cursor.offset() - offset);
    std::string trailer = readTrailerDictionary(image_, cursor.offset(), budget_);
    // What a hybrid file hides from old readers it lists as free in the table and again in the
    // stream, so the stream comes first.
    if (const auto stream = offsetUnder(Value(trailer), "XRefStm"))
        if (visited_.insert(*stream).second) readStream(*stream);
    for (const std::uint64_t number : freed) result_.table.add(number, {0, 0, Kind::free});
    return trailer;
}

void CrossReferenceReader::readSubsection(TableCursor& cursor, std::vector<std::uint64_t>& freed) {
    std::uint64_t first = 0;
    std::uint64_t count = 0;
    if (!cursor.number(first) || !cursor.number(count))
        throw DamagedDocument("a broken cross-reference table");
    for (std::uint64_t i = 0; i < count; ++i) {
        const auto [offset, generation, inUse] = cursor.entry();
        // Object 0 heads the list of free objects; some writers number it 1, and the others with
        // it.
        if (i == 0 && first == 1 && !inUse && offset == 0 && generation == 65535) first = 0;
        if (first + i > limits::kObjectNumber) continue;
        if (!inUse || offset == 0)
            freed.push_back(first + i);
        else
            result_.table.add(
                first + i,
                {offset, static_cast<std::uint32_t>(std::min<std::uint64_t>(generation, 65536)),
                 Kind::inFile});
    }
}

std::string CrossReferenceReader::readStream(std::uint64_t offset) {
    const IndirectObject object = readIndirectObject(image_, offset, budget_);
    if (!object.isStream) throw DamagedDocument("no cross-reference section where one should be");
    std::string dictionary(object.value.text());
    const Value trailer(dictionary);
    const std::uint64_t begin = offset + object.end;
    const auto length = static_cast<std::size_t>(
        streamBodyLength(image_, begin, trailer.find("Length").integer(), budget_));
    const std::string_view body = image_.view(begin, length).substr(0, length);
    const Decoded rows = decodeStream(trailer, body, directOnly, budget_);
    if (rows.status == DecodeStatus::tooLarge)
        throw DamagedDocument("a cross-reference stream cannot be decoded");
    result_.table.addStored(length);
    const bool allPromised = addRows(rows.bytes, trailer);
    // A wrong checksum does no harm; rows that are missing would make objects disappear.
    if (rows.status != DecodeStatus::complete && !allPromised)
        throw DamagedDocument("a cross-reference stream cannot be decoded");
    return dictionary;
}

/// False where there are fewer rows than the dictionary promises.
bool CrossReferenceReader::addRows(std::string_view rows, Value dictionary) {
    const RowFormat format = rowFormat(dictionary.find("W"));
    bool complete = true;
    const auto addRun = [&](std::int64_t first, std::int64_t count) {
        for (std::int64_t i = 0; i < count; ++i) {
            complete = rows.size() >= format.size;
            if (!complete) return;
            result_.table.add(static_cast<std::uint64_t>(first) + static_cast<std::uint64_t>(i),
                              parseRow(rows.substr(0, format.size), format));
            rows.remove_prefix(format.size);
        }
    };
    const Value index = dictionary.find("Index");
    if (!index.isArray()) {
        const auto size = dictionary.find("Size").integer();
        addRun(0, size.value_or(static_cast<std::int64_t>(rows.size() / format.size)));
        return complete;
    }
    ArrayReader reader(index);
    while (const auto first = reader.next()) {
        const auto number = first->integer();
        const auto count = reader.next().value_or(Value()).integer();
        if (!number || !count || *number < 0)
            throw DamagedDocument("a cross-reference stream with a broken /Index");
        addRun(*number, *count);
    }
    return complete;
}

}  // namespace quirebind
