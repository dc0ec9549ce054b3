# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The programs that join documents, each called as its own manual shows it."""

import re
import subprocess
from pathlib import Path
from typing import Callable, NamedTuple, Optional, Sequence

SYSTEM_PYTHON = "/usr/bin/python3"  # where Debian's packages of Python libraries are found
OURS = "Quirebind"
FLOOR = "cat"
_ANSWER_WITHIN = 120  # seconds

_PIKEPDF = """\
import sys, pikepdf
merged = pikepdf.Pdf.new()
for path in sys.argv[2:]:
    source = pikepdf.open(path)
    merged.pages.extend(source.pages)
merged.save(sys.argv[1])
"""


class Tool(NamedTuple):
    name: str
    shown: str  # the command, for readers
    ask_version: tuple[str, ...]
    command: Callable[[str, Sequence[str]], list[str]]  # from the output and the sources
    to_output: bool = False  # whether it writes on its standard output

    def version(self) -> str:
        """The number that the program says it is; empty where it cannot be run."""
        try:
            result = subprocess.run(self.ask_version, capture_output=True, check=False,
                                    timeout=_ANSWER_WITHIN)
        except FileNotFoundError:
            return ""
        found = re.search(rb"\d+(\.\d+)+", result.stdout + result.stderr)
        # Trap: an exit status other than 0 does not mean that there is no such tool. A library that
        # cannot be imported says so as an error.
        return found[0].decode() if found and b"Error" not in result.stderr else ""


QPDF = Tool("qpdf", "qpdf --empty --pages IN... -- OUT", ("qpdf", "--version"),
            lambda out, sources: ["qpdf", "--empty", "--pages", *sources, "--", out])
MUTOOL = Tool("mutool", "mutool merge -o OUT IN...", ("mutool", "-v"),
              lambda out, sources: ["mutool", "merge", "-o", out, *sources])
PEERS = [
    QPDF,
    MUTOOL,
    Tool("pdfunite", "pdfunite IN... OUT", ("pdfunite", "-v"),
         lambda out, sources: ["pdfunite", *sources, out]),
    Tool("pdftk", "pdftk IN... cat output OUT", ("pdftk", "--version"),
         lambda out, sources: ["pdftk", *sources, "cat", "output", out]),
    Tool("pikepdf", "python3: each source opened, its pages added, all saved",
         (SYSTEM_PYTHON, "-c", "import pikepdf; print(pikepdf.__version__)"),
         lambda out, sources: [SYSTEM_PYTHON, "-c", _PIKEPDF, out, *sources]),
]
CAT = Tool(FLOOR, "cat IN... > OUT", ("cat", "--version"),
           lambda out, sources: ["cat", *sources], to_output=True)


def merging(merge_pdfs: Path) -> Tool:
    """Our own engine on the command line."""
    return Tool(OURS, "merge-pdfs OUT IN...", (),
                lambda out, sources: [str(merge_pdfs), out, *sources])


def opening(open_files: Path) -> Tool:
    """Our own engine, opening files only."""
    return Tool(OURS, "open-files IN...", (), lambda out, sources: [str(open_files), *sources],
                to_output=True)


def installed(names: Optional[Sequence[str]]) -> tuple[dict[Tool, str], list[str]]:
    """The peers that are installed, with their versions, and the names of the others. Of those
    names only, where there are any."""
    known = [peer.name for peer in PEERS]
    for name in names or ():
        if name not in known:
            raise SystemExit(f"there is no peer {name!r}; there are {', '.join(known)}")
    wanted = [peer for peer in PEERS if names is None or peer.name in names]
    versions = {peer: peer.version() for peer in wanted}
    return ({peer: version for peer, version in versions.items() if version},
            [peer.name for peer, version in versions.items() if not version])


def page_count(path: Path) -> Optional[int]:
    """How many pages qpdf finds; nothing where it cannot read the file."""
    try:
        result = subprocess.run(["qpdf", "--show-npages", str(path)], capture_output=True,
                                timeout=_ANSWER_WITHIN, check=False)
    except subprocess.TimeoutExpired:
        return None
    text = result.stdout.strip()
    return int(text) if text.isdigit() else None


def object_count(path: Path) -> int:
    """One more than the highest object number of a file, as the last trailer says; 0 where it says
    nothing."""
    with open(path, "rb") as file:
        file.seek(0, 2)
        size = file.tell()
        file.seek(max(0, size - 2048))
        tail = file.read()
        # A trailer stands right before the end; a cross-reference stream is where startxref says.
        start = re.search(rb"startxref\s+(\d+)", tail)
        file.seek(min(size, int(start[1])) if start else size)
        head = file.read(1024) if start else b""
    found = re.findall(rb"/Size\s+(\d+)", tail) or re.findall(rb"/Size\s+(\d+)", head)
    return int(found[-1]) if found else 0
