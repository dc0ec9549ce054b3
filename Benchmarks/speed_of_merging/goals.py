# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What we want to reach, beside what was measured."""

from typing import Callable, NamedTuple, Optional, Sequence

from .figures import Figures, Result
from .tools import FLOOR, OURS

# CPU of ours: at most so many times that of cat, and so many times less than the fastest peer's.
_SPEED = {
    "mixed": (2.5, 6), "one-page": (2, 8), "tiny": (2, 8), "scans": (2, 3),
    **{f"books-classic-{size}": (5, 30) for size in ("small", "medium", "large")},
    **{f"books-packed-{size}": (7, 30) for size in ("small", "medium", "large")},
}
_OPENING_SECONDS = 0.25
_LINEAR = 1.3
_MEMORY_SHARE, _MEMORY_FIXED, _MEMORY_PER_OBJECT = 1.15, 32 << 20, 40
_GROWTH = 1.01
# What is made with a slower compressor than ours may come out a little larger.
_GROWTH_OF_SLOWLY_COMPRESSED = {"mixed": 1.05}
_INVOICES_LEFT = 0.1


class Goal(NamedTuple):
    about: str
    asked: str
    measured: str  # empty where it was not
    met: bool


def all_goals(results: Sequence[Result]) -> list[Goal]:
    """Every goal, in the order of the workloads."""
    known = {result.workload: result for result in results}
    goals = []
    for name, (cat, peer) in _SPEED.items():
        goals += _speed(name, known.get(name), cat, peer)
    goals.append(_opening(known.get("opening")))
    for kind in ("books-classic", "books-packed", "fields", "names"):
        goals.append(_linear(kind, known.get(f"{kind}-small"), known.get(f"{kind}-large")))
    goals.append(_worst("peak memory", "at most 1.15 x the output, 32 MB and 40 bytes an object",
                        results, _memory))
    goals.append(_worst("size of the output", "at most 1 % more than its sources; mixed, 5 %",
                        results, _growth))
    goals.append(_invoices(known.get("invoices")))
    return goals


def _failure(*results: Optional[Result]) -> str:
    """What is said in place of a figure: why there is none, if anybody tried."""
    return next((figures.failure for result in results if result for figures in result.figures()
                 if figures.tool == OURS and figures.failure), "")


def _speed(name: str, result: Optional[Result], most: float, least: float) -> list[Goal]:
    ours = result.of(OURS) if result else None
    floor = result.of(FLOOR) if result else None
    peer = result.fastest_peer() if result else None
    to_floor = ours.cpu / floor.cpu if ours and floor else None
    ahead = peer.cpu / ours.cpu if ours and peer else None
    return [
        Goal(f"{name}: CPU", f"at most {most:g} x cat",
             f"{to_floor:.2f} x" if to_floor is not None else _failure(result),
             to_floor is not None and to_floor <= most),
        Goal(f"{name}: CPU", f"{least:g} x faster than the fastest peer",
             f"{'more than ' if peer.at_least else ''}{ahead:.1f} x ({peer.tool})"
             if ahead is not None and peer else _failure(result),
             ahead is not None and ahead >= least),
    ]


def _opening(result: Optional[Result]) -> Goal:
    ours = result.of(OURS) if result else None
    return Goal("opening: wall", f"at most {_OPENING_SECONDS:g} s",
                f"{ours.wall:.3f} s for {result.files:,} files" if ours and result
                else _failure(result), ours is not None and ours.wall <= _OPENING_SECONDS)


def _linear(kind: str, small: Optional[Result], large: Optional[Result]) -> Goal:
    about = f"{kind}: CPU for each page, large to small"
    few, many = small.of(OURS) if small else None, large.of(OURS) if large else None
    if not (small and large and few and many):
        return Goal(about, f"at most {_LINEAR:g}", _failure(small, large), False)
    ratio = (many.cpu / large.pages) / (few.cpu / small.pages)
    return Goal(about, f"at most {_LINEAR:g}",
                f"{ratio:.2f} ({large.pages:,} to {small.pages:,} pages)", ratio <= _LINEAR)


def _worst(about: str, asked: str, results: Sequence[Result],
           share: Callable[[Result, Figures], float]) -> Goal:
    """The workload that comes closest to what is allowed, or goes furthest beyond."""
    shares = [(share(result, ours), result.workload) for result in results
              if (ours := result.of(OURS)) and ours.objects]
    if not shares:
        return Goal(about, asked, "", False)
    worst, name = max(shares)
    return Goal(about, asked, f"{100 * worst:.1f} % of that at most ({name})", worst <= 1)


def _memory(_: Result, ours: Figures) -> float:
    allowed = (_MEMORY_SHARE * ours.size + _MEMORY_FIXED + _MEMORY_PER_OBJECT * ours.objects)
    return ours.peak / allowed


def _growth(result: Result, ours: Figures) -> float:
    return ours.size / result.size / _GROWTH_OF_SLOWLY_COMPRESSED.get(result.workload, _GROWTH)


def _invoices(result: Optional[Result]) -> Goal:
    ours = result.of(OURS) if result else None
    left = ours.size / result.size if ours and result else None
    return Goal("invoices: size of the output", f"at least {100 * (1 - _INVOICES_LEFT):g} % less "
                "than the sources", f"{100 * (1 - left):.1f} % less" if left is not None
                else _failure(result),
                left is not None and left <= _INVOICES_LEFT)
