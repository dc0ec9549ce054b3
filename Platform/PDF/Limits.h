// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace quirebind::limits {

// What a file may ask of us. Each number is far beyond what real documents need and small enough
// that a hostile one cannot exhaust the machine. Memory is taken as bytes are read, not because a
// number in the file asks for it; the one exception is the flat object table, which a single high
// object number extends within the limit given here.

/// How deep arrays and dictionaries may nest in one object. Real files stay below 100.
inline constexpr std::size_t kNesting = 1024;

/// How many references may lead from one to the next before a value is reached.
inline constexpr int kReferenceChain = 32;

/// How deep a page tree may be. Balanced trees need 5 levels for 100,000 pages; some writers make a
/// chain as deep as the document has chapters.
inline constexpr std::size_t kPageTreeDepth = 4096;

/// Pages of one document: so many in any, and one more for every few bytes of the file. A page tree
/// may list a node twice, so that without this a few hundred bytes are a billion pages.
inline constexpr std::uint64_t kPages = 65536;
inline constexpr std::uint64_t kBytesPerPage = 4;

/// Cross-reference sections (one for each incremental update, two when linearized).
inline constexpr std::size_t kCrossReferenceSections = 65536;

/// The largest object number (ISO 32000-2, annex C speaks of 8,388,607; files exceed it).
inline constexpr std::uint64_t kObjectNumber = 0x7fffffff;

/// Object numbers below this, or below an eighth of the file's size, live in a flat table whatever
/// they are; higher ones in a sparse table.
inline constexpr std::size_t kFlatObjectNumbers = std::size_t{1} << 20U;

/// How many of those higher ones a document may use.
inline constexpr std::size_t kWildObjectNumbers = std::size_t{1} << 20U;

/// Decoded bytes of one cross-reference stream or object stream.
inline constexpr std::size_t kDecodedStream = std::size_t{64} << 20U;

/// Decoded bytes of all those streams of a document, counting a stream again each time it has to be
/// decoded again: a fixed part and a multiple of the file's size.
inline constexpr std::uint64_t kDecodedTotal = std::uint64_t{256} << 20U;
inline constexpr std::uint64_t kDecodedPerByte = 32;

/// Bytes of syntax read in one document, again counted each time: reading the same bytes through
/// many references is how a small file makes a reader work for ever.
inline constexpr std::uint64_t kSyntaxTotal = std::uint64_t{256} << 20U;
inline constexpr std::uint64_t kSyntaxPerByte = 16;

/// Objects in one object stream. Writers put a few hundred there.
inline constexpr std::size_t kObjectStreamMembers = std::size_t{1} << 20U;

/// Filters on one stream.
inline constexpr std::size_t kFilters = 16;

/// Junk before "%PDF-" that readers agree to skip (ISO 32000-2, 7.5.2, note).
inline constexpr std::size_t kJunkBeforeHeader = 1024;

/// How far before the end of the file "startxref" is looked for.
inline constexpr std::size_t kTail = 4096;

/// What a source may keep in memory of its file and of its decoded object streams, each.
inline constexpr std::size_t kResidentBytes = std::size_t{16} << 20U;

}  // namespace quirebind::limits
