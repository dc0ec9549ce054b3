// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/PageRewriter.h"

#include <optional>
#include <string>

#include "Platform/PDF/DamagedDocument.h"
#include "Platform/PDF/MappedText.h"

namespace quirebind {
namespace {

/// An inherited value longer than this becomes an object that its pages share; written out on each
/// of them, a resource dictionary at the root of a large tree would multiply the file.
constexpr std::size_t kLongestInline = 64;

/// The index in kInheritableAttributes.
std::optional<std::size_t> inheritableAttribute(Value key) {
    for (std::size_t i = 0; i < kInheritableAttributes.size(); ++i)
        if (key.isName(kInheritableAttributes[i])) return i;
    return std::nullopt;
}

}  // namespace

void PageRewriter::write(std::size_t index, std::uint32_t output, std::uint32_t parent) {
    const PageTree::Page page = tree_.pages()[index];
    const SourceObject object = copier_.reader().read(page.object, &references_);
    if (!object.value.isDictionary()) throw DamagedDocument("a page that is no dictionary");
    const PageTree::Inheritance inherited = inheritedBy(page, object.value);
    shareLargeValues(inherited);

    ByteBuffer& out = copier_.writer().beginObject(output, object.packed);
    out.append("<</Parent ");
    out.append(std::uint64_t{parent});
    out.append(" 0 R");
    const bool typed = !copier_.reader().isAbsent(object.value.find("Type"));
    if (!typed) out.append("/Type/Page");
    appendOwnEntries(object.value, typed, inherited, out);
    appendInherited(inherited, out);
    out.append(">>");
    copier_.writer().endObject();
}

PageTree::Inheritance PageRewriter::inheritedBy(const PageTree::Page& page, Value dictionary) {
    PageTree::Inheritance inherited = tree_.nodes()[page.node].inherited;
    DictionaryReader entries(dictionary);
    while (const auto entry = entries.next()) {
        const auto attribute = inheritableAttribute(entry->key);
        if (!attribute || inherited[*attribute] == PageTree::kNone) continue;
        if (!copier_.reader().isAbsent(entry->value)) inherited[*attribute] = PageTree::kNone;
    }
    if (!entries.wellFormed()) throw DamagedDocument("a page whose dictionary is broken");
    return inherited;
}

/// Copies the page's own entries, but not those that others take the place of: /Parent, what is
/// inherited in spite of an entry of that name, and /Type where it means null. Nor a key without a
/// value.
void PageRewriter::appendOwnEntries(Value page, bool typed, const PageTree::Inheritance& inherited,
                                    ByteBuffer& out) {
    constexpr std::size_t kBracket = 2;
    MappedText text(page.text(), references_, copier_.map());
    text.skipTo(kBracket);
    DictionaryReader entries(page);
    while (const auto entry = entries.next()) {
        const auto attribute = inheritableAttribute(entry->key);
        const bool isReplaced = entry->key.isName("Parent") ||
                                (attribute && inherited[*attribute] != PageTree::kNone) ||
                                (!typed && entry->key.isName("Type"));
        if (!isReplaced && !entry->value.text().empty()) continue;
        text.copyTo(text.beginOf(entry->key), Role::plain, out);
        text.skipTo(entry->value.text().empty() ? text.endOf(entry->key)
                                                : text.endOf(entry->value));
    }
    text.copyTo(page.text().size() - kBracket, Role::plain, out);
}

void PageRewriter::appendInherited(const PageTree::Inheritance& inherited, ByteBuffer& out) {
    for (std::size_t i = 0; i < inherited.size(); ++i) {
        if (inherited[i] == PageTree::kNone) continue;
        out.append("/");
        out.append(kInheritableAttributes[i]);
        out.append(" ");
        if (const std::uint32_t shared = shared_[inherited[i]]; shared != 0) {
            out.append(std::uint64_t{shared});
            out.append(" 0 R");
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
