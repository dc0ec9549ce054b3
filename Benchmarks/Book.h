// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>

#include "Platform/Files/ByteBuffer.h"

namespace quirebind::benchmarks {

/// How the objects of a book stand in its file.
enum class Layout : std::uint8_t {
    classic,  ///< One by one, with a table.
    packed,   ///< In object streams, with a cross-reference stream.
};

/// A page dictionary as ordinary programs write it, below the page-tree node of that number.
[[nodiscard]] std::string pageDictionary(std::uint32_t parent, std::uint32_t resources,
                                         std::uint32_t content);

/// A document of that many pages with a short content stream each, which share their resources.
[[nodiscard]] ByteBuffer makeBook(std::uint32_t pages, Layout layout);

}  // namespace quirebind::benchmarks
