# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""All that one call of the command has found, as it is kept in a file."""

import json
from pathlib import Path
from typing import NamedTuple

from .figures import Result, from_json
from .window import Measure


class Session(NamedTuple):
    machine: dict[str, str]
    versions: dict[str, str]  # of the peers
    absent: list[str]  # peers that are not installed
    factor: float  # of the sizes
    rounds: int
    limit: float  # seconds for a run
    memory: bool  # whether outputs went into memory
    results: list[Result]
    window: list[Measure]

    def write(self, path: Path) -> None:
        data = {**self._asdict(), "results": [result.as_json() for result in self.results],
                "window": [measure._asdict() for measure in self.window]}
        path.write_text(json.dumps(data, indent=1), encoding="utf-8")


def read(path: Path) -> Session:
    data = json.loads(path.read_text(encoding="utf-8"))
    return Session(**{**data, "results": [from_json(result) for result in data["results"]],
                      # Older files have nothing of the window.
                      "window": [Measure(**measure) for measure in data.get("window", [])]})
