# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Layers (optional content): documents with layers of the same names, some shown, some hidden."""

from typing import Any, Sequence

from ..builder import Document, Ref
from ..picture import looks_like
from ..result import Dictionary, Result
from ..row import Check, Row, Source, three

_RED = "1 0 0 rg 20 20 160 80 re f"
_BLUE = "0 0 1 rg 20 120 160 80 re f"


def _layered(letter: str, nested: bool = False) -> Document:
    """A page with a red and a blue rectangle on a layer each. In each document, other ones are
    hidden, and said to be so in another way."""
    document, notes, plan = _groups(letter, nested)
    document.draw(document.page_refs[0],
                  f"/OC /Notes BDC {_RED} EMC /OC /Plan BDC {_BLUE} EMC",
                  f"/Properties << /Notes {notes} /Plan {plan} >>")
    return document


def _groups(letter: str, nested: bool = False) -> tuple[Document, Ref, Ref]:
    document = Document(letter)
    document.pages(1)
    notes, plan = (document.add(f"<< /Type /OCG /Name ({name}) >>") for name in ("Notes", "Plan"))
    state = {"A": f"/OFF [{notes}]", "B": f"/OFF [{plan}]",
             "C": f"/BaseState /OFF /ON [{notes}]"}[letter]
    order = f"[(Views {letter}) {notes} [{plan}]]" if nested else f"{notes} {plan}"
    document.catalog = (f"/OCProperties << /OCGs [{notes} {plan}] /D << /Order [{order}] {state} "
                        f"/RBGroups [[{notes} {plan}]] >> >>")
    return document, notes, plan


def _members(letter: str) -> Document:
    """A red rectangle that is shown where a layer is not, and a blue one by an expression."""
    document, notes, plan = _groups(letter)
    # Trap: Poppler asks for the policy only where there is an array.
    not_notes = f"<< /Type /OCMD /OCGs [{notes}] /P /AllOff >>"
    both = (f"<< /Type /OCMD /OCGs [{notes} {plan}] /P /AllOn "
            f"/VE [/Or [/And {notes} {plan}] [/Not {plan}]] >>")
    document.draw(document.page_refs[0],
                  f"/OC /NotNotes BDC {_RED} EMC /OC /Both BDC {_BLUE} EMC",
                  f"/Properties << /NotNotes {document.add(not_notes)} "
                  f"/Both {document.add(both)} >>")
    return document


def _properties(result: Result, page: int) -> list[Any]:
    """What the content of a page belongs to."""
    resources = result.dictionary(result.inherited(page, "/Resources"))
    return list(result.dictionary(resources.get("/Properties")).values())


def _groups_on(result: Result, page: int) -> dict[str, str]:
    """The layers that the content of a page is on, by name."""
    return {str(result.follow(result.dictionary(ref).get("/Name"))): ref
            for ref in _properties(result, page)
            if result.dictionary(ref).get("/Type") == "/OCG"}


def _config(result: Result) -> tuple[list[Any], Dictionary]:
    """All layers, and how they are shown at first."""
    layers = result.dictionary(result.catalog.get("/OCProperties"))
    return result.array(layers.get("/OCGs")), result.dictionary(layers.get("/D"))


def _flat(result: Result, value: Any) -> list[Any]:
    """What is anywhere in an array of arrays."""
    found, waiting = [], [value]
    while waiting and len(found) < 1000:
        each = waiting.pop()
        parts = each if isinstance(each, list) else result.array(each)
        if parts:
            waiting += reversed(parts)
        else:
            found.append(each)
    return found


def _listed(result: Result, sources: Sequence[Source]) -> list[Check]:
    groups, config = _config(result)
    order = _flat(result, config.get("/Order"))
    found = []
    for source in sources:
        on_page = _groups_on(result, source.first_page)
        for name in ("Notes", "Plan"):
            refs = [ref for said, ref in on_page.items() if said.startswith(f"u:{name}")]
            found.append(Check(f"{name} of {source.letter}", any(
                ref in groups and ref in order for ref in refs)))
    return found


def _hidden(result: Result, sources: Sequence[Source]) -> list[Check]:
    return [Check(f"{reader}'s picture of {source.letter}",
                  looks_like(pictures[source.first_page], original[0]))
            for source in sources
            for reader, pictures, original in (
                ("mutool", result.pictures, source.original.pictures),
                ("Poppler", result.poppler_pictures, source.original.poppler_pictures))]


def _member_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    groups, _ = _config(result)
    found = []
    for source in sources:
        page = source.first_page
        memberships = [each for ref in _properties(result, page)
                       if (each := result.dictionary(ref)).get("/Type") == "/OCMD"]
        policy = [each for each in memberships if each.get("/P") == "/AllOff"
                  and set(_flat(result, each.get("/OCGs"))) & set(groups)]
        parts = [_flat(result, each["/VE"]) for each in memberships if "/VE" in each]
        # Poppler's picture: mutool does not calculate expressions.
        found += [Check(f"the picture of {source.letter}", looks_like(
                      result.poppler_pictures[page], source.original.poppler_pictures[0])),
                  Check(f"`AllOff` follows a listed layer in {source.letter}", bool(policy)),
                  Check(f"the expression follows listed layers in {source.letter}", any(
                      each[:2] == ["/Or", "/And"] and each[4] == "/Not"
                      and {each[2], each[3], each[5]} <= set(groups)
                      for each in parts if len(each) == 6))]
    return found


def _order_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    groups, config = _config(result)
    labelled = {}  # what stands below a label
    waiting = [result.array(config.get("/Order"))]
    while waiting:
        parts = waiting.pop()
        if parts and isinstance(label := result.follow(parts[0]), str):
            labelled[label] = parts[1:]
        waiting += [array for part in parts if (array := result.array(part))]
    radio = [set(result.array(each)) for each in result.array(config.get("/RBGroups"))]
    found = []
    for source in sources:
        on_page = _groups_on(result, source.first_page)
        own = [next((ref for said, ref in on_page.items() if said.startswith(f"u:{name}")), None)
               for name in ("Notes", "Plan")]
        below = labelled.get(f"u:Views {source.letter}", [])
        found += [Check(f"the order of {source.letter}", own[0] in groups and len(below) == 2
                        and below[0] == own[0] and result.array(below[1]) == [own[1]]),
                  Check(f"one at a time in {source.letter}",
                        own[0] in groups and set(own) in radio)]
    return found


ROWS = [
    Row("Layers are listed",
        "The layers of three documents, which have the same names, are all in the list of layers, "
        "and what is drawn on them still is.", three(_layered), _listed),
    Row("Hidden layers stay hidden",
        "Every page looks as in its own document, to mutool and to Poppler.", three(_layered),
        _hidden),
    Row("What is shown depending on layers",
        "Content shown where layers are hidden, or as an expression says, looks the same and still "
        "follows layers of the list.", three(_members), _member_checks),
    Row("Order of layers, and one at a time",
        "Each document's layers are listed below its heading, one below the other, and still only "
        "one of them can be shown at a time.",
        three(lambda letter: _layered(letter, nested=True)), _order_checks),
]
