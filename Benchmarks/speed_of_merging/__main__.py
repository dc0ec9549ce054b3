# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The command: see --help."""

import argparse
import os
import shutil
import sys
import tempfile
from pathlib import Path
from typing import Optional

from . import document, machine, plot, session, table, tools, window, workloads
from .corpus import choose
from .figures import Result
from .goals import all_goals
from .runs import Places, run_all
from .session import Session
from .sources import provide
from .workloads import Workload

_TREE = Path(__file__).resolve().parent.parent.parent
_MEMORY = Path("/dev/shm")
_SPARE = 1 << 30  # bytes that are to be free besides an output


def main() -> None:
    arguments = _parse()
    found = (session.read(arguments.read) if arguments.read
             else _measure(arguments))
    if arguments.read:
        for result in found.results:
            print(table.of_result(result) + "\n")
    if found.window:
        print(f"### {workloads.WINDOW}\n\n{table.of_window(found.window)}\n")
    if found.results:
        print(table.of_goals([goal for goal in all_goals(found.results) if goal.measured]))
    if arguments.json:
        found.write(arguments.json)
    if arguments.write:
        folder = _TREE / "Documentation"
        (folder / "Speed.md").write_text(document.text(found, "speed.svg"), encoding="utf-8")
        (folder / "speed.svg").write_text(plot.svg(found.results), encoding="utf-8")


def _parse() -> argparse.Namespace:
    parser = argparse.ArgumentParser(
        prog="speed", description="Joins documents with every tool at hand, and says how long it "
        "takes, how much memory, and how large the output is.")
    parser.add_argument("--merge-pdfs", type=Path, default=_TREE / "build/release/Tools/merge-pdfs",
                        help="our own tool (default: that of the release build)")
    parser.add_argument("--open-files", type=Path,
                        help="the one that only opens (default: that of the same build, if it has "
                             "benchmarks)")
    parser.add_argument("--workloads", type=_words, default=[],
                        help="some of them only, by name or by the first word of it: books,tiny; "
                             "window is what the window does")
    parser.add_argument("--scale", type=_scale, default=1.0, metavar="small|full|FACTOR",
                        help="of all sizes (default: full)")
    parser.add_argument("--rounds", type=int, default=5, help="turns of every tool (default: 5)")
    parser.add_argument("--peers", type=_words,
                        help="some of them only, by name; '' for none (default: all installed)")
    parser.add_argument("--corpus", type=Path, default=os.environ.get("QUIREBIND_CORPUS") or None,
                        help="a folder of real documents (default: $QUIREBIND_CORPUS)")
    parser.add_argument("--work", type=Path, default=_TREE / "build/speed",
                        help="a folder for the sources, which are kept (default: build/speed)")
    parser.add_argument("--limit", type=float, default=120.0,
                        help="seconds after which a run is stopped (default: 120)")
    parser.add_argument("--json", type=Path, help="a file for all figures")
    parser.add_argument("--read", type=Path, help="such a file, to be shown again; nothing is run")
    parser.add_argument("--write", action="store_true", help="write Documentation/Speed.md, too")
    arguments = parser.parse_args()
    if not arguments.read and not arguments.merge_pdfs.exists():
        parser.error(f"{arguments.merge_pdfs} has not been built")
    if not tools.QPDF.version():
        parser.error("qpdf is needed to count the pages of what the tools write")
    return arguments


def _words(text: str) -> list[str]:
    return [word for word in text.split(",") if word]


def _scale(text: str) -> float:
    return {"small": workloads.SMALL, "full": 1.0}.get(text) or float(text)


def _measure(arguments: argparse.Namespace) -> Session:
    merge_pdfs = arguments.merge_pdfs.resolve()
    ours = tools.merging(merge_pdfs)
    opener = arguments.open_files or merge_pdfs.parent.parent / "Benchmarks/open-files"
    versions, absent = tools.installed(arguments.peers)
    corpus: Optional[Path] = arguments.corpus
    known = workloads.all_workloads(
        arguments.scale,
        (lambda folder, count: choose(corpus, ours, folder, count)) if corpus else None)
    for name in absent:
        print(f"{name} is not installed; it is left out", file=sys.stderr)
    if not corpus:
        print("no corpus is known (--corpus): there are no mixed documents", file=sys.stderr)

    arguments.work.mkdir(parents=True, exist_ok=True)
    work = arguments.work.resolve()
    place = machine.description(work)
    results, in_memory = [], True
    for workload in workloads.selected(known, arguments.workloads):
        if not workload.merges and not opener.exists():
            print(f"{opener} has not been built; {workload.name} is left out", file=sys.stderr)
            continue
        asked = ([tools.opening(opener.resolve())] if not workload.merges
                 else [ours, tools.CAT, *(versions if workload.peers else [])])
        result, used_memory = _run(workload, asked, work, arguments)
        in_memory = in_memory and used_memory
        results.append(result)
        print(table.of_result(result) + "\n", flush=True)
    shown: list[window.Measure] = []
    if not arguments.workloads or workloads.WINDOW in arguments.workloads:
        shown = window.measure(merge_pdfs.parent.parent, work, arguments.scale, arguments.rounds)
    return Session(place, {peer.name: version for peer, version in versions.items()}, absent,
                   arguments.scale, arguments.rounds, arguments.limit, in_memory, results, shown)


def _run(workload: Workload, asked: list[tools.Tool], work: Path,
         arguments: argparse.Namespace) -> tuple[Result, bool]:
    sources = provide(work / workload.folder, workload.make, workload.only)
    size = sources.size
    room = _MEMORY.is_dir() and shutil.disk_usage(_MEMORY).free > 2 * size + _SPARE
    if not room:
        print(f"{workload.name}: {_MEMORY} has no room for outputs", file=sys.stderr)
    with tempfile.TemporaryDirectory(prefix="speed-", dir=work) as disk, \
            tempfile.TemporaryDirectory(prefix="quirebind-speed-",
                                        dir=_MEMORY if room else work) as memory:
        places = Places(Path(disk), Path(memory) if room else None, arguments.limit)
        runs = run_all(sources, asked, places, arguments.rounds, workload.merges)
    return Result(workload.name, workload.about.format(files=len(sources.names)),
                  len(sources.names), size, sources.pages, runs), room


if __name__ == "__main__":
    main()
