# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Links from page to page of one document, in various notations."""

from typing import Callable, Sequence

from ..builder import Document, Ref
from ..result import Dictionary, Place, Result
from ..row import Check, Row, Source, one, three

_LINK = "/Subtype /Link /Border [0 0 0]"


def _rect(number: int) -> str:
    """Links of a page lie one above the other."""
    return f"/Rect [20 {20 + 40 * number} 180 {50 + 40 * number}]"


def _goto(destination: str) -> str:
    return f"/A << /S /GoTo /D {destination} >>"


def _with_links(letter: str, *links: tuple[int, str], catalog: str = "") -> Document:
    """A document of three pages, with links on the pages given; in their entries and in those of
    the catalog, P1 to P3 are the pages."""
    document = Document(letter)
    pages = document.pages(3)

    def entries(text: str) -> str:
        for number, page in enumerate(pages, 1):
            text = text.replace(f"P{number}", str(page))
        return text

    for number, (page, link) in enumerate(links):
        document.annotate(pages[page - 1], f"{_LINK} {_rect(number)} {entries(link)}")
    document.catalog = entries(catalog)
    return document


def _lead(result: Result, page: int) -> list[Place]:
    """Where the links of a page lead, those that lead somewhere."""
    return [place for each in result.annotations(page, "/Link")
            if (place := result.leads(each)) is not None]


def _expect(*links: tuple[str, int, int]) -> Callable[[Result, Sequence[Source]], list[Check]]:
    """Checks that in each document a link on the one page leads to the other, from 1."""
    def checks(result: Result, sources: Sequence[Source]) -> list[Check]:
        found = []
        for source in sources:
            for what, start, end in links:
                places = _lead(result, source.first_page + start - 1)
                found.append(Check(f"{what} in {source.letter}", any(
                    place.page == source.first_page + end - 1 for place in places)))
        return found
    return checks


def _views(result: Result, sources: Sequence[Source]) -> list[Check]:
    found = []
    for source in sources:
        for wanted in (["/XYZ", 10, 200, 1.5], ["/FitH", 150], ["/FitR", 10, 20, 150, 160]):
            found.append(Check(f"`{wanted[0][1:]}` in {source.letter}", any(
                place.page == source.first_page and _same_view(place.view, wanted)
                for place in _lead(result, source.first_page + 1))))
    return found


def _same_view(view: Sequence[object], wanted: Sequence[object]) -> bool:
    return len(view) == len(wanted) and all(
        one == other or (isinstance(one, (int, float)) and isinstance(other, (int, float))
                         and abs(one - other) < 0.5) for one, other in zip(view, wanted))


def _action_chain(result: Result, sources: Sequence[Source]) -> list[Check]:
    found = []
    for source in sources:
        links = result.annotations(source.first_page + 2, "/Link")
        following = [result.dictionary(result.dictionary(each.get("/A")).get("/Next"))
                     for each in links]
        for what, places, page in (
                ("the action", [result.leads(each) for each in links], 0),
                ("the next action", [result.place(each.get("/D")) for each in following], 1)):
            found.append(Check(f"{what} in {source.letter}", any(
                place is not None and place.page == source.first_page + page
                for place in places)))
    return found


def _button(letter: str) -> Document:
    document = Document(letter)
    first, second = document.pages(2)
    fields = []
    for number, destination in enumerate((f"[{first} /Fit]", "(chapter)")):
        look = document.form("", "0.8 g 0 0 100 20 re f")
        fields.append(document.annotate(
            second, f"/Subtype /Widget /FT /Btn /Ff 65536 /T (button {letter}{number}) "
                   f"{_rect(number)} {_goto(destination)} /AP << /N {look} >>"))
    document.catalog = (f"/AcroForm << /Fields [{_list(fields)}] >> "
                        f"/Names << /Dests << /Names [(chapter) [{first} /Fit]] >> >>")
    return document


def _list(refs: Sequence[Ref]) -> str:
    return " ".join(map(str, refs))


def _buttons_lead(result: Result, sources: Sequence[Source]) -> list[Check]:
    found = []
    for source in sources:
        buttons = result.annotations(source.first_page + 1, "/Widget")
        for number, what in enumerate(("explicit", "by name")):
            place = result.leads(buttons[number]) if number < len(buttons) else None
            found.append(Check(f"{what} in {source.letter}",
                               place is not None and place.page == source.first_page))
    return found


def _dead() -> Sequence[Document]:
    """A document whose links lead nowhere, and one in which what they name exists."""
    dead = _with_links("A", (1, "/Dest (chapter)"), (1, _goto("/chapter")), (1, "/Dest [4 /Fit]"))
    stray = dead.add("<< /Type /Page /MediaBox [0 0 200 300] >>")  # in no page tree
    dead.annotate(dead.page_refs[0], f"{_LINK} {_rect(3)} /Dest [{stray} /Fit]")
    alive = _with_links("B", (1, "/Dest (chapter)"), catalog=_NAMES + " " + _OLD_NAMES)
    return [dead, alive]


def _leads_nowhere(result: Result, sources: Sequence[Source]) -> list[Check]:
    alive = [_at(result, each) for source in sources if source.letter == "A"
             for each in result.annotations(source.first_page, "/Link")
             if result.leads(each) is not None]
    return [Check(f"the link to {what}", number not in alive)
            for number, what in enumerate(("a name", "a name, old notation", "a page number",
                                           "a page in no page tree"))
            ] + [Check("no page is added", len(result.page_refs) == sources[-1].pages.stop, True)]


def _at(result: Result, link: Dictionary) -> int:
    """Which of a page's links it is, from where it is."""
    return round((result.follow(result.array(link.get("/Rect"))[1]) - 20) / 40)


def _web(letter: str) -> Document:
    return _with_links(letter, (1, f"/A << /S /URI /URI (https://example.org/{letter}) >>"))


def _web_links(result: Result, sources: Sequence[Source]) -> list[Check]:
    return [Check(f"the link of {source.letter}", any(
        result.follow(result.dictionary(each.get("/A")).get("/URI"))
        == f"u:https://example.org/{source.letter}"
        for each in result.annotations(source.first_page, "/Link"))) for source in sources]


_NAMES = ("/Names << /Dests << /Names [(appendix) << /D [P3 /Fit] >> (chapter) [P2 /XYZ 0 300 0]] "
          ">> >>")
_OLD_NAMES = "/Dests << /chapter [P2 /Fit] /appendix << /D [P3 /Fit] >> >>"
_THERE_AND_BACK = ((1, "/Dest [P3 /Fit]"), (3, "/Dest [P1 /Fit]"))

ROWS = [
    Row("Links within a document",
        "In each of three documents, a link on the first page leads to the third, and one on the "
        "third to the first.",
        three(lambda letter: _with_links(letter, *_THERE_AND_BACK)),
        _expect(("forwards", 1, 3), ("back", 3, 1))),
    Row("What a link shows of its page",
        "The place and the magnification (`XYZ`), the width (`FitH`) and the part of the page "
        "(`FitR`) that links ask for are still the same.",
        three(lambda letter: _with_links(letter, (2, "/Dest [P1 /XYZ 10 200 1.5]"),
                                         (2, "/Dest [P1 /FitH 150]"),
                                         (2, _goto("[P1 /FitR 10 20 150 160]")))), _views),
    Row("Named destinations",
        "Three documents use the same names (name tree); each link leads to what its own document "
        "means by them.",
        three(lambda letter: _with_links(letter, (1, "/Dest (chapter)"), (2, _goto("(appendix)")),
                                         catalog=_NAMES)),
        _expect(("`chapter`", 1, 2), ("`appendix`", 2, 3))),
    Row("Named destinations, old notation",
        "The same with names in the catalog's `Dests` dictionary.",
        three(lambda letter: _with_links(letter, (1, "/Dest /chapter"), (2, _goto("/appendix")),
                                         catalog=_OLD_NAMES)),
        _expect(("`chapter`", 1, 2), ("`appendix`", 2, 3))),
    Row("Actions, and those that follow them",
        "The action of a link on the last page leads to the first page, the one in its `Next` to "
        "the second.",
        three(lambda letter: _with_links(
            letter, (3, "/A << /S /GoTo /D [P1 /Fit] /Next << /S /GoTo /D [P2 /Fit] >> >>"))),
        _action_chain),
    Row("Links by page number",
        "Links that say a page's number, as if to another file, lead to that page of their own "
        "document.",
        three(lambda letter: _with_links(letter, (1, "/Dest [2 /Fit]"), (2, _goto("[0 /Fit]")))),
        _expect(("forwards", 1, 3), ("back", 2, 1))),
    Row("Links of buttons",
        "A click on the buttons of a second page leads to the first page of their document, "
        "explicitly and by name.", three(_button), _buttons_lead),
    Row("A file listed twice: links",
        "Each copy's links lead into that copy, explicitly and by name.",
        one(lambda letter: _with_links(letter, *_THERE_AND_BACK, (2, "/Dest (appendix)"),
                                       catalog=_NAMES)),
        _expect(("forwards", 1, 3), ("back", 3, 1), ("by name", 2, 3)), twice=True),
    Row("Dead links stay dead",
        "Links to names, numbers and pages that their document does not have lead nowhere, "
        "although another document has them; no page appears that was in none. (Where links are "
        "lost, so are dead ones.)", _dead, _leads_nowhere),
    Row("Links to the web", "Each link still has its address.", three(_web), _web_links),
]
