// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/Recovery/FileScanner.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Reading/StreamBody.h"
#include "Platform/PDF/Syntax/Characters.h"

namespace quirebind {
namespace {

constexpr std::string_view kHeader = "%PDF-";
constexpr std::string_view kEndOfFile = "%%EOF";
constexpr std::string_view kTrailer = "trailer";
constexpr std::string_view kTable = "xref";
constexpr std::string_view kStart = "startxref";
constexpr std::string_view kObject = "obj";

/// Something in the text between objects.
struct Mark {
    enum class Kind : std::uint8_t { none, object, trailer, table, start, header, comment };
    Kind kind = Kind::none;
    std::size_t begin = 0;
    Reference id;  ///< Of an object.
};

/// The "N G " in front of the keyword obj that stands at `at`.
std::optional<Mark> objectMark(std::string_view text, std::size_t at) {
    const auto skipBack = [&](auto isWanted) {
        while (at > 0 && isWanted(text[at - 1])) --at;
        return at;
    };
    const std::size_t afterGeneration = skipBack(isWhite);
    const std::size_t generation = skipBack(isDigit);
    const std::size_t afterNumber = skipBack(isWhite);
    const std::size_t number = skipBack(isDigit);
    if (generation == afterGeneration || afterNumber == generation || number == afterNumber)
        return std::nullopt;
    std::size_t end = number;
    const auto id = parseObjectHeader(text, end);
    if (!id) return std::nullopt;
    return Mark{Mark::Kind::object, number, *id};
}

Mark findMark(std::string_view text) {
    using enum Mark::Kind;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view rest = text.substr(i);
        switch (text[i]) {
            case 'o':
                if (!rest.starts_with(kObject)) break;
                if (const auto mark = objectMark(text, i)) return *mark;
                break;
            case 't':
                if (rest.starts_with(kTrailer)) return {trailer, i, {}};
                break;
            case 's':
                if (rest.starts_with(kStart)) return {start, i, {}};
                break;
            case 'x':
                if (rest.starts_with(kTable)) return {table, i, {}};
                break;
            case '%':
                if (rest.starts_with(kHeader)) return {header, i, {}};
                if (i == 0 || text[i - 1] == '\n' || text[i - 1] == '\r') return {comment, i, {}};
                break;
            default:
                break;
        }
    }
    return {};
}

ScannedObject::Kind kindOf(Value value) {
    using enum ScannedObject::Kind;
    struct Name {
        std::string_view name;
        ScannedObject::Kind kind;
    };
    constexpr std::array<Name, 5> kNames{{{"Page", page},
                                          {"Pages", pageTreeNode},
                                          {"Catalog", catalog},
                                          {"ObjStm", objectStream},
                                          {"XRef", crossReferenceStream}}};
    const Value type = value.find("Type");
    for (const Name& candidate : kNames)
        if (type.isName(candidate.name)) return candidate.kind;
    return other;
}

/// Whether `position` is in one of the ranges, which are in order and do not overlap.
bool isInside(std::span<const std::pair<std::uint64_t, std::uint64_t>> ranges,
              std::uint64_t position) {
    const auto after = std::ranges::upper_bound(ranges, position, {},
                                                &std::pair<std::uint64_t, std::uint64_t>::first);
    return after != ranges.begin() && position < std::prev(after)->second;
}

}  // namespace

FileScanner::FileScanner(SourceImage& image)
    : window_(image), budget_(limits::kScan, image.storedBytes()) {}

FileScan FileScanner::scan() {
    while (at_ < window_.size()) readGap();
    dropInnerObjects();
    return std::move(result_);
}

void FileScanner::readGap() {
    constexpr std::size_t kStep = std::size_t{64} << 10U;
    const std::string_view text = window_.view(at_, kStep).substr(0, kStep);
    const Mark mark = findMark(text);
    if (mark.kind == Mark::Kind::none) {
        const bool isLast = at_ + text.size() >= window_.size();
        at_ += isLast ? text.size() : text.size() - limits::kObjectHeader;
        budget_.spend(text.size());
        if (text.back() == '\0') at_ = std::max(at_, window_.nextStored(at_));
        return;
    }
    budget_.spend(mark.begin + 1);
    at_ += mark.begin;
    switch (mark.kind) {
        case Mark::Kind::object:
            readObject(mark.id);
            break;
        case Mark::Kind::trailer:
            readTrailer();
            break;
        case Mark::Kind::table:
            result_.tables.push_back(at_);
            at_ += kTable.size();
            break;
        case Mark::Kind::start:
            result_.lastStartxref = at_;
            at_ += kStart.size();
            break;
        case Mark::Kind::header:
            at_ += kHeader.size();
            if (!result_.version) result_.version = parseVersion(window_.view(at_, 3));
            break;
        case Mark::Kind::comment:
            readComment(text.substr(mark.begin));
            break;
        case Mark::Kind::none:
            break;
    }
}

/// Writers that append to a file begin right behind its last line, which has no end.
void FileScanner::readComment(std::string_view text) {
    if (text.starts_with(kEndOfFile)) {
        at_ += kEndOfFile.size();
        return;
    }
    const std::size_t length = std::min(text.find_first_of("\r\n"), text.size());
    budget_.spend(length);
    at_ += length;
}

void FileScanner::readTrailer() {
    at_ += kTrailer.size();
    result_.trailers.push_back(at_);
    const std::string_view text = window_.view(at_, limits::kScannedTrailer);
    const Extent extent = scanValue(text, 0);
    budget_.spend(extent.looked);
    if (extent.isValue() && extent.in(text).starts_with("<<")) at_ += extent.end;
}

void FileScanner::readObject(Reference id) {
    if (result_.objects.size() == limits::kScannedObjects)
        throw DamagedDocument("more objects than a file has");
    ScannedObject object;
    object.offset = at_;
    object.number = id.number;
    object.generation = static_cast<std::uint16_t>(id.generation);
    if (const auto parsed = parseObject(at_)) {
        at_ += parsed->end;
        note(object, *parsed);
        if (parsed->isStream) skipBody(parsed->value);
    } else {
        std::size_t header = 0;
        const std::string_view text = window_.view(at_, limits::kObjectHeader);
        (void)parseObjectHeader(text, header);  // there is one
        at_ += std::max<std::size_t>(header, 1);
    }
    result_.objects.push_back(object);
}

std::optional<IndirectObject> FileScanner::parseObject(std::uint64_t offset) {
    constexpr std::size_t kFirstLook = 1024;
    for (std::size_t length = kFirstLook;; length *= 2) {
        const std::string_view text = window_.view(offset, length);
        const bool isWhole = offset + text.size() >= window_.size();
        if (auto object = parseIndirectObject(text, isWhole)) {
            budget_.spend(object->looked);
            return object;
        }
        std::size_t at = 0;
        if (!parseObjectHeader(text, at)) return std::nullopt;
        const Extent extent = scanValue(text, at);
        budget_.spend(extent.looked);
        const bool needsMore = extent.looked + limits::kObjectHeader >= text.size();
        if (!needsMore || isWhole || length >= limits::kScannedValue) return std::nullopt;
    }
}

void FileScanner::note(ScannedObject& object, const IndirectObject& parsed) {
    budget_.spend(parsed.value.text().size());
    if (parsed.value.isDictionary()) object.kind = kindOf(parsed.value);
    if (const auto value = parsed.value.integer())
        integers_.push_back({object.number, static_cast<std::uint32_t>(integers_.size()), *value});
}

/// at_ is where the body begins.
void FileScanner::skipBody(Value dictionary) {
    const Value length = dictionary.find("Length");
    const std::uint64_t begin = at_;
    const auto reference = length.reference();
    try {
        at_ += streamBodyLength(window_, begin, length.integer(), budget_);
    } catch (const DamagedDocument&) {
        if (budget_.left() == 0) throw;
        return;  // cut off by the end of the file
    }
    if (reference) openBodies_.push_back({begin, at_, reference->number});
}

/// Where the body ends by its /Length; its end so far where that says nothing.
std::uint64_t FileScanner::declaredEnd(const OpenBody& body) {
    // The last definition counts, unless it is one of those in the body.
    const auto found = std::ranges::equal_range(integers_, body.length, {}, &Integer::number);
    for (auto i = found.end(); i != found.begin() && found.end() - i < limits::kScannedLengths;) {
        const std::int64_t length = (--i)->value;
        if (length < 0 || static_cast<std::uint64_t>(length) > window_.size() - body.begin)
            continue;
        const std::uint64_t end = body.begin + static_cast<std::uint64_t>(length);
        if (end <= body.end || streamBodyEndsAt(window_, end)) return std::max(end, body.end);
    }
    return body.end;
}

void FileScanner::dropInnerObjects() {
    std::ranges::sort(integers_, {}, [](const Integer& integer) {
        return std::pair(integer.number, integer.order);
    });
    std::vector<std::pair<std::uint64_t, std::uint64_t>> hidden;
    for (const OpenBody& body : openBodies_) {
        if (!hidden.empty() && body.begin < hidden.back().second) continue;
        const std::uint64_t end = declaredEnd(body);
        if (end > body.end) hidden.emplace_back(body.begin, end);
    }
    if (hidden.empty()) return;
    std::erase_if(result_.objects,
                  [&](const ScannedObject& object) { return isInside(hidden, object.offset); });
    for (auto* const positions : {&result_.trailers, &result_.tables})
        std::erase_if(*positions, [&](std::uint64_t at) { return isInside(hidden, at); });
}

}  // namespace quirebind
