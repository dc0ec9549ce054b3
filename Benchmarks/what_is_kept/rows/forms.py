# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Forms: documents with fields of the same names, filled in differently."""

from typing import NamedTuple, Sequence

from ..builder import Document, Ref
from ..picture import looks_like
from ..result import Dictionary, Result
from ..row import Check, Row, Source, one, three

_NAMES = {"A": "Ada", "B": "Bob", "C": "Cyd"}


class Field(NamedTuple):
    """A field that can be reached from the form."""

    ref: str
    name: str  # with those of the fields above it
    widgets: list[str]


def _fields(result: Result) -> list[Field]:
    """The fields that the form leads to (ISO 32000-2, 12.7.4), except for those that only hold
    others together."""
    found = []
    waiting = [(ref, "") for ref in result.array(_form(result).get("/Fields"))]
    seen: set[str] = set()
    while waiting:
        ref, above = waiting.pop(0)
        if not isinstance(ref, str) or ref in seen:
            continue
        seen.add(ref)
        field = result.dictionary(ref)
        name = ".".join(each for each in (above, str(result.follow(field.get("/T", "")))[2:])
                        if each)
        kids = result.array(field.get("/Kids"))
        fields = [kid for kid in kids if "/T" in result.dictionary(kid)]
        waiting += [(kid, name) for kid in fields]
        if not fields:
            found.append(Field(ref, name, kids or [ref]))
    return found


def _form(result: Result) -> Dictionary:
    return result.dictionary(result.catalog.get("/AcroForm"))


def _fields_on(result: Result, source: Source) -> list[Field]:
    """The fields that have a widget on a page of a document, in the order of the widgets."""
    fields = _fields(result)
    found: list[Field] = []
    for page in source.pages:
        for ref in result.annotation_refs(page):
            found += [field for field in fields if ref in field.widgets and field not in found]
    return found


def _said(result: Result, field: Field, key: str) -> object:
    return result.nearest(field.ref, "/Parent", key)


def _text(document: Document, page: Ref, entries: str, value: str, at: int = 0) -> Ref:
    """A text field that shows its value, for the form's /Fields unless it has a parent."""
    look = document.form(f"/Font << /F1 {document.font} >>",
                         f"/Tx BMC BT /F1 12 Tf 2 5 Td ({value}) Tj ET EMC")
    return document.annotate(page, f"/Subtype /Widget /FT /Tx /V ({value}) {entries} /F 4 "
                                   f"/Rect [20 {20 + at} 120 {40 + at}] /AP << /N {look} >>")


def _set_form(document: Document, fields: Sequence[Ref], entries: str = "") -> Document:
    document.catalog += (f"/AcroForm << /Fields [{' '.join(map(str, fields))}] /DA (/F1 12 Tf 0 g) "
                         f"/DR << /Font << /F1 {document.font} >> >> {entries} >>")
    return document


def _different(letter: str) -> Document:
    """Fields of names that no other document has, one of them below another, on two pages."""
    document = Document(letter)
    first, second = document.pages(2)
    parent = document.reserve()
    child = _text(document, first, f"/T (name) /Parent {parent}", _NAMES[letter])
    document.define(parent, f"<< /T (person{letter}) /Kids [{child}] >>")
    later = _text(document, second, f"/T (remark{letter})", "none")
    return _set_form(document, [parent, later])


def _different_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    found = []
    for source in sources:
        names = [field.name for field in _fields_on(result, source)]
        found += [Check(f"`{wanted}`", wanted in names)
                  for wanted in (f"person{source.letter}.name", f"remark{source.letter}")]
    return found


def _same(letter: str) -> Document:
    document = Document(letter)
    (page,) = document.pages(1)
    return _set_form(document, [_text(document, page, "/T (name)", _NAMES[letter])])


def _same_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    found = []
    names = [field.name for field in _fields(result)]
    for source in sources:
        fields = _fields_on(result, source)
        found += [
            Check(f"the value in {source.letter}", [_said(result, field, "/V") for field in fields]
                  == [f"u:{_NAMES[source.letter[0]]}"]),
            Check(f"a field of its own in {source.letter}", len(fields) == 1
                  and names.count(fields[0].name) == 1 and len(fields[0].widgets) == 1)]
    return found


def _radio(letter: str) -> Document:
    """A group of three buttons, the last of them on the next page."""
    document = Document(letter)
    pages = document.pages(2)
    group = document.reserve()
    on, off = document.form("", "0 g 0 0 20 20 re f"), document.form("", "")
    chosen = {"A": "one", "B": "two", "C": "three"}[letter]
    kids = [document.annotate(
        page, f"/Subtype /Widget /Parent {group} /Rect [20 {at} 40 {at + 20}] /F 4 "
              f"/AS /{name if name == chosen else 'Off'} "
              f"/AP << /N << /{name} {on} /Off {off} >> >>")
        for page, at, name in ((pages[0], 20, "one"), (pages[0], 60, "two"),
                               (pages[1], 20, "three"))]
    document.define(group, f"<< /FT /Btn /Ff 49152 /T (choice) /V /{chosen} "
                           f"/Kids [{' '.join(map(str, kids))}] >>")
    return _set_form(document, [group])


def _radio_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    found = []
    names = [field.name for field in _fields(result)]
    for source in sources:
        fields = _fields_on(result, source)
        whole = len(fields) == 1 and len(fields[0].widgets) == 3
        chosen = {"A": "/one", "B": "/two", "C": "/three"}[source.letter]
        found += [
            Check(f"one group in {source.letter}", whole and names.count(fields[0].name) == 1),
            Check(f"its choice in {source.letter}",
                  [(state, _said(result, field, "/V"))
                   for page in source.pages for ref in result.annotation_refs(page)
                   for field in fields if ref in field.widgets
                   if (state := result.dictionary(ref).get("/AS")) != "/Off"]
                  == [(chosen, chosen)])]
    return found


def _calculated(letter: str) -> Document:
    document = Document(letter)
    (page,) = document.pages(1)
    script = "/AA << /C << /S /JavaScript /JS (event.value = 1;) >> >>"
    fields = [_text(document, page, f"/T ({name}{letter}) {script}", "1", at)
              for name, at in (("total", 0), ("tax", 40))]
    return _set_form(document, fields, f"/CO [{fields[1]} {fields[0]}]")


def _calculated_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    order = result.array(_form(result).get("/CO"))
    by_ref = {field.ref: field.name for field in _fields(result)
              if "/C" in result.dictionary(result.dictionary(field.ref).get("/AA"))}
    names = [by_ref.get(ref, "") for ref in order]
    return [Check(f"the order of {source.letter}",
                  [name for name in names if name.endswith(source.letter)]
                  == [f"tax{source.letter}", f"total{source.letter}"]) for source in sources]


_FONTS = {"A": "Helvetica", "B": "Times-Roman", "C": "Courier"}


def _fonts(letter: str) -> Document:
    """A field that says its font, and one that leaves that to the form."""
    document = Document(letter)
    (page,) = document.pages(1)
    fields = [_text(document, page, f"/T (own{letter}) /DA (/F1 10 Tf 0 g)", "own"),
              _text(document, page, f"/T (general{letter})", "general", 40)]
    document.font = document.add("<< /Type /Font /Subtype /Type1 "
                                 f"/BaseFont /{_FONTS[letter]} >>")
    return _set_form(document, fields)


def _font_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    form = _form(result)
    fonts = result.dictionary(result.dictionary(form.get("/DR")).get("/Font"))
    found = []
    for source in sources:
        by_name = {field.name: field for field in _fields_on(result, source)}
        for name in ("own", "general"):
            field = by_name.get(name + source.letter)
            words = str((field and _said(result, field, "/DA"))
                        or result.follow(form.get("/DA", ""))).removeprefix("u:").split()
            # The font and its size stand before the operator that sets them.
            name_of_font = words[words.index("Tf") - 2] if "Tf" in words[2:] else ""
            font = result.dictionary(fonts.get(name_of_font))
            found.append(Check(f"the font of `{name}{source.letter}`", field is not None
                               and font.get("/BaseFont") == f"/{_FONTS[source.letter]}"))
    return found


def _signed(letter: str) -> Document:
    document = Document(letter)
    (page,) = document.pages(1)
    look = document.form("", "0 0 1 rg 0 0 100 20 re f")
    signature = document.add("<< /Type /Sig /Filter /Adobe.PPKLite /SubFilter /adbe.pkcs7.detached "
                             f"/Name ({letter}) /ByteRange [0 20 40 20] /Contents <30820000> >>")
    field = document.annotate(page, f"/Subtype /Widget /FT /Sig /T (signature{letter}) /F 132 "
                                    f"/V {signature} /Rect [20 20 120 40] /AP << /N {look} >>")
    return _set_form(document, [field], "/SigFlags 3")


def _signed_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    append_only = int(result.follow(_form(result).get("/SigFlags", 0))) & 2
    found = [Check("the document may be changed", not append_only)]
    for source in sources:
        page = source.first_page
        claims = [widget for ref in result.annotation_refs(page)
                  if (widget := result.nearest(ref, "/Parent", "/V"))]
        found += [Check(f"the appearance in {source.letter}",
                        # mutool draws a mark of its own over a field that can be signed.
                        looks_like(result.poppler_pictures[page],
                                   source.original.poppler_pictures[0]), True),
                  Check(f"no claim in {source.letter}", not claims)]
    return found



ROWS = [
    Row("Fields",
        "The fields of three documents, on first and on later pages, can be reached from the form "
        "under their full names.", three(_different), _different_checks),
    Row("Fields of the same name",
        "Where three documents have a field of the same name, each keeps its own value, and "
        "filling in one changes no other.", three(_same), _same_checks),
    Row("A form listed twice", "Each copy has a field of its own with the value.",
        one(_same), _same_checks, twice=True),
    Row("Radio buttons",
        "In each of three documents, three buttons, one of them on the next page, are still one "
        "group of their own, with its choice.", three(_radio), _radio_checks),
    Row("Order of calculation", "The form says in which order the fields of each document are "
                                "calculated.", three(_calculated), _calculated_checks),
    Row("Fonts of fields",
        "What is typed into a field gets the font of its own document, although three documents "
        "call different fonts by one name.", three(_fonts), _font_checks),
    Row("Signatures",
        "The signature of each document is still seen on its page (by Poppler), but since the file "
        "is another now, nothing claims that it was signed, or forbids changes.", three(_signed),
        _signed_checks, changes=True),
]
