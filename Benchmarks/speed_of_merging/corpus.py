# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Choosing real documents that say something about speed."""

import hashlib
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path
from typing import Optional, Sequence

from .sources import Names
from .tools import MUTOOL, QPDF, Tool, page_count

_ANSWER_WITHIN = 20  # seconds
_NOT_ENCRYPTED = 2  # what qpdf --is-encrypted says with its exit status


def choose(corpus: Path, ours: Tool, folder: Path, count: int) -> Names:
    """Copies so many documents of the corpus, or all there are, into the folder, of those that qpdf,
    mutool and we merge without an error and a password. Which of them is decided by their names
    alone, so that every kind of document has its share and the same corpus always gives the same
    choice."""
    paths = sorted((path for path in corpus.rglob("*") if path.suffix.lower() == ".pdf"
                    and path.is_file()), key=lambda path: _order(path.relative_to(corpus)))
    chosen = Names([], [])
    with tempfile.TemporaryDirectory(prefix="speed-") as temporary:
        for path in paths:
            if len(chosen.names) == count:
                break
            pages = _sound_pages(path, [ours, QPDF, MUTOOL], Path(temporary) / "out.pdf")
            if pages:
                name = f"{len(chosen.names):04}.pdf"
                shutil.copyfile(path, folder / name)
                chosen.names.append(name)
                chosen.pages.append(pages)
    if len(chosen.names) < count:
        print(f"{corpus} has only {len(chosen.names)} of {count} documents that all tools can read",
              file=sys.stderr)
    return chosen


def _order(path: Path) -> bytes:
    return hashlib.sha256(str(path).encode(errors="surrogateescape")).digest()


def _sound_pages(path: Path, tools: Sequence[Tool], output: Path) -> Optional[int]:
    """The pages of a document, nothing where any tool has a problem with it."""
    encryption = _run(["qpdf", "--is-encrypted", str(path)])
    if encryption is None or encryption.returncode != _NOT_ENCRYPTED:
        return None
    pages = page_count(path)
    if not pages:
        return None
    for tool in tools:
        output.unlink(missing_ok=True)
        done = _run(tool.command(str(output), [str(path)]))
        if (done is None or done.returncode != 0 or b"error" in done.stderr
                or not output.exists() or page_count(output) != pages):
            return None
    return pages


def _run(command: Sequence[str]) -> Optional["subprocess.CompletedProcess[bytes]"]:
    try:
        return subprocess.run(command, capture_output=True, timeout=_ANSWER_WITHIN, check=False)
    except subprocess.TimeoutExpired:
        return None
