# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The programs that join documents, each called as its own manual shows it."""

import re
import subprocess
from pathlib import Path
from typing import Callable, NamedTuple, Optional, Sequence

SYSTEM_PYTHON = "/usr/bin/python3"  # where Debian's packages of Python libraries are found
_ANSWER_WITHIN = 60  # seconds

_PIKEPDF = """
import sys, pikepdf
merged = pikepdf.Pdf.new()
sources = [pikepdf.Pdf.open(path) for path in sys.argv[2:]]
for source in sources:
    merged.pages.extend(source.pages)
merged.save(sys.argv[1])
"""
_PYPDF = """
import sys, pypdf
merged = pypdf.PdfWriter()
for path in sys.argv[2:]:
    merged.append(path)
merged.write(sys.argv[1])
"""


class Tool(NamedTuple):
    name: str
    version: str
    command: Callable[[str, Sequence[str]], list[str]]  # from the output and the sources

    def merge(self, sources: Sequence[Path], output: Path) -> Optional[str]:
        """Joins the sources; returns what the tool complained of where there is no output."""
        try:
            result = subprocess.run(self.command(str(output), [str(path) for path in sources]),
                                    capture_output=True, timeout=_ANSWER_WITHIN, check=False)
        except subprocess.TimeoutExpired:
            return f"no answer within {_ANSWER_WITHIN} seconds"
        if output.exists() and output.stat().st_size > 0:
            return None
        said = (result.stderr + result.stdout).decode(errors="replace").strip()
        return said.split("\n")[-1] or f"exit status {result.returncode}"


def all_tools(ours: Path) -> tuple[list[Tool], list[str]]:
    """The tools that are installed, ours first, and the names of the others."""
    candidates = [
        Tool("Quirebind", "(this tree)",
             lambda out, sources: [str(ours), out, *sources]),
        Tool("qpdf", _version("qpdf", "--version"),
             lambda out, sources: ["qpdf", "--empty", "--pages", *sources, "--", out]),
        Tool("mutool", _version("mutool", "-v"),
             lambda out, sources: ["mutool", "merge", "-o", out, *sources]),
        Tool("pdfunite", _version("pdfunite", "-v"),
             lambda out, sources: ["pdfunite", *sources, out]),
        Tool("pdftk", _version("pdftk", "--version"),
             lambda out, sources: ["pdftk", *sources, "cat", "output", out]),
        Tool("pikepdf", _version(SYSTEM_PYTHON, "-c",
                                 "import pikepdf; print(pikepdf.__version__)"),
             lambda out, sources: [SYSTEM_PYTHON, "-c", _PIKEPDF, out, *sources]),
        Tool("pypdf", _version(SYSTEM_PYTHON, "-c", "import pypdf; print(pypdf.__version__)"),
             lambda out, sources: [SYSTEM_PYTHON, "-c", _PYPDF, out, *sources]),
        Tool("gs", _version("gs", "--version"),
             lambda out, sources: ["gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite",
                                   f"-sOutputFile={out}", *sources]),
    ]
    return ([tool for tool in candidates if tool.version],
            [tool.name for tool in candidates if not tool.version])


def reader_versions() -> str:
    """The programs that read the results, with their versions."""
    readers = [("qpdf", _version("qpdf", "--version")), ("mutool", _version("mutool", "-v")),
               ("Poppler", _version("pdftoppm", "-v"))]
    for name, version in readers:
        if not version:
            raise SystemExit(f"{name} is needed to read what the tools write")
    return ", ".join(f"{name} {version}" for name, version in readers)


def _version(*command: str) -> str:
    """The number that a program says it is; empty where it cannot be run."""
    try:
        result = subprocess.run(command, capture_output=True, timeout=_ANSWER_WITHIN, check=False)
    except FileNotFoundError:
        return ""
    found = re.search(rb"\d+(\.\d+)+", result.stdout + result.stderr)
    # Trap: an exit status other than 0 does not mean that there is no such tool. A library that
    # cannot be imported says so as an error.
    return found[0].decode() if found and b"Error" not in result.stderr else ""
