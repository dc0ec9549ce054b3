// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace quirebind::limits {

/// So much for any file, and so much more for each of its bytes that is no hole.
struct Allowance {
    std::uint64_t fixed;
    std::uint64_t perByte;
};

// What a file may ask of us. Each number is far beyond what real documents need and small enough
// that a hostile one cannot exhaust the machine. Memory is taken as bytes are read, not because a
// number in the file asks for it; the one exception is the list of an object table's pages, which a
// single high object number extends, by 4 bytes for 64 numbers, within the limit given here.

/// How deep arrays and dictionaries may nest in one object. Real files stay below 100.
inline constexpr std::size_t kNesting = 1024;

/// Entries of the dictionary that an object is. The widest real ones list the glyphs of a font, or
/// the destinations of a document in the old notation.
inline constexpr std::size_t kEntries = std::size_t{1} << 20U;

/// Objects of a document whose dictionaries are closed for it, and where the end of such an object
/// is looked for, in bytes from its beginning. The files that have any have one or two, and short
/// ones.
inline constexpr std::size_t kUnclosedObjects = 64;
inline constexpr std::size_t kUnclosedObject = std::size_t{16} << 10U;

/// How many references may lead from one to the next before a value is reached.
inline constexpr int kReferenceChain = 32;

/// How deep a page tree may be. Balanced trees need 5 levels for 100,000 pages; some writers make a
/// chain as deep as the document has chapters.
inline constexpr std::size_t kPageTreeDepth = 4096;

/// Pages of one document: so many in any, and one more for every few bytes of the file. A page tree
/// may list a node twice, so that without this a few hundred bytes are a billion pages.
inline constexpr std::uint64_t kPages = 16384;
/// Of the file, for one more page.
inline constexpr std::uint64_t kBytesPerPage = 4;

/// Cross-reference sections (one for each incremental update, two when linearized).
inline constexpr std::size_t kCrossReferenceSections = 65536;

/// Bytes of the references to the nodes of one name tree or number tree, and of the nodes that
/// stand in their parents directly, which no real tree does.
inline constexpr Allowance kTreeNodes{.fixed = std::uint64_t{4} << 20U, .perByte = 16};

/// Output intents of a document. Real ones have one, or one for each standard that they follow.
inline constexpr std::size_t kOutputIntents = 16;
/// Bytes of the colour profile of an output intent. The largest that are used have a few megabytes;
/// until all sources are known to agree, they are held in memory.
inline constexpr std::uint64_t kColourProfile = std::uint64_t{16} << 20U;

/// Bytes of colour profiles, encoded and decoded, that are looked at to compare two documents'
/// output intents.
inline constexpr std::uint64_t kComparedProfiles = 2 * kColourProfile;

/// The longest text of an output intent, and of the dictionary of its profile: each is written with
/// all that it refers to. Real ones have a few hundred bytes.
inline constexpr std::size_t kOutputIntentText = std::size_t{64} << 10U;

/// Bytes of the objects that are copied from one source, without those in object streams and
/// without the bodies of streams; and what stands in several of these and is written in each. The
/// objects of a file do not overlap, so that once for each byte is what real files need.
inline constexpr Allowance kCopied{.fixed = std::uint64_t{1} << 20U, .perByte = 4};

/// Names and dictionaries that may lead to a destination: a name may stand for a dictionary with
/// the destination under /D, and files have names for names.
inline constexpr int kDestinationSteps = 8;

/// The longest name or number that a destination says about its view. Real ones have some 10 bytes.
inline constexpr std::size_t kViewElement = 32;

/// Bytes of the destinations of one source's links, as they are read and as they are written, and
/// counting what a name or an object stands for each time. So many again of web addresses that are
/// written in full.
inline constexpr Allowance kDestinations{.fixed = std::uint64_t{8} << 20U, .perByte = 16};

/// Bytes of memory for the named destinations of a source: an empty name and its value take two
/// bytes of an array, and there many times as much.
inline constexpr Allowance kNamedDestinations{.fixed = std::uint64_t{16} << 20U, .perByte = 8};

/// The longest base of a document's web addresses: what counts from it is written out in full.
inline constexpr std::size_t kBaseAddress = 256;

/// Links on a page that are shown as such. Maps and parts lists have thousands.
inline constexpr std::size_t kShownLinks = 100'000;

/// Bytes of page-tree nodes that are no objects of their own, counting what stands in another one
/// again.
inline constexpr Allowance kDirectNodes{.fixed = std::uint64_t{4} << 20U, .perByte = 1};

/// Bytes of pages that the tree of one source lists again.
inline constexpr Allowance kRepeatedPages{.fixed = std::uint64_t{4} << 20U, .perByte = 16};

/// Intents that one optional content group has, or a configuration. Real ones have one or two.
inline constexpr int kIntents = 32;

/// Bytes of the lists that say which layers of one source are radio buttons and which change their
/// states when; many may be the same array, which counts again.
inline constexpr Allowance kLayerLists{.fixed = std::uint64_t{1} << 20U, .perByte = 16};

/// How deep the lists in the order of layers may be. Real ones have a few levels.
inline constexpr std::size_t kLayerOrderDepth = 64;

/// Bytes written for the order in which one source's layers are listed, counting what stands inside
/// arrays once for each of them.
inline constexpr Allowance kLayerOrder{.fixed = std::uint64_t{1} << 20U, .perByte = 16};

/// Bytes that the structure elements of one source may take from objects that several of them share
/// and write each for itself; and the same for its attribute classes.
inline constexpr Allowance kSharedInStructure{.fixed = std::uint64_t{1} << 20U, .perByte = 16};

/// The longest name of a document's language, as it is written. It is said again in the topmost
/// structure elements. Real ones have some 5 characters, and hardly more than 35.
inline constexpr std::size_t kLanguage = 256;

/// How deep attributes of structure elements may stand in one another directly. They never should.
inline constexpr int kNestedAttributes = 16;

/// How deep structure elements may stand in one another directly. They never should: nothing could
/// refer to them.
inline constexpr int kNestedElements = 32;

/// How deep direct actions may stand in one another, as the /Next of the one before.
inline constexpr int kNestedActions = 64;

/// How deep the trees of fields may be. Real ones stay below 20.
inline constexpr std::size_t kFieldTreeDepth = 64;

/// How deep direct fields may stand in one another, as the /Kids of their parent.
inline constexpr int kNestedFields = 64;

/// How far up the parents of a field are asked for what it inherits.
inline constexpr int kFieldParents = 32;

/// Fields of one document that the preview draws: packed, a field takes hardly any of its file.
inline constexpr std::size_t kDrawnFields = 100'000;
/// And bytes of what says how they look.
inline constexpr Allowance kDrawnFieldText{.fixed = std::uint64_t{8} << 20U, .perByte = 32};

/// The titles of a source's articles, each counted again.
inline constexpr Allowance kThreadTitles{.fixed = std::uint64_t{1} << 20U, .perByte = 16};

/// The longest name of a field, in UTF-8, that is told apart from those of other documents. Many
/// fields may share a longer one, as one object. Real ones have some 20 bytes.
inline constexpr std::size_t kFieldName = 1024;

/// Bytes of names and default appearances of the fields of one source that get others: many fields
/// may share one string.
inline constexpr Allowance kRenamed{.fixed = std::uint64_t{4} << 20U, .perByte = 16};

/// The longest default appearance of a form that is written out in each of its fields when it can
/// no longer be said for all of them together: they share a longer one. Real ones have some 20
/// bytes.
inline constexpr std::size_t kDefaultAppearance = 256;

/// Work, in bytes looked at, for telling whether a default resource of a form is the same as
/// another: for one. Beyond that it counts as different from all others.
inline constexpr std::uint64_t kComparedResource = std::uint64_t{1} << 20U;
/// The same for all of a source together.
inline constexpr std::uint64_t kComparedResources = std::uint64_t{32} << 20U;

/// The shortest body of a stream that is worth being shared by several sources, in bytes.
inline constexpr std::uint64_t kSharedStream = 1024;

/// How deep streams that are compared may stand in one another (an image, its mask, the colour
/// space of that). Beyond that they are not shared.
inline constexpr std::size_t kNestedShared = 8;

/// Bytes of the default resources of one source's form, without what they refer to.
inline constexpr std::uint64_t kFormResources = std::uint64_t{2} << 20U;

/// Decoded bytes of the scripts of one source in which names of fields are replaced.
inline constexpr Allowance kScripts{.fixed = std::uint64_t{2} << 20U, .perByte = 32};

/// The largest object number (ISO 32000-2, annex C speaks of 8,388,607; files exceed it).
inline constexpr std::uint64_t kObjectNumber = 0x7fffffff;

/// Object numbers below this, or below an eighth of the file's size, live in the pages of a
/// table, whatever they are; higher ones in a tree.
inline constexpr std::size_t kFlatObjectNumbers = std::size_t{1} << 20U;

/// How many of those higher ones a document may use.
inline constexpr std::size_t kWildObjectNumbers = std::size_t{1} << 20U;

/// Decoded bytes of one cross-reference stream or object stream.
inline constexpr std::size_t kDecodedStream = std::size_t{64} << 20U;

/// And of one of so many bytes as it is encoded. In real files each byte becomes 26 at most, but in
/// streams of a few bytes and in one of nothing but nulls.
inline constexpr Allowance kDecodedFrom{.fixed = std::uint64_t{2} << 20U, .perByte = 256};

/// Decoded bytes of all those streams of a document, counting a stream again each time it has to be
/// decoded again.
inline constexpr Allowance kDecoded{.fixed = std::uint64_t{8} << 20U, .perByte = 64};

/// Bytes of syntax read in one document, again counted each time: reading the same bytes through
/// many references is how a small file makes a reader work for ever.
inline constexpr Allowance kSyntax{.fixed = std::uint64_t{64} << 20U, .perByte = 32};

/// Objects in one object stream. Writers put a few hundred there.
inline constexpr std::size_t kObjectStreamMembers = std::size_t{1} << 20U;

/// Filters on one stream.
inline constexpr std::size_t kFilters = 16;

/// Components of a pixel that a predictor is told of. Writers use four.
inline constexpr int kPredictorColours = 32;
/// Pixels of its rows. Writers use some ten thousand; the bits of a row of this size are still
/// counted in 64 bits.
inline constexpr int kPredictorColumns = 1 << 24;

/// The longest beginning of an object ("12 0 obj", and white space in it) that is sure to be
/// recognised where a file is looked through for it.
inline constexpr std::size_t kObjectHeader = 64;

/// White space before "endstream". An end of line is all that there should be.
inline constexpr std::size_t kGapBeforeEndstream = 16;

/// Junk before "%PDF-" that readers agree to skip (ISO 32000-2, 7.5.2, note).
inline constexpr std::size_t kJunkBeforeHeader = 1024;

/// How far before the end of the file "startxref" is looked for.
inline constexpr std::size_t kTail = 4096;

/// How far other readers look. A revision of that length without a section of its own goes
/// unnoticed.
inline constexpr std::size_t kUsualTail = 1024;

/// Bytes looked at in scanning a damaged file for its objects. One pass needs about two for each
/// byte of the file; the rest is for broken objects, of which the end has to be looked for.
inline constexpr Allowance kScan{.fixed = std::uint64_t{64} << 20U, .perByte = 8};

/// Size in bytes up to which holes in a file count as bytes that are stored.
inline constexpr std::uint64_t kCertainlyStored = std::uint64_t{1} << 30U;

/// Objects that such a scan finds, counting each definition. Real files of gigabytes have a few
/// million.
inline constexpr std::size_t kScannedObjects = std::size_t{1} << 24U;

/// The longest object that such a scan recognises, without the body of a stream.
inline constexpr std::size_t kScannedValue = std::size_t{16} << 20U;

/// The longest trailer that such a scan steps over at once. Of a longer one, what looks like an
/// object counts as one.
inline constexpr std::size_t kScannedTrailer = std::size_t{64} << 10U;

/// How many definitions of a number that such a scan found are tried as the length of a stream.
inline constexpr std::ptrdiff_t kScannedLengths = 4;

/// What a source keeps in memory of a large file that is read from front to back: more would not
/// fit into the caches of a processor.
inline constexpr std::size_t kWindowBytes = std::size_t{2} << 20U;

/// What a source may keep in memory of a file that is read in any order, and of its decoded object
/// streams, each. What a smaller file leaves is for these.
inline constexpr std::size_t kResidentBytes = std::size_t{16} << 20U;

}  // namespace quirebind::limits
