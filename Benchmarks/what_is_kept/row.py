# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""A row of the table: documents to join, and what a user would look for in the outcome."""

from typing import Callable, NamedTuple, Sequence

from .builder import Document
from .result import Result

KEPT, PARTLY, LOST = "kept", "partly", "lost"


class Check(NamedTuple):
    """Something that a user would look for. Where one that is `essential` is not there, all is
    lost, whatever else is."""

    what: str
    found: bool
    essential: bool = False


class Source(NamedTuple):
    """One of the documents joined, and where its pages are in the outcome."""

    letter: str
    first_page: int
    original: Result

    @property
    def pages(self) -> range:
        return range(self.first_page, self.first_page + len(self.original.page_refs))


class Row(NamedTuple):
    name: str
    asked: str  # what has to be found for "kept", in a sentence
    documents: Callable[[], Sequence[Document]]
    checks: Callable[[Result, Sequence[Source]], list[Check]]
    twice: bool = False  # whether each file is listed twice
    changes: bool = False  # whether something is asked that the documents themselves do not have


def three(make: Callable[[str], Document]) -> Callable[[], Sequence[Document]]:
    """Three documents in which everything has the same names."""
    return lambda: [make(letter) for letter in "ABC"]


def one(make: Callable[[str], Document]) -> Callable[[], Sequence[Document]]:
    return lambda: [make("A")]


def verdict(checks: Sequence[Check]) -> str:
    if all(check.found for check in checks):
        return KEPT
    if any(check.essential and not check.found for check in checks):
        return LOST
    return PARTLY if any(check.found for check in checks) else LOST
