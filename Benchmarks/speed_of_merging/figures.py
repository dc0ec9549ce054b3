# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What the runs come to."""

import statistics
from typing import Any, NamedTuple, Optional, Sequence

from .runs import DISK, MEMORY, Run
from .tools import FLOOR, OURS


class Figures(NamedTuple):
    """One tool's medians over its rounds, with the output in memory where there is a place."""

    tool: str
    cpu: float
    wall: float
    wall_on_disk: Optional[float]
    peak: int
    size: int
    objects: int
    failure: str
    stopped: bool


class Bound(NamedTuple):
    """How much CPU the fastest peer takes; at least, where every peer was stopped."""

    cpu: float
    tool: str
    at_least: bool


class Result(NamedTuple):
    """All that was found with one workload."""

    workload: str
    about: str
    files: int
    size: int
    pages: int
    runs: list[Run]

    def figures(self) -> list[Figures]:
        """Of each tool, in the order of their turns."""
        names = dict.fromkeys(run.tool for run in self.runs)
        return [_figures(name, [run for run in self.runs if run.tool == name]) for name in names]

    def of(self, tool: str) -> Optional[Figures]:
        """Of that tool, unless it failed."""
        return next((figures for figures in self.figures()
                     if figures.tool == tool and not figures.failure), None)

    def fastest_peer(self) -> Optional[Bound]:
        """Of those that brought all pages; if none was fast enough to do so, of those stopped."""
        peers = [figures for figures in self.figures() if figures.tool not in (OURS, FLOOR)]
        whole = [figures for figures in peers if not figures.failure]
        # A peer that failed might have been faster had it not; nothing can be said of it.
        # Neither can be said how much CPU a stopped script's own program had taken.
        late = [figures for figures in peers
                if figures.stopped and figures.cpu > figures.wall / 2]
        if not whole and not late:
            return None
        best = min(whole or late, key=lambda figures: figures.cpu)
        return Bound(best.cpu, best.tool, not whole)

    def as_json(self) -> dict[str, Any]:
        return {**self._asdict(), "runs": [run._asdict() for run in self.runs]}


def from_json(data: dict[str, Any]) -> Result:
    return Result(**{**data, "runs": [Run(**run) for run in data["runs"]]})


def _figures(tool: str, runs: Sequence[Run]) -> Figures:
    measured = [run for run in runs if run.place == MEMORY] or runs
    on_disk = [run.wall for run in runs if run.place == DISK]
    failed = [run for run in runs if run.failure]
    return Figures(tool, statistics.median(run.cpu for run in measured),
                   statistics.median(run.wall for run in measured),
                   statistics.median(on_disk) if on_disk else None,
                   max(run.peak for run in measured), measured[-1].size, measured[-1].objects,
                   failed[0].failure if failed else "", any(run.stopped for run in runs))
