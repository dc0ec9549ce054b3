// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/ObjectCopier.h"

#include "Platform/PDF/Characters.h"
#include "Platform/PDF/MappedText.h"

namespace quirebind {
namespace {

/// A node of a page tree that the walk did not meet: some page outside the tree (a template, one of
/// an older revision) refers to it, and it would bring all its other pages along.
bool isPageTreeNode(Value value) {
    // The text tells at once of nearly every object that it is none.
    const std::string_view text = value.text();
    if (text.find("/Kids") == std::string_view::npos && text.find('#') == std::string_view::npos)
        return false;
    return value.find("Type").isName("Pages") && !value.find("Kids").isNull();
}

}  // namespace

void ObjectCopier::copyPending() {
    while (const auto pending = map_.next()) {
        const SourceObject object = reader_.read(pending->source, &references_);
        switch (pending->role) {
            case Role::plain:
                if (object.isStream)
                    copyStream(object, pending->output);
                else
                    copyPlain(object, pending->output);
                break;
        }
        reader_.trim();
    }
}

void ObjectCopier::copyPlain(const SourceObject& object, std::uint32_t output) {
    ByteBuffer& out = writer_.beginObject(output, object.packed);
    if (object.value.isNull() || isPageTreeNode(object.value))
        out.append("null");
    else
        MappedText(object.value.text(), references_, map_).copyRest(Role::plain, out);
    writer_.endObject();
}

/// The dictionary says how long the body really is, directly: its own /Length may be wrong, or a
/// reference.
void ObjectCopier::copyStream(const SourceObject& object, std::uint32_t output) {
    const std::uint64_t length = reader_.bodyLength(object);
    bodies_.spend(length);
    const std::string_view dictionary = object.value.text();
    ByteBuffer& out = writer_.beginStream(output);
    MappedText text(dictionary, references_, map_);
    bool declared = false;
    DictionaryReader entries(object.value);
    while (const auto entry = entries.next()) {
        if (!entry->key.isName("Length") || entry->value.text().empty()) continue;
        const std::size_t begin = text.beginOf(entry->value);
        text.copyTo(begin, Role::plain, out);
        if (!isWhite(dictionary[begin - 1])) out.append(" ");
        out.append(length);
        text.skipTo(text.endOf(entry->value));
        declared = true;
    }
    if (!declared) {
        constexpr std::string_view kOpening = "<<";
        out.append("<</Length ");
        out.append(length);
        text.skipTo(kOpening.size());
    }
    text.copyRest(Role::plain, out);
    reader_.image().copy(object.bodyOffset, writer_.streamBody(static_cast<std::size_t>(length)));
    writer_.endStream();
}

void ObjectCopier::appendValue(Value value, Role role, ByteBuffer& out) {
    std::vector<FoundReference> references;
    (void)scanValue(value.text(), 0, &references);  // its extent is known already
    MappedText(value.text(), references, map_).copyRest(role, out);
}

}  // namespace quirebind
