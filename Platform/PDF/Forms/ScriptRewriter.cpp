// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Forms/ScriptRewriter.h"

#include <cstddef>
#include <cstdint>

#include "Platform/PDF/Filters/StreamDecoder.h"
#include "Platform/PDF/Forms/ScriptNames.h"
#include "Platform/PDF/Guards/DamagedDocument.h"
#include "Platform/PDF/Guards/Limits.h"
#include "Platform/PDF/Syntax/PDFString.h"
#include "Platform/PDF/Syntax/TextString.h"

namespace quirebind {

ScriptRewriter::ScriptRewriter(ObjectReader& reader, const FieldRenames& renames)
    : reader_(reader), renames_(renames), budget_(limits::kScripts, reader.image().storedBytes()) {}

void ScriptRewriter::rewrite(Value value, MappedText& text, ByteBuffer& out) {
    if (isString(value) && !renames_.empty()) {
        if (const auto script = renamed(stringBytes(value))) {
            out.append(*script);
            text.skipTo(text.endOf(value));
        }
    }
    text.copyTo(text.endOf(value), Role::script, out);
}

/// A script that cannot be read stays as it is: no page needs it.
std::optional<std::string> ScriptRewriter::replaceStream(const SourceObject& stream) {
    if (renames_.empty()) return std::nullopt;
    std::optional<std::string> script;
    attempt(reader_, [&] { script = renamed(decode(stream)); });
    return script;
}

std::string ScriptRewriter::decode(const SourceObject& stream) {
    const std::uint64_t length = reader_.bodyLength(stream);
    budget_.spend(length);
    const auto resolve = [this](Value value) { return reader_.resolve(value); };
    Decoded decoded = decodeStream(stream.value, reader_.body(stream, length), resolve, budget_);
    if (decoded.status != DecodeStatus::complete) throw DamagedDocument("a script is cut off");
    return std::move(decoded.bytes);
}

std::optional<std::string> ScriptRewriter::renamed(std::string_view bytes) const {
    const auto script = renameFieldsInScript(textOf(bytes), renames_);
    if (!script) return std::nullopt;
    std::string text;
    appendLiteralString(textStringOf(*script), text);
    return text;
}

}  // namespace quirebind
