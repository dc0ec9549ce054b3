// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Joining/PageRewriter.h"

#include <optional>
#include <string>

#include "Platform/PDF/Copying/MappedText.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Reading/PageKey.h"
#include "Platform/PDF/Syntax/ReferenceText.h"

namespace quirebind {
namespace {

/// An inherited value longer than this becomes an object that its pages share; written out on each
/// of them, a resource dictionary at the root of a large tree would multiply the file.
constexpr std::size_t kLongestInline = 64;

constexpr auto kMediaBox = static_cast<std::size_t>(PageKey::mediaBox);
constexpr std::string_view kDefaultBox = "/MediaBox[0 0 612 792]";

}  // namespace

bool PageRewriter::Attributes::replaces(std::size_t attribute) const {
    return inherited[attribute] != PageTree::kNone || (defaultBox && attribute == kMediaBox);
}

void PageRewriter::write(std::size_t index, std::uint32_t output, std::uint32_t parent) {
    const PageTree::Page page = tree_.pages()[index];
    const SourceObject object = read(page);
    if (!object.value.isDictionary()) throw DamagedDocument("a page that is no dictionary");
    if (isRepeated(index)) room_.spend(object.value.text().size());
    const OwnEntries entries = entries_.of(object.value);
    const Attributes attributes = attributesOf(page, object.value, entries);
    shareLargeValues(attributes.inherited);

    ByteBuffer& out = copier_.writer().beginObject(output, object.packed);
    copier_.writer().allowPacked(object.packedSize);
    out.append("<</Parent ");
    appendReference(parent, out);
    if (!attributes.typed) out.append("/Type/Page");
    appendOwnEntries(object.value, entries, attributes, out);
    appendInherited(attributes, out);
    out.append(">>");
    copier_.writer().endObject();
}

bool PageRewriter::isRepeated(std::size_t index) const {
    const std::uint32_t object = tree_.pages()[index].object;
    return object != 0 && copier_.map().pageIndex(object) != index;
}

SourceObject PageRewriter::read(const PageTree::Page& page) {
    if (!page.isDirect()) return copier_.reader().read(page.object, &entries_.parts());
    SourceObject object;
    object.value = tree_.directPage(page);
    (void)scanValue(object.value.text(), 0, &entries_.parts());  // its extent is known already
    return object;
}

PageRewriter::Attributes PageRewriter::attributesOf(const PageTree::Page& page, Value dictionary,
                                                    OwnEntries own) {
    const PageTree::Inheritance& inherited = tree_.nodes()[page.node].inherited;
    Attributes attributes{inherited};
    bool hasBox = false;
    Value type;
    for (const auto& [index, key] : own) {
        const Value value = entryAt(entries_.parts().entries()[index], dictionary.text()).value;
        if (key == PageKey::type) takeLast(type, value);
        const auto attribute = inheritableAttribute(key);
        if (!attribute || value.text().empty()) continue;
        const bool isUsable =
            *attribute == kMediaBox ? isRectangle(value) : !copier_.reader().isAbsent(value);
        // Of repeated keys the last counts, and it may say less than the ones before.
        attributes.inherited[*attribute] = isUsable ? PageTree::kNone : inherited[*attribute];
        if (*attribute == kMediaBox) hasBox = isUsable;
    }
    if (!entries_.parts().wellFormed()) throw DamagedDocument("a page whose dictionary is broken");
    const std::uint32_t box = attributes.inherited[kMediaBox];
    if (box != PageTree::kNone) hasBox = isRectangle(Value(tree_.values()[box]));
    if (!hasBox) attributes.inherited[kMediaBox] = PageTree::kNone;
    attributes.defaultBox = !hasBox;
    attributes.typed = !type.isName("Pages") && !copier_.reader().isAbsent(type);
    return attributes;
}

/// Four numbers (ISO 32000-2, 7.9.5), or more: readers take the first ones.
bool PageRewriter::isRectangle(Value value) {
    constexpr int kNumbers = 4;
    constexpr std::string_view kBeginsNumber = "0123456789+-.";
    if (!rectangle_.empty() && value.text() == rectangle_) return true;
    ArrayReader elements(copier_.reader().resolve(value));
    for (int i = 0; i < kNumbers; ++i) {
        const auto element = elements.next();
        if (!element) return false;
        const std::string_view text = copier_.reader().resolve(*element).text();
        if (text.empty() || kBeginsNumber.find(text[0]) == std::string_view::npos) return false;
    }
    rectangle_ = value.text();
    return true;
}

/// Copies the page's own entries, but not those that others take the place of: /Parent, what is
/// inherited in spite of an entry of that name, /Type where it means null or says that this is a
/// node, what only nodes have, and a last key without a value.
void PageRewriter::appendOwnEntries(Value page, OwnEntries own, const Attributes& attributes,
                                    ByteBuffer& out) {
    constexpr std::size_t kBracket = 2;
    MappedText text(page.text(), entries_.parts(), copier_.map());
    text.skipTo(kBracket);
    EntryRewriter entries(page, text, out);
    for (const auto& [index, key] : own) {
        const DictionaryEntry& entry = entries.at(index);
        const auto attribute = inheritableAttribute(key);
        const bool isReplaced = entry.value.text().empty() || key == PageKey::parent ||
                                key == PageKey::kids || key == PageKey::count ||
                                (attribute && attributes.replaces(*attribute)) ||
                                (key == PageKey::type && !attributes.typed);
        if (isReplaced)
            entries.drop();
        else if (key == PageKey::annotations)
            copier_.copyAs(Role::annotation, entry.value, text, out);
        else if (key == PageKey::additionalActions)
            copier_.copyAs(Role::additionalActions, entry.value, text, out);
        else if (key == PageKey::presentationSteps)
            copier_.copyAs(Role::navigationNode, entry.value, text, out);
        else
            copier_.rewriteCommonEntry(entry, entries);
    }
    text.copyTo(page.text().size() - kBracket, Role::plain, out);
}

void PageRewriter::appendInherited(const Attributes& attributes, ByteBuffer& out) {
    if (attributes.defaultBox) out.append(kDefaultBox);
    const PageTree::Inheritance& inherited = attributes.inherited;
    for (std::size_t i = 0; i < inherited.size(); ++i) {
        if (inherited[i] == PageTree::kNone) continue;
        out.append("/");
        out.append(kInheritableAttributes[i]);
        out.append(" ");
        if (const std::uint32_t shared = shared_[inherited[i]]; shared != 0) {
            appendReference(shared, out);
        } else {
            copier_.appendValue(Value(tree_.values()[inherited[i]]), Role::plain, out);
        }
    }
}

void PageRewriter::shareLargeValues(const PageTree::Inheritance& inherited) {
    for (const std::uint32_t index : inherited) {
        if (index == PageTree::kNone || shared_[index] != 0) continue;
        const std::string& text = tree_.values()[index];
        if (text.size() <= kLongestInline) continue;
        shared_[index] = copier_.writer().reserve();
        copier_.appendValue(Value(text), Role::plain,
                            copier_.writer().beginObject(shared_[index], false));
        copier_.writer().endObject();
    }
}

}  // namespace quirebind
