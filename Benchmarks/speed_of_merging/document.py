# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The document that says what was found."""

import textwrap

from . import table
from .goals import all_goals
from .session import Session
from .tools import CAT, PEERS
from .window import STARTS

_INTRODUCTION = """\
What joining documents costs, with Quirebind and with other tools, each called in the plainest way
that its manual shows. `cat`, which copies the same bytes and nothing more, is the floor: there is
no joining documents without that."""

_HOW = """\
[`Benchmarks/speed`](../Benchmarks/speed) writes this page. It makes the documents itself, except
for the mixed ones, which are real documents that Quirebind, qpdf and mutool all join without a word
of complaint. All sources are read once before anything is measured, so that nobody waits for the
disk; then all tools have their turn, one after the other, {rounds}, and the medians are given. From
the second time on, a tool that takes less than 3 seconds does the same once more just before, so
that none has to pay for what another left behind. Once a tool has taken {limit:g} seconds in all, it
has no more turns."""

_COLUMNS = """\
CPU is the time of the processor, for the program and for the system on its behalf. "Of cat" is how
many times as much that is as for cat; "of the fastest peer", what part of the CPU of the fastest of
the other tools (1/8.0: an eighth). {places} Peak memory is what was resident at the most, programs
and libraries included; less than the 10 MB of the process that starts them cannot be told. A tool
that fails, loses pages (as qpdf counts them) or is stopped after {limit:g} seconds is never the
fastest."""

_IN_MEMORY = """\
Outputs go into a file system in memory (tmpfs); "on disk" is the time it takes when the output goes
to the disk and, as Quirebind always does, is waited for until it is safely there."""
_ON_DISK = "There was no file system in memory: all outputs went to the disk."

_WINDOW = """\
What somebody waits for at the window, on a virtual display of X11: {starts} starts of the program and
one walk through its views, {rounds}. Given are the median of the medians of all rounds, the slowest of
all, and the longest stall: for how long the main thread was busy with one event and looked at no other.
What is drawn counts once it has been handed to the display; for the start, whose clock runs from the
moment the process is made, once the screen shows it. "The helper" is the process that draws pages; the
program starts it once its window shows. Until a page is sharp, which is when it has as many pixels as
the screen, its picture is white or stretched; a window that is being resized waits 90 ms for the next
step before it has pages drawn anew."""


def text(session: Session, plot: str) -> str:
    """The document, in Markdown, with the picture of that name."""
    how = _fill(_HOW.format(rounds=_times(session.rounds), limit=session.limit))
    columns = _fill(_COLUMNS.format(places=_IN_MEMORY if session.memory else _ON_DISK,
                                    limit=session.limit))
    parts = ["# Speed", _fill(_INTRODUCTION), f"![CPU time of each tool]({plot})", how]
    if session.factor != 1:
        parts.append(f"All sizes are {session.factor:g} of the full ones. This is a trial, not a "
                     "measurement.")
    parts += ["## Goals", table.of_goals(all_goals(session.results)), "## Results", columns,
              *map(table.of_result, session.results), *_window(session), "## What it was measured on",
              _items(session.machine), "## The tools", _items(_tools(session))]
    if rested := _not_asked(session):
        parts.append("Not asked everywhere:")
        parts.append(_items(rested))
    if session.absent:
        parts.append(f"Not installed, and left out: {', '.join(session.absent)}.")
    return "\n\n".join(parts) + "\n"


def _window(session: Session) -> list[str]:
    if not session.window:
        return []
    rounds = len({measure.round for measure in session.window})
    return ["## The window", _fill(_WINDOW.format(starts=STARTS, rounds=_times(rounds))),
            table.of_window(session.window)]


def _not_asked(session: Session) -> dict[str, str]:
    """The workloads of which some peers, but not all, had no turn, and these."""
    peers = list(session.versions)
    missing = {}
    for result in session.results:
        asked = {figures.tool for figures in result.figures()}
        if asked.intersection(peers) and not asked.issuperset(peers):
            missing[result.workload] = ", ".join(name for name in peers if name not in asked)
    return missing


def _tools(session: Session) -> dict[str, str]:
    shown = {tool.name: tool.shown for tool in [*PEERS, CAT]}
    return {"Quirebind (this tree)": "`merge-pdfs OUT IN...`; to open files, `open-files IN...`",
            **{f"{name} {version}": f"`{shown[name]}`"
               for name, version in session.versions.items()}}


def _times(rounds: int) -> str:
    return "once" if rounds == 1 else f"{rounds} times"


def _items(entries: dict[str, str]) -> str:
    return "\n".join(f"- {name}: {value}" for name, value in entries.items())


def _fill(paragraph: str) -> str:
    return textwrap.fill(" ".join(paragraph.split()), 100, break_long_words=False,
                         break_on_hyphens=False)
