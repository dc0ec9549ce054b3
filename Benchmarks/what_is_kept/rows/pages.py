# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What belongs to single pages: boxes, rotation, thumbnails, colour."""

from typing import Any, Callable, Optional, Sequence

from ..builder import Document
from ..picture import looks_like
from ..result import Result
from ..row import Check, Row, Source, three

_SQUARE = "1 0 0 rg 20 20 60 60 re f"


def _page(letter: str, entries: str, inherited: str = "") -> Document:
    """A document of one page that has a red square in a corner."""
    document = Document(letter)
    (page,) = document.pages(1, entries)
    document.draw(page, _SQUARE)
    if inherited:
        document.pages_node = inherited
    return document


def _inheriting(letter: str) -> Document:
    """A page that has nothing itself, with content that needs a font of the tree's root."""
    document = Document(letter)
    document.bare = True
    document.pages(1)
    document.pages_node = ("/MediaBox [0 0 220 320] /CropBox [10 10 210 310] "
                           f"/Resources << /Font << /Name {document.font} >> >>")
    return document


def _inherited(result: Result, sources: Sequence[Source]) -> list[Check]:
    found = []
    for source in sources:
        page = source.first_page
        found += [Check(f"the picture of {source.letter}", looks_like(
                      result.pictures[page], source.original.pictures[0])),
                  Check(f"the text of {source.letter}",
                        result.texts[page] == source.original.texts[0]),
                  Check(f"the crop box of {source.letter}",
                        _size(result, page, "/CropBox") == (200, 300))]
    return found


def _looks(result: Result, sources: Sequence[Source]) -> list[Check]:
    return [Check(f"page {number + 1} of {source.letter}",
                  looks_like(result.pictures[page], source.original.pictures[number]))
            for source in sources for number, page in enumerate(source.pages)]


def _trim(result: Result, sources: Sequence[Source]) -> list[Check]:
    found = []
    for source in sources:
        page = source.first_page
        for key, wanted in (("/TrimBox", (20, 30, 180, 270)), ("/BleedBox", (10, 20, 190, 280)),
                            ("/ArtBox", (30, 40, 170, 260))):
            box = _box(result, page, key)
            found.append(Check(f"{key[1:]} of {source.letter}", box is not None
                               and all(abs(a - b) < 0.5 for a, b in zip(box, wanted))))
    return found


def _box(result: Result, page: int, key: str) -> Optional[tuple[float, ...]]:
    """A box, from the lower left corner of the media box, which a tool may move."""
    box = [result.follow(each) for each in result.array(result.inherited(page, key))]
    media = [result.follow(each) for each in result.array(result.inherited(page, "/MediaBox"))]
    if len(box) != 4 or len(media) != 4:
        return None
    return tuple(value - media[index % 2] for index, value in enumerate(box))


def _size(result: Result, page: int, key: str) -> tuple[int, int]:
    box = _box(result, page, key) or _box(result, page, "/MediaBox") or (0, 0, 0, 0)
    return round(box[2] - box[0]), round(box[3] - box[1])


def _user_unit(result: Result, sources: Sequence[Source]) -> list[Check]:
    found = []
    for source in sources:
        unit = result.follow(result.pages()[source.first_page].get("/UserUnit", 1))
        width, height = _size(result, source.first_page, "/MediaBox")
        found.append(Check(f"the size of {source.letter}",
                           (width * unit, height * unit) == (400, 600)))
    return found


def _entry(what: str, ok: Callable[[Result, Any], bool], key: str
           ) -> Callable[[Result, Sequence[Source]], list[Check]]:
    """Checks an entry of the first page of each document."""
    return lambda result, sources: [
        Check(f"{what} of {source.letter}", ok(result, result.pages()[source.first_page].get(key)))
        for source in sources]


def _thumbnail(letter: str) -> Document:
    document = _page(letter, "")
    picture = document.add("<< /Width 8 /Height 12 /ColorSpace /DeviceGray /BitsPerComponent 8 >>",
                           _thumbnail_data(letter))
    document.enter(document.page_refs[0], f"/Thumb {picture}")
    return document


def _thumbnail_data(letter: str) -> bytes:
    return letter.encode() * 96


def _thumbnails(result: Result, sources: Sequence[Source]) -> list[Check]:
    return [Check(f"the thumbnail of {source.letter}",
                  result.data(result.pages()[source.first_page].get("/Thumb"))
                  == _thumbnail_data(source.letter)) for source in sources]


def _same_group(result: Result, value: Any) -> bool:
    group = result.dictionary(value)
    return (group.get("/S"), result.follow(group.get("/CS")),
            group.get("/I")) == ("/Transparency", "/DeviceCMYK", True)


def _intends(result: Result, value: Any) -> bool:
    intents = [result.dictionary(each) for each in result.array(value)]
    return any(result.follow(each.get("/OutputConditionIdentifier")) == "u:FOGRA39"
               for each in intents)


INTENT = ("<< /Type /OutputIntent /S /GTS_PDFX /OutputConditionIdentifier (FOGRA39) "
          "/RegistryName (http://www.color.org) >>")


def _shared_intent(letter: str) -> Document:
    document = _page(letter, "")
    document.catalog = f"/OutputIntents [{INTENT}]"
    return document


ROWS = [
    Row("Inherited boxes and resources",
        "A page that has its boxes and fonts from the page tree looks and reads the same, and its "
        "crop box has the same size.", three(_inheriting), _inherited),
    Row("Inherited rotation", "A page that the page tree turns is drawn the same way round.",
        three(lambda letter: _page(letter, "", "/MediaBox [0 0 200 300] /Rotate 90")), _looks),
    Row("Boxes for printers", "`TrimBox`, `BleedBox` and `ArtBox` are where they were.",
        three(lambda letter: _page(letter, "/TrimBox [20 30 180 270] /BleedBox [10 20 190 280] "
                                           "/ArtBox [30 40 170 260]")), _trim),
    Row("`UserUnit`", "A page measured in other units is as big as it was.",
        three(lambda letter: _page(letter, "/UserUnit 2")), _user_unit),
    Row("A page's transparency group",
        "The page says in which colour space it is composed, and that it is isolated.",
        three(lambda letter: _page(letter, "/Group << /S /Transparency /CS /DeviceCMYK /I true "
                                           ">>")),
        _entry("the group", _same_group, "/Group")),
    Row("Thumbnails", "The page's own small picture is there, byte for byte.", three(_thumbnail),
        _thumbnails),
    Row("A page's output intent", "The page says for which printing condition it was made.",
        three(lambda letter: _page(letter, f"/OutputIntents [{INTENT}]")),
        _entry("the intent", _intends, "/OutputIntents")),
    Row("An output intent that all documents share",
        "Where all documents were made for one printing condition, so is the outcome.",
        three(_shared_intent),
        lambda result, _: [Check("the intent", _intends(result,
                                                        result.catalog.get("/OutputIntents")))]),
]
