# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The document that says what was found."""

import textwrap
from typing import NamedTuple, Sequence, Union

from .row import KEPT, LOST, PARTLY, Check, Row, verdict
from .tools import Tool

_FAILED = "failed"
_SYMBOLS = {KEPT: "●", PARTLY: "◐", LOST: "○", _FAILED: "✕"}

Outcome = Union[list[Check], str]  # what was looked for, or why there was nothing to look at


class Judged(NamedTuple):
    """A row with what came of it, in the order of the tools."""

    row: Row
    outcomes: list[Outcome]


Sections = Sequence[tuple[str, Sequence[Judged]]]

_INTRODUCTION = """\
A page is more than what is printed of it: it leads to other pages, it can be filled in, it has
layers, and it can be read aloud. This table says what of that is still there when several
documents have been joined, by Quirebind and by other tools, each called in the plainest way that
its manual shows. Where nothing else is said, three documents are joined that use the same names
for everything.

[`Benchmarks/what-is-kept`](../Benchmarks/what-is-kept) writes this page. It makes the documents,
has them joined, reads with qpdf what came out, and looks at it with mutool and Poppler; none of
Quirebind's own code has a say."""


def said(outcome: Outcome) -> str:
    """What came of a row, in a word."""
    return _FAILED if isinstance(outcome, str) else verdict(outcome)


def missing(outcome: Outcome) -> str:
    """What was not found."""
    if isinstance(outcome, str):
        return outcome
    return "; ".join(check.what for check in outcome if not check.found)


def text(tools: Sequence[Tool], absent: Sequence[str], readers: str, sections: Sections) -> str:
    """The document, in Markdown."""
    versions = ", ".join(f"{tool.name} {tool.version}" for tool in tools)
    parts = ["# What is kept", _INTRODUCTION, _table(tools, sections), _key(), _notes(sections),
             _shortcomings(sections), "## Versions", _fill(f"{versions}. Read with {readers}.")]
    if absent:
        parts.append(_fill(f"Left out, since they are not installed: {', '.join(absent)}."))
    return "\n\n".join(parts) + "\n"


def _table(tools: Sequence[Tool], sections: Sections) -> str:
    lines = ["| | " + " | ".join(tool.name for tool in tools) + " |",
             "|---" + "|:-:" * len(tools) + "|"]
    for title, rows in sections:
        lines.append(f"| **{title}** |" + " |" * len(tools))
        for row, outcomes in rows:
            symbols = " | ".join(_SYMBOLS[said(outcome)] for outcome in outcomes)
            lines.append(f"| {row.name} | {symbols} |")
    return "\n".join(lines)


def _key() -> str:
    return _fill(f"{_SYMBOLS[KEPT]} kept, {_SYMBOLS[PARTLY]} kept in part, {_SYMBOLS[LOST]} lost, "
                 f"{_SYMBOLS[_FAILED]} the tool wrote no file that can be read.")


def _notes(sections: Sections) -> str:
    lines = ["## What is asked in each row"]
    for title, rows in sections:
        lines += ["", f"### {title}", ""]
        lines += [_item(f"**{row.name}.** {row.asked}") for row, _ in rows]
    return "\n".join(lines)


_OF_WHOLE_DOCUMENTS = (
    "Nor what a document says of itself as a whole, which the table does not ask about: what happens "
    "when it is opened or closed, scripts that belong to no page or field, how its window should "
    "look, its title, author and other metadata, which extensions of the format it uses, and that it "
    "is a portfolio.")

_WHERE_JOINED = (
    "Nor, where documents are joined: forms that are made anew when they are opened (XFA), other "
    "than the fields that such a file also has as others do; a second configuration of layers; "
    "output intents that differ; that a document has tags, beside one that has none, though the "
    "tags are there. Where one form wants its fields drawn anew (`NeedAppearances`), readers draw "
    "those of all documents anew. Scripts that make names of fields while they run, name fields to "
    "remove, submit or export them, or reset all fields, and buttons that reset or submit all "
    "fields but some, may mean those of other documents; so may fields of one name that their forms "
    "do not list, and fonts that a form names and does not have. Scripts that turn to a page by its "
    "number or by the name of a destination turn to another one, or to none.")


def _shortcomings(sections: Sections) -> str:
    """What the first tool does not keep, however little."""
    lines = [_item(f"{row.name}: {missing(outcomes[0])}." if said(outcomes[0]) == PARTLY
                   else f"{row.name}.")
             for _, rows in sections for row, outcomes in rows if said(outcomes[0]) != KEPT]
    return "\n".join(["## What Quirebind does not keep", ""] + (lines or ["Nothing of the above."]) +
                     ["", _fill(_OF_WHOLE_DOCUMENTS), "", _fill(_WHERE_JOINED)])


def _fill(paragraph: str) -> str:
    return textwrap.fill(paragraph, 100, break_long_words=False, break_on_hyphens=False)


def _item(paragraph: str) -> str:
    return textwrap.fill(paragraph, 100, initial_indent="- ", subsequent_indent="  ",
                         break_long_words=False, break_on_hyphens=False)
