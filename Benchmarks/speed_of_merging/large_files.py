# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Files with very many pages, fields or named destinations."""

from pathlib import Path

from .pdf import PageTree, Writer, finish_document
from .small_files import add_field, form_entry
from .words import Words

_FIELDS_ON_PAGE = 20
_LINKS_ON_PAGE = 10
_NAMES_IN_NODE = 64
_FONT = b"<< /Type /Font /Subtype /Type1 /BaseFont /%s /Encoding /WinAnsiEncoding >>"


def write_book(path: Path, pages: int, packed: bool, words: Words) -> None:
    """Pages of text that share their fonts."""
    writer = Writer(path, packed)
    resources, tree = _resources(writer), PageTree(writer, pages)
    numbers = []
    for index in range(pages):
        content = writer.add_deflated(b"", words.page(f"Page {index + 1}"))
        numbers.append(writer.add(_page(tree.parent(index), resources, content)))
    finish_document(writer, tree, numbers)


def write_fields(path: Path, fields: int) -> None:
    """A form over many pages."""
    writer = Writer(path)
    resources, font = _resources(writer), writer.add(_FONT % b"Helvetica")
    pages = (fields + _FIELDS_ON_PAGE - 1) // _FIELDS_ON_PAGE
    tree, numbers, all_fields = PageTree(writer, pages), [], []
    for index in range(pages):
        page = writer.reserve()
        first = index * _FIELDS_ON_PAGE
        on_page = [b"%d 0 R" % add_field(writer, font, page, field)
                   for field in range(first, min(fields, first + _FIELDS_ON_PAGE))]
        content = writer.add_stream(b"", b"BT /F1 24 Tf 72 800 Td (Sheet %d) Tj ET" % index)
        writer.add(_page(tree.parent(index), resources, content,
                         b"/Annots [%s]" % b" ".join(on_page)), page)
        numbers.append(page)
        all_fields += on_page
    finish_document(writer, tree, numbers, form_entry(b" ".join(all_fields), font))


def write_destinations(path: Path, names: int) -> None:
    """Pages that link to each other by name, each name used once."""
    writer = Writer(path)
    resources, pages = _resources(writer), (names + _LINKS_ON_PAGE - 1) // _LINKS_ON_PAGE
    tree, numbers = PageTree(writer, pages), []
    for index in range(pages):
        # A name leads to some page far from the link.
        links = b" ".join(
            _link(writer, (index * _LINKS_ON_PAGE + link) * 7919 % names, link)
            for link in range(_LINKS_ON_PAGE))
        content = writer.add_stream(b"", b"BT /F1 24 Tf 72 800 Td (Chapter %d) Tj ET" % index)
        numbers.append(writer.add(_page(tree.parent(index), resources, content,
                                        b"/Annots [%s]" % links)))
    root = _name_tree(writer, names, numbers)
    finish_document(writer, tree, numbers, b"/Names << /Dests %d 0 R >>" % root)


def _link(writer: Writer, name: int, place: int) -> bytes:
    """A reference to a new link to that name."""
    bottom = 700 - 30 * place
    return b"%d 0 R" % writer.add(b"<< /Type /Annot /Subtype /Link /Rect [72 %d 272 %d] "
                                  b"/Border [0 0 0] /Dest (name%07d) >>"
                                  % (bottom, bottom + 20, name))


def _name_tree(writer: Writer, names: int, pages: list[int]) -> int:
    leaves = []
    for first in range(0, names, _NAMES_IN_NODE):
        end = min(names, first + _NAMES_IN_NODE)
        entries = b" ".join(b"(name%07d) [%d 0 R /XYZ 72 %d null]"
                            % (name, pages[name % len(pages)], 100 + name % 600)
                            for name in range(first, end))
        leaves.append(writer.add(b"<< /Limits [(name%07d) (name%07d)] /Names [%s] >>"
                                 % (first, end - 1, entries)))
    return writer.add(b"<< /Kids [%s] >>" % b" ".join(b"%d 0 R" % leaf for leaf in leaves))


def _resources(writer: Writer) -> int:
    fonts = [writer.add(_FONT % name) for name in (b"Helvetica-Bold", b"Times-Roman")]
    return writer.add(b"<< /Font << /F1 %d 0 R /F2 %d 0 R >> >>" % tuple(fonts))


def _page(parent: int, resources: int, content: int, entries: bytes = b"") -> bytes:
    return (b"<< /Type /Page /Parent %d 0 R /MediaBox [0 0 595 842] /Resources %d 0 R "
            b"/Contents %d 0 R %s >>" % (parent, resources, content, entries))
