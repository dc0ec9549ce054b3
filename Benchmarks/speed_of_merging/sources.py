# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The files that are joined, which stay where they are from one run to the next."""

import json
import shutil
from pathlib import Path
from typing import Callable, NamedTuple

_EDITION = 1  # to be raised when what is made changes
_LIST = "sources.json"
_AT_ONCE = 1 << 20


class Names(NamedTuple):
    """Files of a folder in the order in which they are joined, and the pages of each."""

    names: list[str]
    pages: list[int]


class Sources(NamedTuple):
    """Names, all below one folder: thousands of paths would be too much for a command line."""

    folder: Path
    names: list[str]
    pages: int

    @property
    def size(self) -> int:
        """All bytes, those of a file that is listed twice counted twice."""
        sizes = {name: (self.folder / name).stat().st_size for name in set(self.names)}
        return sum(sizes[name] for name in self.names)

    def warm(self) -> None:
        """Reads all files once, so that no tool has to wait for the disk."""
        for name in sorted(set(self.names)):
            with open(self.folder / name, "rb") as file:
                while file.read(_AT_ONCE):
                    pass


def provide(folder: Path, make: Callable[[Path], Names], only: int = 0) -> Sources:
    """The files of that folder, made if they are not there; of them the first `only`."""
    record = folder / _LIST
    if not record.exists() or json.loads(record.read_text())["edition"] != _EDITION:
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        names = make(folder)
        record.write_text(json.dumps({"edition": _EDITION, **names._asdict()}))
    known = json.loads(record.read_text())
    count = only or len(known["names"])
    return Sources(folder, known["names"][:count], sum(known["pages"][:count]))
