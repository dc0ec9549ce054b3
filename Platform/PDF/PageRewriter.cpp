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
    PageTree::Inheritance inherited = tree_.nodes()[page.node].inherited;
    shareLargeValues(inherited);

    const SourceObject object = copier_.reader().read(page.object, &references_);
    if (!object.value.isDictionary()) throw DamagedDocument("a page that is no dictionary");
    ByteBuffer& out = copier_.writer().beginObject(output, object.packed);
    out.append("<</Parent ");
    out.append(std::uint64_t{parent});
    out.append(" 0 R");
    if (!isThere(object.value.find("Type"))) out.append("/Type/Page");
    appendOwnEntries(object.value, out, inherited);
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
    out.append(">>");
    copier_.writer().endObject();
}

/// Copies the page's own entries but /Parent and a key without a value, and strikes from
/// `inherited` what the page has itself. An entry that means null is as good as absent (7.3.9), so
/// it goes where another takes its place.
void PageRewriter::appendOwnEntries(Value page, ByteBuffer& out, PageTree::Inheritance& inherited) {
    constexpr std::size_t kBracket = 2;
    MappedText text(page.text(), references_, copier_.map());
    text.skipTo(kBracket);
    DictionaryReader entries(page);
    while (const auto entry = entries.next()) {
        bool drop = entry->key.isName("Parent") || entry->value.text().empty() ||
                    (entry->key.isName("Type") && !isThere(entry->value));
        if (const auto attribute = inheritableAttribute(entry->key)) {
            if (isThere(entry->value))
                inherited[*attribute] = PageTree::kNone;
            else
                drop = true;
        }
        if (!drop) continue;
        text.copyTo(text.beginOf(entry->key), Role::plain, out);
        text.skipTo(entry->value.text().empty() ? text.endOf(entry->key)
                                                : text.endOf(entry->value));
    }
    if (!entries.wellFormed()) throw DamagedDocument("a page whose dictionary is broken");
    text.copyTo(page.text().size() - kBracket, Role::plain, out);
}

bool PageRewriter::isThere(Value value) {
    if (const auto reference = value.reference()) return copier_.reader().exists(*reference);
    return !value.isNull();
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
