# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What belongs to documents as a whole."""

from typing import Any, Sequence

from ..builder import Document
from ..result import Result
from ..row import Check, Row, Source, three


def _bookmarks(letter: str) -> Document:
    document = Document(letter)
    pages = document.pages(2)
    root, *items = [document.reserve() for _ in range(3)]
    document.define(root, f"<< /Type /Outlines /First {items[0]} /Last {items[1]} /Count 2 >>")
    for number, (page, item) in enumerate(zip(pages, items), 1):
        other = f"/Next {items[1]}" if number == 1 else f"/Prev {items[0]}"
        document.define(item, f"<< /Title (Chapter {letter}{number}) /Parent {root} {other} "
                              f"/Dest [{page} /Fit] >>")
    document.catalog = f"/Outlines {root}"
    return document


def _bookmark_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    places = {}
    waiting = [result.dictionary(result.catalog.get("/Outlines")).get("/First")]
    while waiting:
        for ref in result.chain(waiting.pop(), "/Next"):
            item = result.dictionary(ref)
            title = result.follow(item.get("/Title"))
            if title not in places:
                places[title] = result.leads(item)
                waiting.append(item.get("/First"))
    found = []
    for source in sources:
        for number, page in enumerate(source.pages, 1):
            place = places.get(f"u:Chapter {source.letter}{number}")
            found.append(Check(f"bookmark {number} of {source.letter}",
                               place is not None and place.page == page))
    return found


def _labelled(letter: str) -> Document:
    document = Document(letter)
    document.pages(3)
    document.catalog = f"/PageLabels << /Nums [0 << /S /r >> 1 << /S /D /P ({letter}-) >>] >>"
    return document


def _label_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    labels = result.tree(result.catalog.get("/PageLabels"), "/Nums")

    def label(page: int) -> tuple[Any, Any, int]:
        """Style, prefix and number (12.4.2)."""
        start = max((each for each in labels if each <= page), default=None)
        said = result.dictionary(labels.get(start))
        return (said.get("/S"), result.follow(said.get("/P", "u:")),
                said.get("/St", 1) + page - (start or 0))

    found = []
    for source in sources:
        wanted = [("/r", "u:", 1)] + [("/D", f"u:{source.letter}-", number) for number in (1, 2)]
        found += [Check(f"the label of page {number} of {source.letter}", label(page) == said)
                  for number, (page, said) in enumerate(zip(source.pages, wanted), 1)]
    return found


def _with_file(letter: str) -> Document:
    document = Document(letter)
    document.pages(1)
    file = document.add("<< /Type /EmbeddedFile >>", _attached(letter))
    document.catalog = ("/Names << /EmbeddedFiles << /Names [(notes.txt) << /Type /Filespec "
                        f"/F (notes.txt) /UF (notes.txt) /EF << /F {file} >> >>] >> >>")
    return document


def _attached(letter: str) -> bytes:
    return b"The file attached to " + letter.encode()


def _file_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    files = result.tree(result.dictionary(result.catalog.get("/Names")).get("/EmbeddedFiles"),
                        "/Names")
    contents = [result.data(result.dictionary(result.dictionary(file).get("/EF")).get("/F"))
                for file in files.values()]
    return [Check(f"the file of {source.letter}", _attached(source.letter) in contents)
            for source in sources]


ROWS = [
    Row("Bookmarks", "The bookmarks of each document are there and lead to its pages.",
        three(_bookmarks), _bookmark_checks),
    Row("Page labels", "Each page is called what it was called, such as `i` or `A-1`.",
        three(_labelled), _label_checks),
    Row("Files attached to documents",
        "Three files of one name, attached to a document each, come out with their own contents.",
        three(_with_file), _file_checks),
]
