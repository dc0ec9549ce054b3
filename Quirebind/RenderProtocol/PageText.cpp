// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#include "Quirebind/RenderProtocol/PageText.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace quirebind {

namespace {

using Area = std::array<float, 4>;

template <typename T>
void append(QByteArray& bytes, const T* values, std::size_t count) {
    const std::span<const std::byte> raw = std::as_bytes(std::span(values, count));
    const auto at = bytes.size();
    bytes.resize(at + static_cast<qsizetype>(raw.size()));
    if (!raw.empty()) std::memcpy(bytes.data() + at, raw.data(), raw.size());
}

/// Takes a counted sequence off the front; nothing where there are not so many bytes.
template <typename T>
std::optional<std::vector<T>> take(std::span<const std::byte>& bytes) {
    std::uint32_t count = 0;
    if (bytes.size() < sizeof count) return std::nullopt;
    std::memcpy(&count, bytes.data(), sizeof count);
    bytes = bytes.subspan(sizeof count);
    if (bytes.size() / sizeof(T) < count) return std::nullopt;
    std::vector<T> values(count);
    if (count > 0) std::memcpy(values.data(), bytes.data(), count * sizeof(T));
    bytes = bytes.subspan(count * sizeof(T));
    return values;
}

}  // namespace

QByteArray encode(const PageText& text) {
    QByteArray bytes;
    const auto units = static_cast<std::uint32_t>(text.text.size());
    append(bytes, &units, 1);
    append(bytes, text.text.utf16(), units);
    const auto areas = static_cast<std::uint32_t>(text.areas.size());
    append(bytes, &areas, 1);
    for (const QRectF& rect : text.areas) {
        const Area area{static_cast<float>(rect.x()), static_cast<float>(rect.y()),
                        static_cast<float>(rect.width()), static_cast<float>(rect.height())};
        append(bytes, area.data(), area.size());
    }
    return bytes;
}

std::optional<PageText> decodePageText(std::span<const std::byte> bytes) {
    const auto units = take<char16_t>(bytes);
    if (!units) return std::nullopt;
    const auto areas = take<Area>(bytes);
    if (!areas || !bytes.empty()) return std::nullopt;
    PageText text;
    text.text = QString::fromUtf16(units->data(), static_cast<qsizetype>(units->size()));
    for (const Area& area : *areas) {
        for (const float number : area)
            if (!std::isfinite(number)) return std::nullopt;
        text.areas << QRectF(area[0], area[1], area[2], area[3]);
    }
    return text;
}

}  // namespace quirebind
