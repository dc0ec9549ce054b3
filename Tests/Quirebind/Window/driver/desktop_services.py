# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The services of a desktop that the program may call: a file manager and the portal. They are
stubs that record what they are asked; which of them are there, and how they behave, is the test's
choice. Nothing on the desktop answers unless a test starts it."""

import json
import subprocess
from pathlib import Path
from typing import Any, NamedTuple

from .desktop import Desktop
from .waiting import wait_for

_SERVER = Path(__file__).with_name("serve_desktop.py")

# How a stub may behave.
ANSWERS = "answers"
REFUSES = "refuses"  # every call is answered with an error
HANGS = "hangs"  # no call is ever answered


def late(seconds: float) -> str:
    """Behaves as it should, but answers only after that time."""
    return f"answers-after-{seconds}"


class Shown(NamedTuple):
    """A call of ShowItems."""

    uris: list[str]
    startup_id: str


class _Stub:
    """A service in a process of its own; ended by `end`, by `with`, or with the desktop."""

    def __init__(self, desktop: Desktop, service: str, behaviour: str) -> None:
        self._desktop = desktop
        self._record = desktop.folder / f"{service}-calls"
        self._record.write_bytes(b"")
        with open(desktop.folder / f"{service}.log", "wb") as log:
            self._process = desktop.start_process(
                ["/usr/bin/python3", "-B", _SERVER, service, behaviour, self._record],
                stdin=subprocess.PIPE, stdout=log, stderr=log)
        wait_for(self.ready, message=lambda: f"the {service} answers; it said: "
                 + (desktop.folder / f"{service}.log").read_text())

    def __enter__(self) -> Any:
        return self

    def __exit__(self, *_: object) -> None:
        self.end()

    def ready(self) -> bool:
        return any(call["call"] == "ready" for call in self._all())

    def calls(self, method: str) -> list[dict[str, Any]]:
        """The calls of this method so far."""
        return [call for call in self._all() if call["call"] == method]

    def end(self) -> None:
        """Takes the service off the bus."""
        if self._process.stdin is not None:
            self._process.stdin.close()
        self._desktop.end_process(self._process)

    def _all(self) -> list[dict[str, Any]]:
        # The last line may be on its way.
        lines = self._record.read_text().split("\n")[:-1]
        return [json.loads(line) for line in lines]

    def _tell(self, line: str) -> None:
        assert self._process.stdin is not None
        self._process.stdin.write(f"{line}\n".encode())
        self._process.stdin.flush()


class FileManager(_Stub):
    """org.freedesktop.FileManager1.

        with FileManager(desktop) as manager:
            ...
            wait_for(lambda: manager.shown() == [Shown(["file:///a.pdf"], "")])
    """

    def __init__(self, desktop: Desktop, behaviour: str = ANSWERS) -> None:
        super().__init__(desktop, "file-manager", behaviour)

    def shown(self) -> list[Shown]:
        """What it was asked to show, in order; also where it refused or hung."""
        return [Shown(call["uris"], call["startup_id"]) for call in self.calls("ShowItems")]


class Documents(_Stub):
    """org.freedesktop.portal.Documents, which has the files of a drag for confined programs."""

    def __init__(self, desktop: Desktop, behaviour: str = ANSWERS) -> None:
        super().__init__(desktop, "documents", behaviour)


class Portal(_Stub):
    """org.freedesktop.portal.Desktop: opening folders, the colour scheme (0 none preferred, 1 dark,
    2 light), and whether things may move."""

    def __init__(self, desktop: Desktop, behaviour: str = ANSWERS, colour_scheme: int = 0) -> None:
        super().__init__(desktop, "portal", behaviour)
        self.set_colour_scheme(colour_scheme)

    def opened(self) -> list[str]:
        """The files whose folders it was asked to open, in order: the paths behind the descriptors
        that were handed over."""
        return [call["path"] for call in self.calls("OpenDirectory")]

    def set_colour_scheme(self, scheme: int) -> None:
        """Changes the preference, and tells all programs."""
        before = len(self.calls("scheme"))
        self._tell(f"scheme {scheme}")
        wait_for(lambda: len(self.calls("scheme")) > before, message="the portal has changed it")

    def set_animations(self, enabled: bool) -> None:
        """Changes whether things may move, and tells all programs."""
        before = len(self.calls("animations"))
        self._tell(f"animations {int(enabled)}")
        wait_for(lambda: len(self.calls("animations")) > before, message="the portal has changed it")
