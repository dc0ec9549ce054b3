// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Platform/PDF/Layers/LayerCopy.h"

#include <string_view>

#include "Platform/PDF/Syntax/PDFString.h"

namespace quirebind {

void copyLayer(Value group, LayerWriter& writer, std::uint32_t source, MappedText& text,
               ByteBuffer& out) {
    if (group.isDictionary() && writer.isTaken(stringBytes(group.find("Name")), source)) {
        constexpr std::string_view kOpening = "<<";
        out.append("<</XXSource ");
        out.append(std::uint64_t{source});
        text.skipTo(text.beginOf(group) + kOpening.size());
    }
    text.copyTo(text.endOf(group), Role::plain, out);
}

}  // namespace quirebind
