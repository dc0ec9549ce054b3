// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

/// What the window and the helper that draws pages say to each other over their private socket.
///
///     window -> helper      Request
///                             open      with the document's open file attached (SCM_RIGHTS)
///                             render    page `page` at width x height pixels
///                             text      page `page`
///                             select    on page `page`, from `from` to `to`
///                             word      on page `page`, at `from`, on a line that ends at `to`
///     helper -> window      Answer, and behind it `length` bytes:
///                             open      nothing
///                             render    width x height pixels, 0xffRRGGBB each, row by row
///                             text,     text: see PageText.h
///                             select,
///                             word
///                             failed    nothing
///
/// One request is answered after the other, in their order. Numbers are in the machine's own byte
/// order: both ends run on it. The helper holds one document, the one opened last. The window
/// trusts no answer: any that does not fit its request ends the helper.
namespace quirebind::render {

/// What every request and every answer begins with.
inline constexpr std::uint32_t kMagic = 0x31524251;  // "QBR1"

/// The most pixels of one picture, about 64 MB.
inline constexpr std::uint64_t kMostPixels = 16U << 20U;
/// The most bytes of a page's text with its places.
inline constexpr std::uint32_t kMostText = 8U << 20U;

/// What is asked for, and what is answered: the same, or `failed`.
// NOLINTNEXTLINE(performance-enum-size): so wide it goes over the wire
enum class Kind : std::uint32_t { open = 1, render, text, select, word, failed };

/// A point of a page, in points from its upper left corner as it is shown.
struct Point {
    double x = 0;
    double y = 0;
};

/// What the window sends. A field that the kind has no use for is left at zero; pages count from 0.
struct Request {
    std::uint32_t magic = kMagic;
    Kind kind = Kind::open;
    std::uint64_t id = 0;
    std::uint32_t page = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t hasForm = 0;  ///< Of `open`: 1 where fields may have to be drawn.
    Point from{};
    Point to{};
};
static_assert(sizeof(Request) == 64);

/// What the helper sends; `length` bytes follow. Only that of `render` has a width and a height.
struct Answer {
    std::uint32_t magic = kMagic;
    Kind kind = Kind::failed;
    std::uint64_t id = 0;  ///< The request's.
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t length = 0;
    std::uint32_t reserved = 0;
};
static_assert(sizeof(Answer) == 32);

/// The socket's number in the helper.
inline constexpr int kSocket = 3;

/// How long the helper may work on one request, in seconds, before it ends itself. The window loses
/// patience sooner; this is for a helper whose window is gone.
inline constexpr unsigned kSecondsForRequest = 20;

}  // namespace quirebind::render
