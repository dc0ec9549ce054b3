# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Tables of what was found, in Markdown, which can be read as it is, too."""

from typing import Optional, Sequence

from .figures import Bound, Figures, Result
from .goals import Goal
from .window import Measure, summaries

_HEADINGS = ["tool", "CPU", "of cat", "of the fastest peer", "wall", "on disk", "peak memory",
             "output", "of the sources"]


def of_result(result: Result) -> str:
    """One workload: a line for each tool."""
    floor, peer = result.of("cat"), result.fastest_peer()
    rows = [_row(figures, result, floor, peer) for figures in result.figures()]
    return "\n".join([f"### {result.workload}", "", f"{_sentence(result)}", "",
                      _aligned([_HEADINGS, *rows], left=1)])


def of_goals(goals: Sequence[Goal]) -> str:
    """All goals, met or not."""
    rows = [[goal.about, goal.asked, goal.measured or "not measured",
             "" if not goal.measured else "yes" if goal.met else "**no**"] for goal in goals]
    return _aligned([["what", "goal", "measured", "met"], *rows], left=4)


def of_window(measures: Sequence[Measure]) -> str:
    """The window: a line for each thing that it did."""
    rows = [[measure.about, seconds(measure.median / 1000), seconds(measure.slowest / 1000),
             seconds(measure.stall / 1000) if measure.stall is not None else ""]
            for measure in summaries(measures)]
    return _aligned([["what", "median", "slowest", "longest stall"], *rows], left=1)


def _sentence(result: Result) -> str:
    pages = f"; {result.pages:,} pages" if result.pages != result.files else ""
    return f"{result.about[0].upper()}{result.about[1:]}; {megabytes(result.size)}{pages}."


def _row(figures: Figures, result: Result, floor: Optional[Figures],
         peer: Optional[Bound]) -> list[str]:
    if figures.failure:
        return [figures.tool, figures.failure, *[""] * (len(_HEADINGS) - 2)]
    share = figures.cpu / peer.cpu if peer else None
    bound = "< " if peer and peer.at_least else ""
    return [
        figures.tool,
        seconds(figures.cpu),
        f"{figures.cpu / floor.cpu:.2f} x" if floor else "",
        f"{bound}1/{1 / share:.1f}" if share and share < 0.95 else f"{share:.2f}" if share else "",
        seconds(figures.wall),
        seconds(figures.wall_on_disk) if figures.wall_on_disk is not None else "",
        megabytes(figures.peak),
        megabytes(figures.size) if figures.objects or figures.tool == "cat" else "",
        f"{100 * figures.size / result.size:.1f} %" if figures.objects else "",
    ]


def seconds(value: float) -> str:
    return f"{1000 * value:.1f} ms" if value < 1 else f"{value:.2f} s"


def megabytes(value: int) -> str:
    return f"{value / 1e6:,.{0 if value >= 1e7 else 1}f} MB"


def _aligned(rows: Sequence[Sequence[str]], left: int) -> str:
    """A table whose first so many columns are texts, and the others figures."""
    widths = [max(3, *(len(row[column]) for row in rows)) for column in range(len(rows[0]))]

    def line(row: Sequence[str]) -> str:
        cells = [text.ljust(width) if column < left else text.rjust(width)
                 for column, (text, width) in enumerate(zip(row, widths))]
        return "| " + " | ".join(cells) + " |"

    rule = "|".join("-" * (width + 2) if column < left else "-" * (width + 1) + ":"
                    for column, width in enumerate(widths))
    return "\n".join([line(rows[0]), f"|{rule}|", *map(line, rows[1:])])
