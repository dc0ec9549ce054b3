# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Small PDF documents to add, and what came out of joining them as other programs read it."""

import subprocess
from pathlib import Path
from typing import Optional, Union

AnyPath = Union[str, bytes, Path]


def simple_pdf(path: AnyPath, pages: int = 1, label: Optional[str] = None,
               colour: tuple[float, float, float] = (1, 1, 1)) -> None:
    """A valid document. Each page says "<label> <number>"; the label is the file's name unless one
    is given (ASCII). `colour` is that of the paper, red, green and blue from 0 to 1, so that a page
    can be recognised on the screen."""
    if label is None:
        label = Path(path if not isinstance(path, bytes) else path.decode(errors="replace")).stem
    kids = " ".join(f"{4 + 2 * page} 0 R" for page in range(pages))
    objects = [
        "<< /Type /Catalog /Pages 2 0 R >>",
        f"<< /Type /Pages /Kids [{kids}] /Count {pages} >>",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
    ]
    red, green, blue = colour
    for page in range(pages):
        text = f"{label} {page + 1}".replace("\\", r"\\").replace("(", r"\(").replace(")", r"\)")
        content = (f"{red} {green} {blue} rg 0 0 200 300 re f "
                   f"0 g BT /F 12 Tf 20 150 Td ({text}) Tj ET")
        objects.append("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] "
                       f"/Resources << /Font << /F 3 0 R >> >> /Contents {5 + 2 * page} 0 R >>")
        objects.append(f"<< /Length {len(content)} >>\nstream\n{content}\nendstream")
    _write(path, objects, "")


def comb_pdf(path: AnyPath, period: float) -> None:
    """A page of upright black lines, one every `period` points, as wide as what is between them."""
    lines = " ".join(f"{20 + number * period:.3f} 0 {period / 2:.3f} 300 re"
                     for number in range(int(160 / period)))
    content = f"0 g {lines} f"
    _write(path, ["<< /Type /Catalog /Pages 2 0 R >>",
                  "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                  "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] /Contents 4 0 R >>",
                  f"<< /Length {len(content)} >>\nstream\n{content}\nendstream"], "")


def linked_pdf(path: AnyPath) -> None:
    """Three pages; the first has a link to the last across the middle."""
    pages = ["<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] >>"] * 3
    pages[0] = pages[0].replace(
        ">>", "/Annots [<< /Type /Annot /Subtype /Link /Rect [20 140 180 160] "
        "/Border [0 0 0] /Dest [5 0 R /Fit] >>] >>")
    _write(path, ["<< /Type /Catalog /Pages 2 0 R >>",
                  "<< /Type /Pages /Kids [3 0 R 4 0 R 5 0 R] /Count 3 >>", *pages], "")


def damaged_pdf(path: AnyPath) -> None:
    """A file that calls itself a PDF and has no page."""
    _write_bytes(path, b"%PDF-1.7\nThis is not the rest of a document.\n")


def locked_pdf(path: AnyPath) -> None:
    """A document that cannot be opened without a password, which nobody has."""
    nonsense = "<" + "5A" * 32 + ">"
    _write(path, [
        "<< /Type /Catalog /Pages 2 0 R >>",
        "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 300] >>",
        f"<< /Filter /Standard /V 2 /R 3 /Length 128 /P -4 /O {nonsense} /U {nonsense} >>",
    ], "/Encrypt 4 0 R /ID [<00112233445566778899AABBCCDDEEFF> <00112233445566778899AABBCCDDEEFF>]")


def page_count(path: AnyPath) -> int:
    """The number of pages, as qpdf counts them."""
    return int(_run("qpdf", "--show-npages", path))


def page_labels(path: AnyPath) -> list[str]:
    """What each page says, in order, as Poppler reads it."""
    # Trap: without -raw, pdftotext takes the spaces out of a page of so few words.
    return [page.strip() for page in _run("pdftotext", "-raw", path, "-").split("\f")[:-1]]


def check(path: AnyPath) -> None:
    """Raises AssertionError where qpdf finds anything wrong with the document."""
    _run("qpdf", "--check", path)


def _write(path: AnyPath, objects: list[str], trailer: str) -> None:
    """The file with these objects, numbered from 1; the first is the catalogue."""
    body = bytearray(b"%PDF-1.7\n")
    offsets = []
    for number, text in enumerate(objects, 1):
        offsets.append(len(body))
        body += f"{number} 0 obj\n{text}\nendobj\n".encode("latin-1")
    table = len(body)
    entries = "".join(f"{offset:010} 00000 n \n" for offset in offsets)
    body += (f"xref\n0 {len(objects) + 1}\n0000000000 65535 f \n{entries}"
             f"trailer\n<< /Size {len(objects) + 1} /Root 1 0 R {trailer} >>\n"
             f"startxref\n{table}\n%%EOF\n").encode()
    _write_bytes(path, body)


def _write_bytes(path: AnyPath, content: bytes) -> None:
    with open(path, "wb") as file:
        file.write(content)


def _run(*arguments: AnyPath) -> str:
    result = subprocess.run(arguments, capture_output=True, timeout=60, check=False)
    output = (result.stdout + result.stderr).decode(errors="replace")
    if result.returncode != 0:
        raise AssertionError(f"{arguments[0]!s} is not content with {arguments[-1]!r}: {output}")
    return result.stdout.decode(errors="replace")
