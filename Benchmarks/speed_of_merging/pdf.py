# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Writing PDF files of any size, object by object."""

import os
import struct
import zlib
from array import array
from pathlib import Path
from typing import Optional, Sequence

_LEVEL = 6  # what most programs that write PDF leave zlib at
_IN_ONE_STREAM = 100  # objects; what common writers put into one object stream
_KIDS = 16  # of a node of a page tree
_WIDTHS = (1, 4, 2)  # of the fields of a cross-reference stream, in bytes
_ROW = sum(_WIDTHS)
_FREE, _IN_FILE, _IN_STREAM = 0, 1, 2


def deflated(data: bytes) -> bytes:
    """The data as an ordinary program compresses it."""
    return zlib.compress(data, _LEVEL)


class Writer:
    """A document that goes to the disk as it grows, so that its size is no matter of memory. With
    `packed`, all objects but streams go into object streams, and the table is a stream as well.

    The file has its name only when it is complete.
    """

    def __init__(self, path: Path, packed: bool = False) -> None:
        self._path = path
        self._unfinished = path.with_name(path.name + ".part")
        self._file = open(self._unfinished, "wb", buffering=1 << 20)
        self._packed = packed
        self._kinds = bytearray([_FREE])  # by object number
        self._positions = array("Q", [0])  # an offset, or the number of an object stream
        self._indexes = array("H", [65535])
        self._waiting: list[tuple[int, bytes]] = []
        self._offset = 0
        self._put(b"%PDF-1.5\n%\xe2\xe3\xcf\xd3\n")

    def reserve(self) -> int:
        """A number for an object that is added later."""
        self._kinds.append(_FREE)
        self._positions.append(0)
        self._indexes.append(0)
        return len(self._kinds) - 1

    def add(self, body: bytes, number: Optional[int] = None) -> int:
        """Adds an object that is no stream, and gives its number."""
        number = self.reserve() if number is None else number
        if not self._packed:
            self._place(number)
            self._put(b"%d 0 obj\n%s\nendobj\n" % (number, body))
            return number
        self._waiting.append((number, body))
        if len(self._waiting) == _IN_ONE_STREAM:
            self._pack()
        return number

    def add_stream(self, entries: bytes, data: bytes, number: Optional[int] = None) -> int:
        """Adds a stream with these entries of its dictionary, besides /Length."""
        number = self.reserve() if number is None else number
        self._place(number)
        self._put(b"%d 0 obj\n<< %s /Length %d >>\nstream\n%s\nendstream\nendobj\n"
                  % (number, entries, len(data), data))
        return number

    def add_deflated(self, entries: bytes, data: bytes, number: Optional[int] = None) -> int:
        """Adds a stream that is compressed here."""
        return self.add_stream(entries + b" /Filter /FlateDecode", deflated(data), number)

    def finish(self, root: int) -> None:
        """Completes the file, whose catalog is object `root`."""
        if self._packed:
            self._write_table_stream(root)
        else:
            self._write_table(root)
        self._file.close()
        os.rename(self._unfinished, self._path)

    def _put(self, data: bytes) -> None:
        self._file.write(data)
        self._offset += len(data)

    def _place(self, number: int) -> None:
        self._kinds[number] = _IN_FILE
        self._positions[number] = self._offset

    def _pack(self) -> None:
        stream = self.reserve()
        head, bodies, at = [], [], 0
        for index, (number, body) in enumerate(self._waiting):
            self._kinds[number] = _IN_STREAM
            self._positions[number], self._indexes[number] = stream, index
            head.append(b"%d %d" % (number, at))
            bodies.append(body)
            at += len(body) + 1
        first = b" ".join(head) + b"\n"
        self.add_deflated(b"/Type /ObjStm /N %d /First %d" % (len(bodies), len(first)),
                          first + b"\n".join(bodies), stream)
        self._waiting.clear()

    def _write_table(self, root: int) -> None:
        table, size = self._offset, len(self._kinds)
        self._put(b"xref\n0 %d\n0000000000 65535 f \n" % size)
        for offset in self._positions[1:]:
            self._put(b"%010d 00000 n \n" % offset)
        self._put(b"trailer\n<< /Size %d /Root %d 0 R >>\nstartxref\n%d\n%%%%EOF\n"
                  % (size, root, table))

    def _write_table_stream(self, root: int) -> None:
        if self._waiting:
            self._pack()
        number = self.reserve()
        self._place(number)
        table = self._offset
        rows, before = bytearray(), bytes(_ROW)
        for kind, position, index in zip(self._kinds, self._positions, self._indexes):
            row = struct.pack(">BIH", kind, position, index)
            rows.append(2)  # the PNG predictor "up"
            rows += bytes((new - old) & 255 for new, old in zip(row, before))
            before = row
        self.add_deflated(b"/Type /XRef /Size %d /Root %d 0 R /W [%d %d %d] "
                          b"/DecodeParms << /Predictor 12 /Columns %d >>"
                          % (len(self._kinds), root, *_WIDTHS, _ROW), bytes(rows), number)
        self._put(b"startxref\n%d\n%%%%EOF\n" % table)


class PageTree:
    """A balanced page tree. The pages are written before it, but have to name their parents."""

    def __init__(self, writer: Writer, pages: int) -> None:
        self._writer = writer
        self._leaves = self._nodes(pages)

    def parent(self, index: int) -> int:
        """The number of the node above the page of that index."""
        return self._leaves[index // _KIDS]

    def write(self, pages: Sequence[int]) -> int:
        """Writes all nodes, given the numbers of the pages; gives the number of the root."""
        kids, counts, nodes = list(pages), [1] * len(pages), self._leaves
        while True:
            parents = self._nodes(len(nodes)) if len(nodes) > 1 else []
            sums = [sum(counts[i:i + _KIDS]) for i in range(0, len(kids), _KIDS)]
            for index, node in enumerate(nodes):
                below = b" ".join(b"%d 0 R" % kid
                                  for kid in kids[index * _KIDS:(index + 1) * _KIDS])
                above = b"/Parent %d 0 R" % parents[index // _KIDS] if parents else b""
                self._writer.add(b"<< /Type /Pages %s /Count %d /Kids [%s] >>"
                                 % (above, sums[index], below), node)
            if not parents:
                return nodes[0]
            kids, counts, nodes = nodes, sums, parents

    def _nodes(self, kids: int) -> list[int]:
        return [self._writer.reserve() for _ in range((kids + _KIDS - 1) // _KIDS)]


def finish_document(writer: Writer, tree: PageTree, pages: Sequence[int],
                    catalog: bytes = b"") -> None:
    """Writes the page tree, the catalog with these further entries, and the end of the file."""
    root = tree.write(pages)
    writer.finish(writer.add(b"<< /Type /Catalog /Pages %d 0 R %s >>" % (root, catalog)))
