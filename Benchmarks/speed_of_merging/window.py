# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What somebody waits for at the window of the program, on a virtual desktop."""

import json
import statistics
import subprocess
import sys
from pathlib import Path
from typing import NamedTuple, Optional, Sequence

from . import workloads
from .sources import provide
from .tools import SYSTEM_PYTHON

STARTS = 3  # of the program in a round
_DESKTOP = Path(__file__).with_name("virtual_desktop.py")

# All that is measured, by the names that the programs give it, in the order of the table.
_ABOUT = {
    "start": "start of the program, until its first frame shows",
    "adding": "adding {files}, until the list shows them",
    "first-page-cold": "selecting a document, until its first page is sharp; the helper not started",
    "first-page": "the same, the helper started",
    "scrolling": "a page down in {document}, until it is drawn",
    "scrolling-sharp": "the 20th page down on end, until the page is sharp",
    "resizing": "making the window larger or smaller by 8 x 4, until it is drawn",
    "resizing-sharp": "the 20th time on end, until the page is sharp",
}


class Measure(NamedTuple):
    """What was found of one thing in one round, or in all of them. Milliseconds."""

    name: str
    about: str
    round: int
    median: float
    slowest: float
    stall: Optional[float]  # the longest; nothing where it was counted to another thing


def measure(build: Path, work: Path, factor: float, rounds: int) -> list[Measure]:
    """That many rounds of what the programs of a build do; nothing where that cannot be measured."""
    program, first_frame, walk = (build / name for name in (
        "Quirebind/quirebind", "Benchmarks/first-frame", "Benchmarks/window-walk"))
    for needed in (program, first_frame, walk):
        if not needed.exists():
            return _left_out(f"{needed} has not been built")
    files, book = (provide(work / shown.folder, shown.make, shown.only)
                   for shown in workloads.shown(factor))
    files.warm()
    book.warm()
    start = [str(first_frame), str(program)]
    walked = [str(walk), str(files.folder), str(len(files.names)), str(book.folder / book.names[0])]
    # The very first start is not like any other: it reads the toolkit from the disk.
    commands = [start] + [*[start] * STARTS, walked] * rounds
    done = subprocess.run([SYSTEM_PYTHON, str(_DESKTOP)], input=json.dumps(commands), text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    if done.returncode != 0:
        return _left_out("; ".join(done.stderr.strip().split("\n")[-2:]))
    outputs = json.loads(done.stdout)[1:]
    each = STARTS + 1
    return [measure for number in range(rounds)
            for measure in _round("".join(outputs[number * each:(number + 1) * each]), number,
                                  factor)]


def summaries(measures: Sequence[Measure]) -> list[Measure]:
    """Of each thing, what all rounds come to."""
    names = dict.fromkeys(measure.name for measure in measures)
    return [_summary([measure for measure in measures if measure.name == name]) for name in names]


def _summary(rounds: Sequence[Measure]) -> Measure:
    stalls = [measure.stall for measure in rounds if measure.stall is not None]
    return rounds[0]._replace(median=statistics.median(measure.median for measure in rounds),
                              slowest=max(measure.slowest for measure in rounds),
                              stall=max(stalls, default=None))


def _round(output: str, number: int, factor: float) -> list[Measure]:
    """From lines of a name and milliseconds each."""
    times: dict[str, list[float]] = {}
    for line in output.splitlines():
        name, value = line.split()
        times.setdefault(name, []).append(float(value))
    files, document = (shown.about for shown in workloads.shown(factor))
    return [Measure(name, about.format(files=files, document=document), number,
                    statistics.median(times[name]), max(times[name]),
                    max(times.get(f"{name}.stall", []), default=None))
            for name, about in _ABOUT.items()]


def _left_out(reason: str) -> list[Measure]:
    print(f"{reason}; the window is left out", file=sys.stderr)
    return []
