// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Reading/Recovery/RootSearch.h"

#include <algorithm>
#include <ranges>
#include <set>

#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Reading/CrossReferenceReader.h"
#include "Platform/PDF/Reading/ReadIndirectObject.h"
#include "Platform/PDF/Reading/Recovery/TableOfFile.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

using Kind = ScannedObject::Kind;

Kind kindOf(Value value) {
    const Value type = value.find("Type");
    if (type.isName("Catalog")) return Kind::catalog;
    if (type.isName("Pages")) return Kind::pageTreeNode;
    if (type.isName("Page")) return Kind::page;
    return Kind::other;
}

/// `dictionary` without what stands where a key should stand and is none.
std::string withoutStrayValues(Value dictionary) {
    constexpr std::size_t kBracket = 2;
    const std::string_view text = dictionary.text();
    // Its brackets balance, so as an array it is well formed whatever it holds.
    const std::string array =
        '[' + std::string(text.substr(kBracket, text.size() - 2 * kBracket)) + ']';
    ArrayReader elements{Value(array)};
    std::string result = "<<";
    while (const auto key = elements.next()) {
        if (!key->isName()) continue;
        const auto value = elements.next();
        if (!value) break;
        result.append(key->text()).append(" ").append(value->text()).append(" ");
    }
    return result + ">>";
}

bool isWellFormed(Value dictionary) {
    DictionaryReader entries(dictionary);
    while (entries.next()) {
    }
    return entries.wellFormed();
}

}  // namespace

RootSearch::RootSearch(const FileScan& scan, ObjectReader& reader)
    : scan_(scan), reader_(reader), budget_(limits::kScan, reader.image().storedBytes()) {
    for (const std::uint64_t offset : scan.trailers) trailers_.push_back({offset, std::nullopt});
    for (const ScannedObject& object : scan.objects)
        if (object.kind == Kind::crossReferenceStream)
            trailers_.push_back({object.offset, object.number});
    std::ranges::sort(trailers_, {}, &Trailer::offset);
    if (trailers_.size() > limits::kCrossReferenceSections)
        trailers_.erase(trailers_.begin(), trailers_.end() - limits::kCrossReferenceSections);
}

/// Empty where there is no dictionary.
std::string RootSearch::textOfTrailer(std::size_t index) {
    const Trailer& trailer = trailers_[index];
    try {
        if (!trailer.object) {
            std::string text = readTrailerDictionary(reader_.image(), trailer.offset, budget_);
            if (!isWellFormed(Value(text))) text = withoutStrayValues(Value(text));
            return text;
        }
        return std::string(
            readIndirectObject(reader_.image(), trailer.offset, budget_).value.text());
    } catch (const DamagedDocument&) {
        if (budget_.left() == 0) throw;
        return {};
    }
}

bool RootSearch::isCatalog(Value value) {
    try {
        const std::string catalog(reader_.resolve(value).text());
        const Value pages = reader_.resolve(Value(catalog).find("Pages"));
        const Kind kind = kindOf(pages);
        return kind == Kind::pageTreeNode || kind == Kind::page || !pages.find("Kids").isNull();
    } catch (const DamagedDocument&) {
        if (reader_.isExhausted()) throw;
        return false;
    }
}

std::string RootSearch::encryptedTrailer() {
    for (std::size_t i = trailers_.size(); i-- > 0;) {
        std::string text = textOfTrailer(i);
        if (!Value(text).find("Encrypt").isNull()) return text;
        if (!Value(text).find("Root").isNull()) break;
        reader_.trim();
    }
    return {};
}

std::string RootSearch::trailer() {
    for (std::size_t i = trailers_.size(); i-- > 0;) {
        std::string text = textOfTrailer(i);
        if (isCatalog(Value(text).find("Root"))) return text;
        reader_.trim();
    }
    if (auto made = madeForCatalog()) return *made;
    if (auto made = madeForPageTree()) return *made;
    if (auto made = madeForPages()) return *made;
    throw DamagedDocument("no catalog, and no page");
}

void RootSearch::visitObjects(const Visit& visit) {
    for (const ScannedObject& object : std::views::reverse(scan_.objects)) {
        if (!isListed(object, reader_.table())) continue;
        if (object.kind == Kind::objectStream) {
            if (!visitMembers(object.number, visit)) return;
        } else if (!visit({object.number, object.generation}, object.kind)) {
            return;
        }
        reader_.trim();
    }
}

/// False where `visit` says to stop.
bool RootSearch::visitMembers(std::uint32_t stream, const Visit& visit) {
    for (const std::uint32_t number : reader_.membersOf(stream)) {
        const ObjectLocation location = reader_.table().find(number);
        if (location.kind != ObjectLocation::Kind::inStream || location.position != stream)
            continue;
        Kind kind = Kind::other;
        try {
            kind = kindOf(reader_.read(number).value);
        } catch (const DamagedDocument&) {
            if (reader_.isExhausted()) throw;
            continue;  // of a damaged stream not every object can be read
        }
        if (!visit({number, 0}, kind)) return false;
    }
    return true;
}

std::optional<std::string> RootSearch::madeForCatalog() {
    std::optional<std::string> made;
    visitObjects([&](Reference reference, Kind kind) {
        const std::string text = referenceText(reference);
        if (kind == Kind::catalog && isCatalog(Value(text))) made = "<</Root " + text + ">>";
        return !made;
    });
    return made;
}

std::optional<std::string> RootSearch::madeForPageTree() {
    std::optional<std::string> made;
    visitObjects([&](Reference reference, Kind kind) {
        if (kind != Kind::pageTreeNode) return true;
        const Value node = reader_.read(reference.number).value;
        if (node.find("Parent").isNull() && !node.find("Kids").isNull())
            made = "<</Root<</Type/Catalog/Pages " + referenceText(reference) + ">>>>";
        return !made;
    });
    return made;
}

std::optional<std::string> RootSearch::madeForPages() {
    std::set<std::uint32_t> pages;
    bool ofATree = false;
    visitObjects([&](Reference reference, Kind kind) {
        if (kind != Kind::page) return true;
        ofATree = ofATree || !reader_.read(reference.number).value.find("Parent").isNull();
        pages.insert(reference.number);
        return !ofATree;
    });
    if (pages.empty() || ofATree) return std::nullopt;
    std::string kids;
    std::set<std::uint32_t> listed;
    const auto list = [&](std::uint32_t number) {
        if (!pages.contains(number) || !listed.insert(number).second) return;
        kids += referenceText({number, reader_.table().find(number).detail}) + ' ';
    };
    for (const ScannedObject& object : scan_.objects) list(object.number);
    for (const std::uint32_t number : pages) list(number);  // those in object streams
    return "<</Root<</Type/Catalog/Pages<</Type/Pages/Kids[" + kids + "]>>>>>>";
}

}  // namespace quirebind
