# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What a file says, as qpdf lists its objects, and how its pages look to mutool and Poppler."""

import functools
import json
import subprocess
from pathlib import Path
from typing import Any, Iterator, NamedTuple, Optional

Dictionary = dict[str, Any]


class Place(NamedTuple):
    """Where a link leads."""

    page: int  # from 0
    view: list[Any]  # such as ["/XYZ", 10, 200, 0]


class Result:
    """A file, read. Names begin with a slash, strings with "u:" or "b:", and references read as
    "5 0 R", as in qpdf's JSON; `follow` follows these."""

    def __init__(self, path: Path) -> None:
        self.path = path
        listing = json.loads(_run("qpdf", "--json=2", "--json-key=qpdf", str(path)))
        self._objects: Dictionary = listing["qpdf"][1]
        self.catalog = self.dictionary(self._objects["trailer"]["value"].get("/Root"))
        self.page_refs: list[str] = list(self._leaves(self.catalog.get("/Pages")))

    def follow(self, value: Any) -> Any:
        """What a reference refers to; anything else as it is. A stream is its dictionary."""
        for _ in range(10):
            if not is_reference(value):
                return value
            found = self._objects.get(f"obj:{value}", {})
            value = found["stream"]["dict"] if "stream" in found else found.get("value")
        return None

    def dictionary(self, value: Any) -> Dictionary:
        """What a reference refers to where that is a dictionary; an empty one where not."""
        found = self.follow(value)
        return found if isinstance(found, dict) else {}

    def array(self, value: Any) -> list[Any]:
        """The same for an array."""
        found = self.follow(value)
        return found if isinstance(found, list) else []

    def pages(self) -> list[Dictionary]:
        return [self.dictionary(ref) for ref in self.page_refs]

    def page_index(self, ref: Any) -> Optional[int]:
        return self.page_refs.index(ref) if ref in self.page_refs else None

    def inherited(self, page: int, key: str) -> Any:
        """An entry of a page or of what is above it."""
        return self.nearest(self.page_refs[page], "/Parent", key)

    def annotation_refs(self, page: int) -> list[Any]:
        return self.array(self.pages()[page].get("/Annots"))

    def annotations(self, page: int, subtype: str = "") -> list[Dictionary]:
        """The annotations of a page, in their order."""
        found = [self.dictionary(ref) for ref in self.annotation_refs(page)]
        return [each for each in found if subtype in ("", self.follow(each.get("/Subtype")))]

    # Where links lead.

    def place(self, destination: Any) -> Optional[Place]:
        """Resolves a destination as a viewer does (ISO 32000-2, 12.3.2): an array, or the name of
        one, in either of the two tables."""
        destination = self.follow(destination)
        if isinstance(destination, str) and destination.startswith("/"):
            destination = self.dictionary(self.catalog.get("/Dests")).get(destination)
        elif isinstance(destination, str):
            names = self.dictionary(self.catalog.get("/Names"))
            destination = self.tree(names.get("/Dests"), "/Names").get(destination)
        destination = self.follow(destination)
        if isinstance(destination, dict):
            destination = self.follow(destination.get("/D"))
        if not isinstance(destination, list) or not destination:
            return None
        page = destination[0]
        # A number is for other documents only, but viewers take it as one of a page of this one.
        index = page if isinstance(page, int) else self.page_index(page)
        if index is None or not 0 <= index < len(self.page_refs):
            return None
        return Place(index, [self.follow(each) for each in destination[1:]])

    def leads(self, annotation: Dictionary) -> Optional[Place]:
        """Where a click on an annotation leads within the file."""
        if "/Dest" in annotation:
            return self.place(annotation["/Dest"])
        action = self.dictionary(annotation.get("/A"))
        return self.place(action.get("/D")) if action.get("/S") == "/GoTo" else None

    # Trees and chains.

    def tree(self, root: Any, leaves: str) -> Dictionary:
        """All that a name tree (/Names) or number tree (/Nums) holds (7.9.6, 7.9.7)."""
        found: Dictionary = {}
        waiting, seen = [root], set()
        while waiting:
            reference = waiting.pop()
            if is_reference(reference):
                if reference in seen:
                    continue
                seen.add(reference)
            node = self.dictionary(reference)
            entries = self.array(node.get(leaves))
            for key, value in zip(entries[0::2], entries[1::2]):
                found.setdefault(self.follow(key), value)
            waiting += reversed(self.array(node.get("/Kids")))
        return found

    def chain(self, first: Any, key: str) -> list[str]:
        """The references from the first one along `key`, until there is none or one comes again."""
        found: list[str] = []
        while is_reference(first) and first not in found:
            found.append(first)
            first = self.dictionary(first).get(key)
        return found

    def nearest(self, ref: Any, parent: str, key: str) -> Any:
        """The value of `key` where it is said first on the way along `parent`."""
        for each in self.chain(ref, parent):
            value = self.follow(self.dictionary(each).get(key))
            if value is not None:
                return value
        return None

    def data(self, ref: Any) -> Optional[bytes]:
        """The decoded data of a stream."""
        if not is_reference(ref) or "stream" not in self._objects.get(f"obj:{ref}", {}):
            return None
        return _run("qpdf", f"--show-object={ref.split()[0]}", "--filtered-stream-data",
                    str(self.path))

    def _leaves(self, root: Any) -> Iterator[str]:
        waiting, seen = [root], set()
        while waiting:
            ref = waiting.pop()
            node = self.dictionary(ref)
            if ref in seen:
                continue
            seen.add(ref)
            if "/Kids" in node:
                waiting += reversed(self.array(node["/Kids"]))
            elif node:
                yield ref

    # How it looks.

    @functools.cached_property
    def pictures(self) -> list[bytes]:
        """Each page as mutool draws it."""
        return self._split(_run("mutool", "draw", "-q", "-r", "50", "-F", "ppm", "-o", "-",
                                str(self.path)))

    @functools.cached_property
    def poppler_pictures(self) -> list[bytes]:
        """Each page as Poppler draws it."""
        return self._split(_run("pdftoppm", "-r", "50", str(self.path)))

    @functools.cached_property
    def texts(self) -> list[str]:
        """What each page says, as Poppler reads it."""
        said = _run("pdftotext", "-raw", str(self.path), "-").decode(errors="replace")
        return [page.strip() for page in said.split("\f")[:-1]]

    def _split(self, pictures: bytes) -> list[bytes]:
        """The pictures of a stream of portable pixmaps, one for each page."""
        found, at = [], 0
        while at < len(pictures):
            magic, width, height, depth = pictures[at:at + 64].split(None, 4)[:4]
            assert (magic, depth) == (b"P6", b"255"), "an unexpected kind of picture"
            header = len(b" ".join((magic, width, height, depth))) + 1
            length = header + int(width) * int(height) * 3
            found.append(pictures[at:at + length])
            at += length
        if len(found) != len(self.page_refs):
            raise ValueError(f"{len(found)} pages are drawn")
        return found


def is_reference(value: Any) -> bool:
    return isinstance(value, str) and value.endswith(" R") and value[:1].isdigit()


def _run(*command: str) -> bytes:
    """What a program says. qpdf's exit status 3 means warnings."""
    result = subprocess.run(command, capture_output=True, timeout=60, check=False)
    if result.returncode not in (0, 3):
        raise ValueError(f"{command[0]}: {result.stderr.decode(errors='replace').strip()}")
    return result.stdout
