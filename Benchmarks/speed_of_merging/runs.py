# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Running every tool over the same documents, in turn."""

import json
import subprocess
import sys
from pathlib import Path
from typing import Any, NamedTuple, Optional, Sequence

from .sources import Sources
from .tools import OURS, Tool, object_count, page_count

MEMORY, DISK = "tmpfs", "disk"
_LAUNCHER = Path(__file__).with_name("launcher.py")
_REHEARSED = 3.0  # seconds that a tool may have taken the last time


class Run(NamedTuple):
    """One run of one tool."""

    tool: str
    round: int
    place: str  # where the output went
    cpu: float  # seconds, of the user and the system
    wall: float  # seconds
    peak: int  # bytes resident
    size: int  # bytes of output
    pages: int  # of the output
    objects: int  # of the output
    failure: str  # empty where all pages are there
    stopped: bool  # for taking too long


class Places(NamedTuple):
    """Where outputs go: to the disk with the sources, and into memory where there is a place."""

    disk: Path
    memory: Optional[Path]
    limit: float  # seconds for a run


def run_all(sources: Sources, tools: Sequence[Tool], places: Places, rounds: int,
            merges: bool) -> list[Run]:
    """That many rounds in which every tool has its turn. A tool that has taken the time of a whole
    run that is stopped, in one or in several, has no more turns."""
    runs: list[Run] = []
    sources.warm()
    for number in range(rounds):
        for tool in tools:
            before = [run for run in runs if run.tool == tool.name]
            if sum(run.wall for run in before) >= places.limit:
                continue
            if places.memory:
                runs.append(_run(tool, sources, number, MEMORY, places, before, merges))
            # What the disk costs is a matter of who waits for it, and only we do.
            if not places.memory or tool.name == OURS and merges:
                runs.append(_run(tool, sources, number, DISK, places, before, merges))
    return runs


def _run(tool: Tool, sources: Sources, number: int, place: str, places: Places,
         before: Sequence[Run], merges: bool) -> Run:
    folder = places.memory if place == MEMORY and places.memory else places.disk
    output, errors = folder / "output.pdf", folder / "errors.txt"
    job = {"command": tool.command(str(output), sources.names), "folder": str(sources.folder),
           "output": str(output if tool.to_output else errors), "errors": str(errors),
           "limit": places.limit}
    try:
        # What ran before leaves caches and free memory as it likes them, and a virtual machine may
        # have given free memory back meanwhile. Who is quick is given a rehearsal, then.
        if before and before[-1].wall < _REHEARSED:
            _launch(job)
            output.unlink(missing_ok=True)
        cost = _launch(job)
        size = output.stat().st_size if output.exists() else 0
        pages, objects = 0, 0
        if cost["stopped"]:
            failure = f"stopped after {places.limit:g} s"
        elif not merges:
            pages = int(output.read_text() or 0)
            failure = _complaint(cost["status"], errors, pages, sources.pages)
        elif tool.to_output:
            failure = _complaint(cost["status"], errors, sources.pages, sources.pages)
        else:
            pages, objects = _looked_at(output, size, before)
            failure = _complaint(cost["status"], errors, pages, sources.pages)
        return Run(tool.name, number, place, cost["cpu"], cost["wall"], cost["peak"], size, pages,
                   objects, failure, cost["stopped"])
    finally:
        output.unlink(missing_ok=True)
        errors.unlink(missing_ok=True)


def _launch(job: dict[str, Any]) -> dict[str, Any]:
    done = subprocess.run([sys.executable, "-I", "-S", str(_LAUNCHER)], check=True,
                          input=json.dumps(job), stdout=subprocess.PIPE, text=True)
    cost: dict[str, Any] = json.loads(done.stdout)
    return cost


def _looked_at(output: Path, size: int, before: Sequence[Run]) -> tuple[int, int]:
    """The pages and the objects of an output. One that is as large as the one before is taken to be
    the same: looking at it can take longer than making it."""
    if before and before[-1].size == size:
        return before[-1].pages, before[-1].objects
    if size == 0:
        return 0, 0
    return page_count(output) or 0, object_count(output)


def _complaint(status: int, errors: Path, pages: int, expected: int) -> str:
    if pages == expected:
        return ""  # some give another exit status for warnings
    if pages:
        return f"{pages:,} of {expected:,} pages"
    said = errors.read_text(errors="replace").strip().split("\n")[-1]
    return "failed: " + (said[:100] or f"exit status {status}")
