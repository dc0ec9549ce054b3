// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Benchmarks/Book.h"

#include <algorithm>
#include <string_view>

#include "Platform/PDF/Writing/DocumentWriter.h"
#include "Platform/PDF/Writing/PageTreeWriter.h"

namespace quirebind::benchmarks {
namespace {

constexpr std::string_view kContent =
    "BT /F1 14 Tf 16 TL 72 760 Td (A heading) Tj T*\n"
    "/F2 10 Tf 20 TL (The first line of a page that says nothing else) Tj T*\n"
    "(and the second) Tj ET\n";

std::uint32_t writeObject(DocumentWriter& writer, std::string_view text, bool packed) {
    const std::uint32_t number = writer.reserve();
    writer.beginObject(number, packed).append(text);
    writer.endObject();
    return number;
}

std::uint32_t writeContent(DocumentWriter& writer) {
    const std::uint32_t number = writer.reserve();
    ByteBuffer& out = writer.beginStream(number);
    out.append("<</Length ");
    out.append(std::uint64_t{kContent.size()});
    out.append(">>");
    std::ranges::copy(kContent, writer.streamBody(kContent.size()).begin());
    writer.endStream();
    return number;
}

std::string reference(std::uint32_t number) {
    return std::to_string(number) + " 0 R";
}

}  // namespace

std::string pageDictionary(std::uint32_t parent, std::uint32_t resources, std::uint32_t content) {
    return "<< /Type /Page /Parent " + reference(parent) +
           " /MediaBox [0 0 595.28 841.89] /CropBox [0 0 595.28 841.89] /Rotate 0 /Resources " +
           reference(resources) + " /Contents " + reference(content) +
           " /Group << /Type /Group /S /Transparency /CS /DeviceRGB >> >>";
}

ByteBuffer makeBook(std::uint32_t pages, Layout layout) {
    const bool packed = layout == Layout::packed;
    DocumentWriter writer;
    const std::uint32_t font =
        writeObject(writer, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>", packed);
    const std::uint32_t resources = writeObject(
        writer, "<</Font<</F1 " + reference(font) + "/F2 " + reference(font) + ">>>>", packed);
    PageTreeWriter tree(writer);
    for (std::uint32_t i = 0; i < pages; ++i) {
        const std::uint32_t content = writeContent(writer);
        const std::string page = pageDictionary(tree.leafFor(i), resources, content);
        tree.insert(writeObject(writer, page, packed), i);
    }
    const std::string catalog = "<</Type/Catalog/Pages " + reference(tree.finish()) + ">>";
    return writer.finish(writeObject(writer, catalog, packed), {1, 7});
}

}  // namespace quirebind::benchmarks
