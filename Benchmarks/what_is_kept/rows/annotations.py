# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What hangs on pages beside links: notes, attached files, articles."""

from typing import Sequence

from ..builder import Document
from ..result import Result
from ..row import Check, Row, Source, three


def _notes(letter: str) -> Document:
    document = Document(letter)
    (page,) = document.pages(1)
    note, popup = document.reserve(), document.reserve()
    look = document.form("", "1 1 0 rg 0 0 20 20 re f", "20 20")
    document.annotate(page, f"/Subtype /Text /Rect [20 20 40 40] /Contents (question {letter}) "
                            f"/T (Ada) /NM (1) /Popup {popup} /AP << /N {look} >>", note)
    document.annotate(page, f"/Subtype /Popup /Rect [50 20 150 80] /Parent {note}", popup)
    document.annotate(page, f"/Subtype /Text /Rect [20 20 40 40] /Contents (answer {letter}) "
                            f"/T (Bob) /NM (2) /IRT {note} /AP << /N {look} >>")
    return document


def _note_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    found = []
    for source in sources:
        refs = result.annotation_refs(source.first_page)
        by_contents = {result.follow(result.dictionary(ref).get("/Contents")): ref for ref in refs}
        note = by_contents.get(f"u:question {source.letter}")
        answer = by_contents.get(f"u:answer {source.letter}")
        popup = result.dictionary(note).get("/Popup")
        found += [
            Check(f"the note of {source.letter}", note is not None),
            Check(f"its reply in {source.letter}",
                  note is not None and result.dictionary(answer).get("/IRT") == note),
            Check(f"its pop-up in {source.letter}", note is not None and popup in refs
                  and result.dictionary(popup).get("/Parent", note) == note),
        ]
    return found


def _attachment(letter: str) -> Document:
    document = Document(letter)
    (page,) = document.pages(1)
    file = document.add("<< /Type /EmbeddedFile /Subtype /text#2Fplain >>", _attached(letter))
    document.annotate(page, "/Subtype /FileAttachment /Rect [20 20 40 40] /Name /PushPin "
                            "/FS << /Type /Filespec /F (notes.txt) /UF (notes.txt) "
                            f"/EF << /F {file} >> >>")
    return document


def _attached(letter: str) -> bytes:
    return b"The file attached to " + letter.encode()


def _attachment_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    found = []
    for source in sources:
        files = [result.dictionary(each.get("/FS"))
                 for each in result.annotations(source.first_page, "/FileAttachment")]
        found.append(Check(f"the file of {source.letter}", any(
            result.follow(file.get("/F")) == "u:notes.txt"
            and result.data(result.dictionary(file.get("/EF")).get("/F"))
            == _attached(source.letter) for file in files)))
    return found


def _article(letter: str) -> Document:
    document = Document(letter)
    pages = document.pages(2)
    thread, *beads = [document.reserve() for _ in range(3)]
    document.define(thread, f"<< /Type /Thread /F {beads[0]} /I << /Title (Story) >> >>")
    for page, bead, other in zip(pages, beads, reversed(beads)):
        document.define(bead, f"<< /Type /Bead /T {thread} /N {other} /V {other} /P {page} "
                              "/R [20 20 180 240] >>")
        document.enter(page, f"/B [{bead}]")
    document.catalog = f"/Threads [{thread}]"
    return document


def _article_checks(result: Result, sources: Sequence[Source]) -> list[Check]:
    articles = []
    for ref in result.array(result.catalog.get("/Threads")):
        thread = result.dictionary(ref)
        beads = result.chain(thread.get("/F"), "/N")
        articles.append((result.follow(result.dictionary(thread.get("/I")).get("/Title")),
                         [result.page_index(result.dictionary(bead).get("/P")) for bead in beads]))
    return [Check(f"the article of {source.letter}",
                  ("u:Story", list(source.pages)) in articles) for source in sources]


ROWS = [
    Row("Notes, their replies and pop-ups",
        "Each note is on its page, its reply answers it, and its pop-up belongs to it.",
        three(_notes), _note_checks),
    Row("Files attached to pages",
        "Three files of one name, attached to a page each, come out with their own contents.",
        three(_attachment), _attachment_checks),
    Row("Articles",
        "Three articles of one title are listed, and each leads from the first page of its "
        "document to the second.", three(_article), _article_checks),
]
