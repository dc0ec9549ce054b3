# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Many files of one page."""

from pathlib import Path

from .pdf import PageTree, Writer, finish_document
from .words import Words

_HELVETICA = b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>"
_FONT_BYTES = 18_000
_SCAN_BYTES = 3_500_000
_INVOICE_FONT_BYTES = 60_000
_LOGO_BYTES = 30_000
_FIELDS = 20


def write_tiny(path: Path, index: int) -> None:
    """One line of text in a font that every reader has."""
    writer = Writer(path)
    font = writer.add(_HELVETICA)
    content = writer.add_stream(b"", b"BT /F1 24 Tf 72 700 Td (Hello, world %d) Tj ET" % index)
    _finish_page(writer, b"/Contents %d 0 R /Resources << /Font << /F1 %d 0 R >> >>"
                 % (content, font))


def write_one_page(path: Path, index: int, words: Words) -> None:
    """A page of text with a font of its own, about 20 KB."""
    writer = Writer(path)
    fonts = [_embedded_font(writer, b"AAAAA%c+One" % (65 + index % 26), words.font(_FONT_BYTES)),
             writer.add(_HELVETICA)]
    content = writer.add_deflated(b"", words.page(f"Page {index}"))
    _finish_page(writer, b"/Contents %d 0 R /Resources << /Font << /F1 %d 0 R /F2 %d 0 R >> >>"
                 % (content, *fonts))


def write_scan(path: Path, words: Words) -> None:
    """A page that is a photograph and nothing else."""
    writer = Writer(path)
    image = writer.add_stream(b"/Type /XObject /Subtype /Image /Width 2480 /Height 3508 "
                              b"/ColorSpace /DeviceRGB /BitsPerComponent 8 /Filter /DCTDecode",
                              words.incompressible(_SCAN_BYTES))
    content = writer.add_stream(b"", b"q 595 0 0 842 0 0 cm /Im1 Do Q")
    _finish_page(writer, b"/Contents %d 0 R /Resources << /XObject << /Im1 %d 0 R >> >>"
                 % (content, image))


class Invoices:
    """Invoices of one company: the same fonts and the same logo in each, under the same numbers."""

    def __init__(self, words: Words) -> None:
        self._words = words
        self._fonts = [words.font(_INVOICE_FONT_BYTES) for _ in range(2)]
        self._logo = words.incompressible(_LOGO_BYTES)

    def write(self, path: Path, index: int) -> None:
        writer = Writer(path)
        fonts = [_embedded_font(writer, name, data)
                 for name, data in zip((b"ABCDEF+Text", b"GHIJKL+Bold"), self._fonts)]
        logo = writer.add_stream(b"/Type /XObject /Subtype /Image /Width 300 /Height 100 "
                                 b"/ColorSpace /DeviceRGB /BitsPerComponent 8 /Filter /DCTDecode",
                                 self._logo)
        content = writer.add_deflated(b"", self._words.page(f"Invoice {index}", lines=12)
                                      + b"q 150 0 0 50 72 780 cm /Im1 Do Q")
        _finish_page(writer, b"/Contents %d 0 R /Resources << /Font << /F1 %d 0 R /F2 %d 0 R >> "
                             b"/XObject << /Im1 %d 0 R >> >>" % (content, *fonts, logo))


def write_form(path: Path) -> None:
    """A page with fields to be filled in."""
    writer = Writer(path)
    font, page = writer.add(_HELVETICA), writer.reserve()
    fields = b" ".join(b"%d 0 R" % add_field(writer, font, page, index)
                       for index in range(_FIELDS))
    content = writer.add_stream(b"", b"BT /F1 24 Tf 72 800 Td (Application) Tj ET")
    _finish_page(writer, b"/Contents %d 0 R /Resources << /Font << /F1 %d 0 R >> >> /Annots [%s]"
                 % (content, font, fields), page, form_entry(fields, font))


def add_field(writer: Writer, font: int, page: int, index: int) -> int:
    """A text field, which is its own widget, with an appearance of its own."""
    appearance = writer.add_stream(b"/Type /XObject /Subtype /Form /BBox [0 0 200 20] "
                                   b"/Resources << /Font << /Helv %d 0 R >> >>" % font,
                                   b"/Tx BMC q BT /Helv 10 Tf 0 g 2 6 Td (Value %d) Tj ET Q EMC"
                                   % index)
    bottom = 760 - 30 * (index % _FIELDS)
    return writer.add(b"<< /Type /Annot /Subtype /Widget /FT /Tx /T (field%d) /V (Value %d) "
                      b"/DA (/Helv 10 Tf 0 g) /F 4 /P %d 0 R /Rect [72 %d 272 %d] "
                      b"/AP << /N %d 0 R >> >>"
                      % (index, index, page, bottom, bottom + 20, appearance))


def form_entry(fields: bytes, font: int) -> bytes:
    """What the catalog says of a form with these fields."""
    return (b"/AcroForm << /Fields [%s] /DA (/Helv 10 Tf 0 g) /DR << /Font << /Helv %d 0 R >> >> >>"
            % (fields, font))


def _embedded_font(writer: Writer, name: bytes, data: bytes) -> int:
    file = writer.add_deflated(b"/Length1 %d" % len(data), data)
    descriptor = writer.add(b"<< /Type /FontDescriptor /FontName /%s /Flags 32 /ItalicAngle 0 "
                            b"/FontBBox [-100 -200 1000 900] /Ascent 900 /Descent -200 "
                            b"/CapHeight 700 /StemV 80 /FontFile2 %d 0 R >>" % (name, file))
    widths = b" ".join(b"%d" % (400 + 37 * code % 300) for code in range(32, 127))
    return writer.add(b"<< /Type /Font /Subtype /TrueType /BaseFont /%s /FirstChar 32 "
                      b"/LastChar 126 /Widths [%s] /Encoding /WinAnsiEncoding "
                      b"/FontDescriptor %d 0 R >>"
                      % (name, widths, descriptor))


def _finish_page(writer: Writer, entries: bytes, page: int = 0, catalog: bytes = b"") -> None:
    tree = PageTree(writer, 1)
    page = writer.add(b"<< /Type /Page /Parent %d 0 R /MediaBox [0 0 595 842] %s >>"
                      % (tree.parent(0), entries), page or None)
    finish_document(writer, tree, [page], catalog)
