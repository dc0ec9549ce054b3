// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Fuzzing/Support/MergeChecks.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "Fuzzing/Support/MemoryFileSystem.h"
#include "Fuzzing/Support/Target.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/PDFDocument.h"
#include "Platform/PDF/Reading/SourceDocument.h"

namespace quirebind::fuzzing {
namespace {

/// More pages take long and show nothing new.
constexpr std::size_t kMostPages = 48;

struct Merged {
    std::string bytes;
    std::size_t pages = 0;
};

/// Nothing where the document is refused.
std::optional<Merged> merge(std::string_view file, int copies) {
    MemoryFileSystem files(file);
    PDFDocument output;
    for (int copy = 0; copy < copies; ++copy) {
        const auto source = PDFDocument::open(URL::file("/source.pdf"), files);
        if (!source || source->isLocked()) return std::nullopt;
        if (source->pageCount() == 0 || source->pageCount() > kMostPages) return std::nullopt;
        for (std::size_t i = 0; i < source->pageCount(); ++i) {
            const auto page = source->pageAtIndex(i);
            require(page.has_value(), "a page that is counted is there");
            if (!output.insertPage(*page, output.pageCount())) return std::nullopt;
        }
    }
    const std::size_t pages = output.pageCount();
    const auto data = std::move(output).dataRepresentation();
    if (!data) return std::nullopt;
    return Merged{std::string(data->text()), pages};
}

void requireSound(const Merged& merged) {
    MemoryFileSystem files(merged.bytes);
    try {
        const SourceDocument document(URL::file("/merged.pdf"), files, Recovery::refused);
        require(!document.isLocked(), "a merged document is not locked");
        require(document.pageTree().pages().size() == merged.pages, "no page is lost or added");
    } catch (const DamagedDocument& damage) {
        require(false, damage.what());
    }
}

/// Whether the stream holds what the file is made of: object streams and the cross-reference
/// stream.
bool isContainer(const SourceObject& object) {
    const Value type = object.value.find("Type");
    return object.isStream && (type.isName("ObjStm") || type.isName("XRef"));
}

/// Two files whose objects are the same, in number and in all that they say. How hard object
/// streams are compressed depends on how hard their sources' were, so their bytes may differ.
void requireSameObjects(const std::string& one, const std::string& other) {
    MemoryFileSystem oneFile(one);
    MemoryFileSystem otherFile(other);
    SourceDocument first(URL::file("/one.pdf"), oneFile, Recovery::refused);
    SourceDocument second(URL::file("/other.pdf"), otherFile, Recovery::refused);
    constexpr const char* kSame = "merging again and again changes nothing";
    const auto numbers = static_cast<std::uint32_t>(std::max(one.size(), other.size()));
    for (std::uint32_t number = 1; number <= numbers; ++number) {
        const auto kind = first.reader().table().find(number).kind;
        require(kind == second.reader().table().find(number).kind, kSame);
        if (kind == ObjectLocation::Kind::unlisted) continue;
        const SourceObject a = first.reader().read(number);
        const SourceObject b = second.reader().read(number);
        require(isContainer(a) == isContainer(b), kSame);
        if (isContainer(a)) continue;
        require(a.isStream == b.isStream && a.value.text() == b.value.text(), kSame);
        if (!a.isStream) continue;
        const std::uint64_t length = first.reader().bodyLength(a);
        require(length == second.reader().bodyLength(b), kSame);
        require(first.reader().body(a, length) == second.reader().body(b, length), kSame);
    }
}

}  // namespace

void mergeAndCheck(std::string_view file) {
    const auto merged = merge(file, 2);
    if (!merged) return;
    requireSound(*merged);
    const auto again = merge(merged->bytes, 1);
    if (!again) {
        require(merged->pages > kMostPages, "what was merged can be merged");
        return;
    }
    require(again->pages == merged->pages, "merging again keeps all pages");
    requireSound(*again);
    const auto third = merge(again->bytes, 1);
    require(third.has_value(), "what was merged again can be merged");
    requireSameObjects(third->bytes, again->bytes);
}

}  // namespace quirebind::fuzzing
