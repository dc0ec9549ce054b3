# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Small documents, written out object by object."""

from pathlib import Path
from typing import Optional, Union

Body = Union[str, bytes]


class Ref(int):
    """The number of an object; in an f-string it reads as a reference to it."""

    def __str__(self) -> str:
        return f"{int.__repr__(self)} 0 R"

    def __format__(self, _: str) -> str:
        return str(self)


class Document:
    """A document with a classic cross-reference table. Its pages say their name, such as "A2" for
    the second page of document A, so that a page can be recognised wherever it arrives.

        document = Document("A")
        first, second = document.pages(2)
        document.annotate(first, f"/Subtype /Link /Rect [0 0 99 99] /Dest [{second} /Fit]")
        document.write(path)
    """

    def __init__(self, letter: str) -> None:
        self.letter = letter
        self.catalog = ""  # entries of the catalog beyond /Type and /Pages
        self.pages_node = "/MediaBox [0 0 200 300]"  # entries of the page tree's root
        self.bare = False  # whether pages inherit their resources
        self._objects: list[bytes] = []
        self._root, self._tree = self.reserve(), self.reserve()
        self.font = self.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>")
        self.page_refs: list[Ref] = []
        self._entries: dict[Ref, str] = {}
        self._contents: dict[Ref, str] = {}
        self._resources: dict[Ref, str] = {}
        self._annotations: dict[Ref, list[Ref]] = {}

    def reserve(self) -> Ref:
        """A number for an object that is defined later."""
        self._objects.append(b"null")
        return Ref(len(self._objects))

    def define(self, ref: Ref, body: str, stream: Optional[Body] = None) -> Ref:
        """Says what the object is: with `stream`, `body` is its dictionary, without /Length."""
        text = body.encode("latin-1")
        if stream is not None:
            data = stream.encode("latin-1") if isinstance(stream, str) else stream
            assert text.endswith(b">>")
            text = text[:-2] + b"/Length %d >>\nstream\n%s\nendstream" % (len(data), data)
        self._objects[ref - 1] = text
        return ref

    def add(self, body: str, stream: Optional[Body] = None) -> Ref:
        return self.define(self.reserve(), body, stream)

    def pages(self, count: int, entries: str = "") -> list[Ref]:
        """That many more pages, with these entries each."""
        new = [self.reserve() for _ in range(count)]
        for page in new:
            self._entries[page] = entries
            self._contents[page] = self._resources[page] = ""
            self._annotations[page] = []
        self.page_refs += new
        return new

    def enter(self, page: Ref, entries: str) -> None:
        """Further entries of a page."""
        self._entries[page] += " " + entries

    def draw(self, page: Ref, content: str, resources: str = "") -> None:
        """Draws on a page, after its name."""
        self._contents[page] += "\n" + content
        self._resources[page] += " " + resources

    def annotate(self, page: Ref, entries: str, ref: Optional[Ref] = None) -> Ref:
        """An annotation on a page, or the widget of a field."""
        ref = self.define(ref if ref is not None else self.reserve(),
                          f"<< /Type /Annot /P {page} {entries} >>")
        self._annotations[page].append(ref)
        return ref

    def form(self, resources: str, content: str, size: str = "100 20") -> Ref:
        """A form XObject, as appearances are."""
        return self.add(f"<< /Type /XObject /Subtype /Form /BBox [0 0 {size}] "
                        f"/Resources << {resources} >> >>", content)

    def write(self, path: Path) -> None:
        for number, page in enumerate(self.page_refs, 1):
            name = f"{self.letter}{number}"
            content = self.add("<< >>", f"0 g BT /Name 24 Tf 20 250 Td ({name}) Tj ET"
                                        + self._contents[page])
            annotations = " ".join(map(str, self._annotations[page]))
            resources = f"/Font << /Name {self.font} >>{self._resources[page]}"
            self.define(page, f"<< /Type /Page /Parent {self._tree} /Contents {content}"
                              + ("" if self.bare else f" /Resources << {resources} >>")
                              + (f" /Annots [{annotations}]" if annotations else "")
                              + f" {self._entries[page]} >>")
        kids = " ".join(map(str, self.page_refs))
        self.define(self._tree, f"<< /Type /Pages /Kids [{kids}] /Count {len(self.page_refs)} "
                                f"{self.pages_node} >>")
        self.define(self._root, f"<< /Type /Catalog /Pages {self._tree} {self.catalog} >>")
        path.write_bytes(self._file())

    def _file(self) -> bytes:
        file = bytearray(b"%PDF-1.7\n")
        offsets = []
        for number, body in enumerate(self._objects, 1):
            offsets.append(len(file))
            file += b"%d 0 obj\n%s\nendobj\n" % (number, body)
        table = len(file)
        entries = "".join(f"{offset:010} 00000 n \n" for offset in offsets)
        size = len(self._objects) + 1
        file += (f"xref\n0 {size}\n0000000000 65535 f \n{entries}"
                 f"trailer\n<< /Size {size} /Root {self._root} >>\n"
                 f"startxref\n{table}\n%%EOF\n").encode()
        return bytes(file)
