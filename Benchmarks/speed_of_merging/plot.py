# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""A picture of the CPU times: bars on a logarithmic axis."""

import math
from html import escape
from typing import Sequence

from .figures import Figures, Result
from .table import seconds

_COLOURS = {"Quirebind": "#0b6e4f", "cat": "#8a8f98", "qpdf": "#c8553d", "mutool": "#3d6fb6",
            "pdfunite": "#c99a2e", "pdftk": "#7d4f9e", "pikepdf": "#2a9fb0"}
_OTHER = "#444444"
# Its own paper, so that it can be read on a dark page, too.
_PAPER, _INK, _FAINT = "#ffffff", "#1f2328", "#d8dce2"
_WIDTH, _LEFT, _RIGHT, _TOP = 900, 170, 90, 64
_BAR, _GAP, _BETWEEN = 12, 2, 16
_FONT = "font-family='system-ui, sans-serif'"


class _Axis:
    """From powers of ten below all values to one above."""

    def __init__(self, values: Sequence[float]) -> None:
        self.low = math.floor(math.log10(min(values)))
        self.high = max(self.low + 1, math.ceil(math.log10(max(values))))

    def x(self, value: float) -> float:
        share = (math.log10(value) - self.low) / (self.high - self.low)
        return _LEFT + share * (_WIDTH - _LEFT - _RIGHT)

    def ticks(self) -> list[float]:
        return [10.0 ** power for power in range(self.low, self.high + 1)]


def svg(results: Sequence[Result]) -> str:
    """The picture: a group for each workload, a colour for each tool."""
    values = [figures.cpu for result in results for figures in result.figures() if figures.cpu > 0]
    axis = _Axis(values or [1])
    bars, y = [], float(_TOP)
    for result in results:
        group = result.figures()
        middle = y + len(group) * (_BAR + _GAP) / 2
        bars.append(_text(_LEFT - 10, middle + 4, result.workload, "end", 13))
        for figures in group:
            bars += _bar(figures, axis, y)
            y += _BAR + _GAP
        y += _BETWEEN
    bottom = y - _BETWEEN + 6
    height = bottom + 30
    tools = dict.fromkeys(figures.tool for result in results for figures in result.figures())
    return "\n".join([
        f"<svg xmlns='http://www.w3.org/2000/svg' width='{_WIDTH}' height='{height:.0f}' "
        f"viewBox='0 0 {_WIDTH} {height:.0f}' role='img'>",
        "<title>CPU time of joining documents, by workload and tool</title>",
        f"<rect width='100%' height='100%' rx='6' fill='{_PAPER}'/>",
        *_legend(list(tools)), *_grid(axis, bottom), *bars, "</svg>", ""])


def _bar(figures: Figures, axis: _Axis, y: float) -> list[str]:
    left = axis.x(axis.ticks()[0])
    if figures.failure and not figures.stopped:
        return [_text(left + 4, y + 10, f"{figures.tool}: {_short(figures.failure)}", "start", 10)]
    # Of a stopped script it is not known how much its own program had taken.
    taken = figures.wall if figures.stopped else figures.cpu
    right = axis.x(max(taken, axis.ticks()[0]))
    label = figures.failure or seconds(figures.cpu)
    # What was stopped would have gone on.
    faint = " fill-opacity='0.4'" if figures.stopped else ""
    return [f"<rect x='{left:.1f}' y='{y:.1f}' width='{max(1.0, right - left):.1f}' "
            f"height='{_BAR}' fill='{_COLOURS.get(figures.tool, _OTHER)}'{faint}/>",
            _text(right + 4, y + 10, label, "start", 10)]


def _short(failure: str) -> str:
    return "failed" if failure.startswith("failed") else failure


def _legend(tools: Sequence[str]) -> list[str]:
    parts = [_text(16, 24, "CPU time, less is better (logarithmic)", "start", 14)]
    x = float(_LEFT)
    for tool in tools:
        parts += [f"<rect x='{x:.1f}' y='36' width='12' height='12' "
                  f"fill='{_COLOURS.get(tool, _OTHER)}'/>", _text(x + 16, 46, tool, "start", 12)]
        x += 36 + 7 * len(tool)
    return parts


def _grid(axis: _Axis, bottom: float) -> list[str]:
    parts = []
    for value in axis.ticks():
        x = axis.x(value)
        parts += [f"<line x1='{x:.1f}' y1='{_TOP - 8}' x2='{x:.1f}' y2='{bottom:.1f}' "
                  f"stroke='{_FAINT}'/>",
                  _text(x, bottom + 16, f"{value:g} s" if value >= 1 else f"{1000 * value:g} ms",
                        "middle", 11)]
    return parts


def _text(x: float, y: float, text: str, anchor: str, size: int) -> str:
    return (f"<text x='{x:.1f}' y='{y:.1f}' {_FONT} font-size='{size}' fill='{_INK}' "
            f"text-anchor='{anchor}'>{escape(text)}</text>")
