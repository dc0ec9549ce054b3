# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The command: see --help."""

import argparse
import sys
import tempfile
from pathlib import Path
from typing import Sequence

from . import rows, table
from .result import Result
from .row import Row, Source
from .tools import Tool, all_tools, reader_versions

_TREE = Path(__file__).resolve().parent.parent.parent


def main() -> None:
    parser = argparse.ArgumentParser(
        prog="what-is-kept", description="Joins small documents with every tool at hand, and "
        "writes down what each keeps of them.")
    parser.add_argument("merge_pdfs", nargs="?", type=Path,
                        default=_TREE / "build/release/Tools/merge-pdfs",
                        help="our own tool (default: that of the release build)")
    parser.add_argument("--output", type=Path, default=_TREE / "Documentation/WhatIsKept.md")
    parser.add_argument("--files", type=Path, help="a folder for all files, to look at")
    parser.add_argument("--row", default="", help="only rows with this in their name; the table is "
                                                  "printed, not written")
    parser.add_argument("--why", action="store_true", help="say what was not found")
    arguments = parser.parse_args()
    if not arguments.merge_pdfs.exists():
        parser.error(f"{arguments.merge_pdfs} has not been built")

    tools, absent = all_tools(arguments.merge_pdfs.resolve())
    readers = reader_versions()
    for name in absent:
        print(f"{name} is not installed; it is left out", file=sys.stderr)
    with tempfile.TemporaryDirectory(prefix="what-is-kept-") as temporary:
        folder = arguments.files or Path(temporary)
        sections = []
        for title, section in rows.ALL:
            judged = [_judge(row, tools, folder / _file_name(title, row), arguments.why)
                      for row in section if arguments.row.lower() in row.name.lower()]
            if judged:
                sections.append((title, judged))
    text = table.text(tools, absent, readers, sections)
    if arguments.row:
        print(text)
    else:
        arguments.output.write_text(text, encoding="utf-8")


def _file_name(title: str, row: Row) -> str:
    return "".join(c if c.isalnum() else "-" for c in f"{title} {row.name}".lower())


def _judge(row: Row, tools: Sequence[Tool], folder: Path, why: bool) -> table.Judged:
    folder.mkdir(parents=True, exist_ok=True)
    paths, sources, first = [], [], 0
    for document in row.documents():
        path = folder / f"{document.letter}.pdf"
        document.write(path)
        original = Result(path)
        for copy in ("", "'s second copy")[:2 if row.twice else 1]:
            paths.append(path)
            sources.append(Source(document.letter + copy, first, original))
            first += len(original.page_refs)
    _check_row(row, sources)
    outcomes = []
    for tool in tools:
        outcomes.append(_outcome(row, tool, paths, sources, folder / f"{tool.name}.pdf"))
        if why:
            print(f"{row.name} | {tool.name} | {table.said(outcomes[-1])} | "
                  f"{table.missing(outcomes[-1])}", flush=True)
    return table.Judged(row, outcomes)


def _check_row(row: Row, sources: Sequence[Source]) -> None:
    """Nothing is asked that is not there in each document by itself. A fault in the documents or in
    what is asked of them would make every tool look bad."""
    for source in sources:
        alone = source._replace(first_page=0)
        for check in row.checks(source.original, [alone]):
            assert check.found or row.changes, f"{row.name}: {check.what} is in no document"


def _outcome(row: Row, tool: Tool, paths: Sequence[Path], sources: Sequence[Source],
             output: Path) -> table.Outcome:
    output.unlink(missing_ok=True)
    complaint = tool.merge(paths, output)
    if complaint is not None:
        return complaint
    try:
        result = Result(output)
        if len(result.page_refs) < sources[-1].pages.stop:
            return f"{len(result.page_refs)} pages of {sources[-1].pages.stop}"
        return row.checks(result, sources)
    except ValueError as error:
        return str(error)


if __name__ == "__main__":
    main()
