# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Tags: what the parts of a page are, for reading aloud and for reuse (ISO 32000-2, 14.7)."""

from typing import Any, Optional, Sequence

from ..builder import Document, Ref
from ..result import Result, is_reference
from ..row import Check, Row, Source, three

_LANGUAGES = {"A": "en-GB", "B": "de-DE", "C": "fr-FR"}


def _marked(tag: str, number: int) -> str:
    return (f"/{tag} << /MCID {number} >> BDC BT /Name 12 Tf 20 {200 - 20 * number} Td "
            f"({tag}) Tj ET EMC")


def _tagged(letter: str, types: Sequence[Sequence[str]], root_entries: str = "",
            catalog: str = "", elements_have: str = "") -> Document:
    """A page for each list of types, with an element for each type, all of them below one element
    for the document."""
    document = Document(letter)
    pages = document.pages(len(types))
    root, whole, parents = [document.reserve() for _ in range(3)]
    elements: list[Ref] = []
    numbers = []
    for key, (page, tags) in enumerate(zip(pages, types)):
        on_page = []
        for number, tag in enumerate(tags):
            document.draw(page, _marked(tag, number))
            on_page.append(document.add(f"<< /Type /StructElem /S /{tag} /P {whole} /Pg {page} "
                                        f"/K {number} {elements_have} >>"))
        document.enter(page, f"/StructParents {key} /Tabs /S")
        numbers.append(f"{key} [{_list(on_page)}]")
        elements += on_page
    document.define(whole, f"<< /Type /StructElem /S /Document /P {root} /K [{_list(elements)}] >>")
    document.define(parents, f"<< /Nums [{' '.join(numbers)}] >>")
    document.define(root, f"<< /Type /StructTreeRoot /K {whole} /ParentTree {parents} "
                          f"/ParentTreeNextKey {len(pages)} {root_entries} >>")
    document.catalog = f"/MarkInfo << /Marked true >> /StructTreeRoot {root} {catalog}"
    return document


def _list(refs: Sequence[Ref]) -> str:
    return " ".join(map(str, refs))


def _root(result: Result) -> Any:
    return result.catalog.get("/StructTreeRoot")


def _element(result: Result, page: int, number: int) -> Optional[str]:
    """The element that marked content of a page belongs to by the parent tree, where it is also
    found on the way down from the root, and on that page."""
    tree = result.tree(result.dictionary(_root(result)).get("/ParentTree"), "/Nums")
    elements = result.array(tree.get(result.follow(result.pages()[page].get("/StructParents"))))
    ref = elements[number] if number < len(elements) else None
    if not is_reference(ref) or ref not in _all_elements(result):
        return None
    return ref if result.dictionary(ref).get("/Pg") == result.page_refs[page] else None


def _all_elements(result: Result) -> set[str]:
    """The elements below the root."""
    found: set[str] = set()
    waiting = [result.dictionary(_root(result)).get("/K")]
    while waiting:
        each = waiting.pop()
        if is_reference(each) and each not in found and isinstance(result.follow(each), dict):
            found.add(each)
            waiting.append(result.dictionary(each).get("/K"))
        elif isinstance(array := result.follow(each), list):
            waiting += array
    return found


def _tree_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    marked = result.dictionary(result.catalog.get("/MarkInfo")).get("/Marked") is True
    found = []
    for source in sources:
        for number, (page, tags) in enumerate(zip(source.pages, _TAGS), 1):
            elements = [_element(result, page, mcid) for mcid in range(len(tags))]
            types = [result.dictionary(each).get("/S") for each in elements]
            found.append(Check(f"the elements of page {number} of {source.letter}",
                               marked and types == [f"/{tag}" for tag in tags]))
    return found


def _mapped(letter: str) -> Document:
    target = _TARGETS[letter]
    return _tagged(letter, [["Box", "Text"]], f"/RoleMap << /Box /{target} /Text /P >>")


def _map_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    roles = result.dictionary(result.dictionary(_root(result)).get("/RoleMap"))

    def standard(element: Optional[str]) -> Any:
        said = result.dictionary(element).get("/S")
        for _ in range(10):
            if said not in roles:
                break
            said = result.follow(roles[said])
        return said

    found = []
    for source in sources:
        for mcid, wanted in enumerate((_TARGETS[source.letter], "P")):
            element = _element(result, source.first_page, mcid)
            found.append(Check(f"{wanted} of {source.letter}", standard(element) == f"/{wanted}"))
    return found


def _table(letter: str) -> Document:
    """A table with a cell that says which cell is its heading, by an identifier."""
    document = Document(letter)
    (page,) = document.pages(1)
    root, table, row, heading, cell = [document.reserve() for _ in range(5)]
    for number, tag in enumerate(("TH", "TD")):
        document.draw(page, _marked(tag, number))
    document.enter(page, "/StructParents 0")
    document.define(table, f"<< /Type /StructElem /S /Table /P {root} /K {row} >>")
    document.define(row, f"<< /Type /StructElem /S /TR /P {table} /K [{heading} {cell}] >>")
    document.define(heading, f"<< /Type /StructElem /S /TH /P {row} /Pg {page} /K 0 /ID (h1) >>")
    document.define(cell, f"<< /Type /StructElem /S /TD /P {row} /Pg {page} /K 1 "
                          "/A << /O /Table /Headers [(h1)] >> >>")
    document.define(root, f"<< /Type /StructTreeRoot /K {table} /ParentTreeNextKey 1 "
                          f"/ParentTree << /Nums [0 [{heading} {cell}]] >> "
                          f"/IDTree << /Names [(h1) {heading}] >> >>")
    document.catalog = f"/MarkInfo << /Marked true >> /StructTreeRoot {root}"
    return document


def _table_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    identifiers = result.tree(result.dictionary(_root(result)).get("/IDTree"), "/Names")
    found = []
    for source in sources:
        heading, cell = (_element(result, source.first_page, mcid) for mcid in (0, 1))
        attributes = result.follow(result.dictionary(cell).get("/A"))
        if isinstance(attributes, list):
            attributes = result.follow(attributes[0])
        named = result.array(result.dictionary(attributes).get("/Headers"))
        found.append(Check(f"the heading in {source.letter}", heading is not None
                           and [identifiers.get(result.follow(each)) for each in named]
                           == [heading]))
    return found


def _language(result: Result, page: int) -> Any:
    """The language of the first text of a page: an element's, or else the document's."""
    said = result.nearest(_element(result, page, 0), "/P", "/Lang")
    return said or result.follow(result.catalog.get("/Lang"))


def _own_languages(result: Result, sources: Sequence[Source]) -> list[Check]:
    return [Check(f"the language of {source.letter}",
                  _language(result, source.first_page) == f"u:{_LANGUAGES[source.letter]}")
            for source in sources]


def _shared(letter: str) -> Document:
    document = Document(letter)
    document.pages(1)
    document.catalog = "/Lang (en-GB)"
    return document


def _described(letter: str) -> Document:
    return _tagged(letter, [["Figure"]], elements_have=f"/Alt (a picture of {letter})")


def _described_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    return [Check(f"the description in {source.letter}", result.follow(result.dictionary(
        _element(result, source.first_page, 0)).get("/Alt")) == f"u:a picture of {source.letter}")
        for source in sources]


_TAGS = [["H1", "P", "P"], ["P", "H2"]]
_TARGETS = {"A": "P", "B": "Figure", "C": "Sect"}

ROWS = [
    Row("Tags",
        "Each marked part of each page leads to its element, and each element hangs in the one "
        "tree of the outcome, which says that it is tagged.",
        three(lambda letter: _tagged(letter, _TAGS)), _tree_checks),
    Row("Descriptions of pictures", "The words that stand for a picture are those of its document.",
        three(_described), _described_checks),
    Row("Tags of a document's own",
        "Three documents use one name for a paragraph, a picture and a section (role map); each "
        "part is still what it was.", three(_mapped), _map_checks),
    Row("Cells and their headings",
        "Each table's cell finds the heading of its own table, although all headings have one "
        "identifier.", three(_table), _table_checks),
    Row("Languages of tagged documents", "Each document's text is in its own language.",
        three(lambda letter: _tagged(letter, [["P"]], catalog=f"/Lang ({_LANGUAGES[letter]})")),
        _own_languages),
    Row("A language that all documents share",
        "Where documents without tags are in one language, so is the outcome.", three(_shared),
        lambda result, _: [Check("the language",
                                 result.follow(result.catalog.get("/Lang")) == "u:en-GB")]),
]
