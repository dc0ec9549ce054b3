// SPDX-FileCopyrightText: 2026 The Quirebind authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

/// Hand-written PDF files for tests.
///
/// A fixture is the readable text of a PDF in which directives, written {{like this}}, stand for
/// everything that would have to be counted by hand. All else is copied as it stands, so whatever
/// is to be wrong is simply written wrong.
///
///     {{header 1.7}}
///     {{object 1 0}}
///     << /Type /Catalog /Pages 2 0 R >>
///     endobj
///     {{object 2 0}}
///     << /Type /Pages /Kids [3 0 R] /Count 1 >>
///     endobj
///     {{object 3 0}}
///     << /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 4 0 R >>
///     endobj
///     {{object 4 0}}
///     << /Length {{length}} >>
///     {{stream}}
///     0 0 10 10 re f
///     {{endstream}}
///     endobj
///     {{xref}}
///     trailer
///     << /Size {{size}} /Root 1 0 R >>
///     {{startxref}}
///     %%EOF
///
/// A directive stands anywhere in a line and ends in it. A line on which stand only directives that
/// write nothing (marked * below) disappears. Empty lines at the start of the text are dropped, so
/// that a raw string may begin on a line of its own. Arguments are separated by blanks.
///
/// Placement
///   {{header 1.7}}          `%PDF-1.7`, a line end, and a comment of four bytes above 127. Offsets
///                           count from here; junk may stand before it.
///   {{header 1.7 origin=file}}  The same, but offsets count from the first byte of the file.
///                           (Without a header directive they do too.)
///   {{eol lf}} *            How line ends are written from here on, in copied text, in generated
///                           text and in stream data: lf, cr or crlf. (With cr, the keyword
///                           `stream` is followed by both, as it must be.)
///   {{label NAME}} *        Names this place. Names are letters, digits and underscores, a letter
///                           first. Not within a stream.
///   {{offset 7}}            The decimal offset of object 7; {{offset NAME}} that of a label. With
///                           +n or -n directly behind: {{offset 7+3}}. Of several objects 7 the
///                           last one above is meant, or the first one below if none is above.
///   {{hex 00 ff 0A}}        Those bytes.
///   {{fill 1024 20}}        1024 bytes 0x20.
///   {{# any words}} *       A comment for the reader of the fixture.
///
/// Objects and streams
///   {{object 3 0}}          `3 0 obj`; the offset is recorded for the next cross-reference
///                           section. The body and `endobj` are the author's.
///   {{stream}} ... {{endstream}}   The two keywords, each on a line of its own, and data between
///                           them. The line ends next to the keywords are not part of it. With
///                           encoding options (below) the data is encoded; /Filter and /DecodeParms
///                           in the dictionary are the author's.
///   {{length}}              The encoded length of this object's stream. {{length 4}}: of the one
///                           in object 4, wherever it is (for an indirect /Length). {{length+2}},
///                           {{length 4-1}}: wrong by that much.
///   {{objectstream 5 0}}    An object stream, complete with dictionary, keywords and `endobj`:
///   /Extends 4 0 R            - further dictionary entries, up to the first member,
///   {{object 1}}              - members, with neither generation nor `endobj`,
///   << /Type /Catalog >>
///   {{endobjectstream}}     Encoding options and without=... are allowed. An entry that the author
///                           gives (such as /N 99 or /Length 9 0 R) replaces the generated one.
///
/// Cross-reference sections. Each lists what was declared since the section before it, so several
/// of them make a file of several revisions.
///   {{free 5 1}} *          Object 5 is free; its next generation is 1. The list of free objects
///                           is linked by the expander.
///   {{entry 5 1 1234 0}} *  Lists object 5 with this type, second and third field, in the terms of
///                           cross-reference streams (ISO 32000-2, table 18); @7, @NAME, @7+3 stand
///                           for offsets. In a table, type 0 is written `f` and type 1 `n`.
///                           It replaces what was declared of object 5, and an {{object}}, {{free}}
///                           or {{entry}} further down replaces it.
///   {{omit 5 6}} *          Objects 5 and 6 shall not be listed.
///   {{xref}}                A table: `xref`, subsections, entries. `trailer` and its dictionary
///                           are the author's. Objects within object streams cannot be listed
///                           here; they remain for a later section. Options: section options, and
///                             entry=19   entries end in a line end of one byte without a space
///                             shift=1    subsections say a first number greater by 1 than is true
///   {{xrefstream 9 0}}      A cross-reference stream, which is object 9 and lists itself:
///   /Root 1 0 R               - the dictionary's further entries; one that the author gives
///   /Prev {{prev}}              replaces the generated one (/Type /Size /W /Index /Length
///   {{endxrefstream}}           /Filter /DecodeParms).
///                           Options: section options, encoding options, without=..., and
///                             W=1,4,2    the fields' widths (these are the default)
///                             hybrid     for /XRefStm {{offset 9}} in a table's trailer: it lists
///                                        only the objects within object streams (or those of
///                                        only=...), and counts for no section: all others, the
///                                        stream itself too, remain for the {{xref}} below
///   Section options:
///     split=4,6             new subsections begin at 4 and 6 even if numbers are contiguous
///     only=1-3,7            lists only these; all others remain for the next section
///     zero=no, zero=yes     object 0, the head of the free list, is listed or not. If not said: in
///                           the first section and in those that free an object, never in a hybrid
///   {{prev}}                The offset of the section before the latest one above (or before the
///                           one it stands in).
///   {{size}}                One more than the highest object number declared so far.
///   {{startxref}}           `startxref`, a line end, the offset of the latest section. `%%EOF` is
///                           the author's.
///
/// Encoding options, for {{stream}}, {{objectstream}} and {{xrefstream}}:
///     filter=/FlateDecode   or several, in the order of a /Filter array and without blanks:
///                           filter=/ASCIIHexDecode,/FlateDecode. Known: /FlateDecode /LZWDecode
///                           /RunLengthDecode /ASCIIHexDecode /ASCII85Decode
///     predictor=12          before the last filter, /FlateDecode or /LZWDecode: 2 (TIFF), 10 to 14
///                           (the PNG functions None, Sub, Up, Average, Paeth), 15 (all in turn)
///     columns=4             bytes in a predictor's row; the default is the sum of W, or 1
///     early=0               /LZWDecode with /EarlyChange 0
/// and without=/N,/First, for the latter two: leaves generated entries out.
namespace quirebind::test {

/// A fixture's bytes, and where things are in them.
struct Fixture {
    std::string bytes;
    /// By label, and by object number in decimal (the last object of that number); counted as in
    /// the file's own tables.
    std::map<std::string, std::uint64_t, std::less<>> offsets;
};

/// Expands the text of a fixture. Throws std::invalid_argument, whose text begins with
/// "line 12: ", for a mistake in it.
[[nodiscard]] Fixture expandFixture(std::string_view text);

/// The bytes alone.
[[nodiscard]] std::string fixturePDF(std::string_view text);

/// What the document of simplePDF() is like.
struct SimplePDFOptions {
    /// Page i, from 1, shows the text "<label>-<i>". Letters, digits, blanks and hyphens.
    std::string label = "page";
    std::string version = "1.7";
    /// Object streams and a cross-reference stream, instead of a classic table.
    bool objectStreams = false;
    /// Page i is 200 + 10 i wide and 300 + 10 i high. Otherwise all are 200 by 300.
    bool distinctSizes = false;
};

/// An ordinary document of that many pages, each with one line of Helvetica.
[[nodiscard]] std::string simplePDF(int pages, const SimplePDFOptions& options = {});

}  // namespace quirebind::test
