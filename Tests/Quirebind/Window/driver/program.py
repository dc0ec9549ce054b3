# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The program under test, running on a virtual desktop."""

import re
import subprocess
import time
from pathlib import Path
from typing import Mapping, NamedTuple, Optional, Sequence, Union

from .accessibility import Accessible, Gone
from .desktop import Desktop
from .geometry import Point, Rect, Size
from .waiting import NotYet, wait_for

# The accessibility bridge complains whenever it is asked about something that has gone, which
# nobody can avoid who looks at a window that changes.
_LOGGING_RULES = "qt.accessibility.atspi.warning=false"


class Window(NamedTuple):
    """A window that the window manager knows, main window or dialog."""

    id: str
    title: str


class Program:
    """Starts `binary` on `desktop` in a home folder of its own. Files in there after a run were
    left there by the program.

        with Program(desktop, "quirebind", arguments=["-reverse"]) as program:
            program.resize(800, 600)
    """

    def __init__(self, desktop: Desktop, binary: Union[str, Path],
                 arguments: Sequence[Union[str, bytes, Path]] = (),
                 environment: Optional[Mapping[str, str]] = None,
                 home: Optional[Path] = None) -> None:
        self.desktop = desktop
        self.home = home or desktop.new_home()
        self._stdout_path = self.home.with_name(self.home.name + ".stdout")
        self._stderr_path = self.home.with_name(self.home.name + ".stderr")
        self._terminated = False
        extra = {
            "QT_QPA_PLATFORM": "xcb",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "QT_LOGGING_RULES": _LOGGING_RULES,
        }
        extra.update(environment or {})
        with open(self._stdout_path, "wb") as stdout, open(self._stderr_path, "wb") as stderr:
            self._process: "subprocess.Popen[bytes]" = desktop.start_process(
                [str(binary), *arguments], desktop.environment(self.home, extra),
                stdout=stdout, stderr=stderr, working_folder=self.home)

    def __enter__(self) -> "Program":
        return self.wait_for_window()

    def __exit__(self, *_: object) -> None:
        self.terminate()

    # The process.

    @property
    def process_id(self) -> int:
        return self._process.pid

    def alive(self) -> bool:
        return self._process.poll() is None

    def wait_exit(self, timeout: float = 10.0) -> int:
        """Waits until the program has ended; returns its exit code, negative for a signal."""
        try:
            return self._process.wait(timeout)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"after {timeout:g} s the program has not ended") from None

    def terminate(self) -> int:
        """Ends the program if need be, without asking it; returns its exit code."""
        self._terminated = self._terminated or self.alive()
        return self.desktop.end_process(self._process)

    @property
    def crashed(self) -> bool:
        """Whether the program ended by a signal or with an error, other than by `terminate`."""
        return not self.alive() and self._process.returncode != 0 and not self._terminated

    def stdout(self) -> str:
        """What the program has printed so far."""
        return self._stdout_path.read_text(errors="replace")

    def stderr(self) -> str:
        """What the program has complained of so far."""
        return self._stderr_path.read_text(errors="replace")

    def opened_elsewhere(self) -> list[str]:
        """What the program had another one open, through xdg-open: files, folders, URLs."""
        path = self.home.with_name(self.home.name + ".opened")
        return path.read_text(errors="replace").splitlines() if path.exists() else []

    def peak_memory(self) -> int:
        """The most memory that was ever resident, in bytes, that of shared libraries included."""
        status = Path(f"/proc/{self.process_id}/status").read_text()
        return int(re.search(r"^VmHWM:\s*(\d+) kB", status, re.M)[1]) * 1024  # type: ignore[index]

    def memory(self) -> int:
        """The resident memory now, in bytes; what is shared is counted in proportion (PSS)."""
        rollup = Path(f"/proc/{self.process_id}/smaps_rollup").read_text()
        return int(re.search(r"^Pss:\s*(\d+) kB", rollup, re.M)[1]) * 1024  # type: ignore[index]

    def left_in_home(self) -> list[str]:
        """The files and folders in the home folder, which was empty."""
        return sorted(str(path.relative_to(self.home)) for path in self.home.rglob("*"))

    # Its windows.

    def wait_for_window(self, timeout: float = 20.0) -> "Program":
        """Returns when the first window shows, has the focus, and can be read."""
        def ready() -> bool:
            if not self.alive():
                raise RuntimeError(f"the program ended with {self._process.returncode}: "
                                   f"{self.stderr()}")
            return bool(self.windows() and self.active_window() and self.frames())
        wait_for(ready, timeout, lambda: f"a window of the program shows; it said: {self.stderr()}")
        return self

    def windows(self) -> list[Window]:
        """The windows of the program, the oldest first."""
        # Trap: wmctrl gives up where a window closes, any program's, while it lists them.
        def listed() -> bytes:
            try:
                return self.desktop.run("wmctrl", "-lp") or b"\n"
            except RuntimeError as error:
                raise NotYet(str(error)) from None

        found = []
        listing = wait_for(listed, message="the windows can be listed")
        for line in listing.decode(errors="replace").split("\n"):
            if not line.strip():
                continue
            identifier, _, process_id, *rest = line.split(None, 4)
            if process_id == str(self.process_id):
                found.append(Window(identifier, rest[1] if len(rest) > 1 else ""))
        return found

    def active_window(self) -> Optional[Window]:
        """The window with the focus, where it is one of the program's."""
        active = self.desktop.active_window()
        return next((window for window in self.windows() if int(window.id, 16) == active), None)

    def activate(self, window: Optional[Window] = None) -> None:
        """Gives the program the focus, a window of it or a dialog that this one has open."""
        self.desktop.activate(int((window or self._main_window()).id, 16))
        wait_for(self.active_window, message="the program has the focus")

    def wait_for_focus(self) -> None:
        """Returns once a window of the program has the focus. Trap: where two windows close at
        once on a busy machine, the window manager may lose the focus; it is asked for then."""
        def focused() -> bool:
            return any("active" in frame.states for frame in self.frames())
        try:
            wait_for(focused, 3.0)
        except AssertionError:
            self.activate()
            wait_for(focused, message="the program has the focus")

    def geometry(self, window: Optional[Window] = None) -> Rect:
        """Where the inside of a window is on the screen, without the frame around it."""
        wanted = window or self._main_window()
        answer = self.desktop.run("xwininfo", "-id", wanted.id).decode()
        def number(what: str) -> int:
            return int(re.search(rf"{what}:\s*(-?\d+)", answer)[1])  # type: ignore[index]
        return Rect(number("Absolute upper-left X"), number("Absolute upper-left Y"),
                    number("Width"), number("Height"))

    def resize(self, width: int, height: int) -> Size:
        """Asks the window manager for that size of the inside; returns what it became. A window
        manager keeps to the sizes that the window allows."""
        return self._place(-1, -1, width, height).size

    def move(self, x: int, y: int) -> Point:
        """Asks the window manager to move the inside of the window to that point; returns where
        it is then."""
        placed = self._place(x, y, -1, -1)
        return Point(placed.x, placed.y)

    def close(self, window: Optional[Window] = None) -> None:
        """Asks for a window to be closed, as its close button does. Returns at once."""
        self.desktop.run("wmctrl", "-ic", (window or self._main_window()).id)

    def close_all(self, timeout: float = 10.0) -> Optional[int]:
        """Closes the windows, the newest first, until the program ends; returns its exit code, or
        nothing where it has not ended in time."""
        deadline = time.monotonic() + timeout
        while self.alive() and time.monotonic() < deadline:
            windows = self.windows()
            if windows:
                try:
                    self.close(windows[-1])
                except RuntimeError:  # it has closed meanwhile
                    pass
            # Asks again only after a while: closing twice could be told from closing once.
            again = min(deadline, time.monotonic() + 2.0)
            while self.alive() and self.windows() == windows and time.monotonic() < again:
                time.sleep(0.01)
        return self._process.returncode if not self.alive() else None

    # What is in them.

    def accessible(self) -> Accessible:
        """The program as a screen reader sees it; its children are its windows."""
        return self.desktop.accessibility.application(self.process_id)

    def frames(self) -> list[Accessible]:
        """The windows as a screen reader sees them, without those that are hidden."""
        try:
            return [window for window in self.accessible().children if window.showing]
        except Gone:
            return []

    def _main_window(self) -> Window:
        windows = self.windows()
        if not windows:
            raise AssertionError("the program has no window")
        return windows[0]

    def _place(self, x: int, y: int, width: int, height: int) -> Rect:
        window = self._main_window()
        # 10 is StaticGravity: the position is that of the inside, not that of the frame.
        self.desktop.run("wmctrl", "-ir", window.id, "-e", f"10,{x},{y},{width},{height}")
        # A request that is refused has no visible effect to wait for. But requests are handled in
        # turn: once one that comes later has had its effect, this one has been dealt with.
        for change, expected in (("add", True), ("remove", False)):
            self.desktop.run("wmctrl", "-ir", window.id, "-b", f"{change},skip_pager")
            wait_for(lambda: self._skips_pager(window) == expected,
                     message="the window manager has dealt with the request")
        placed = self.geometry(window)
        # The window itself learns of it a moment later; where it is scaled, it rounds.
        wait_for(lambda: all(abs(a - b) <= self.desktop.scale
                             for a, b in zip(self.frames()[0].extents, placed)),
                 message=f"the window is where it was placed, {placed}")
        return self.geometry(window)

    def _skips_pager(self, window: Window) -> bool:
        return b"SKIP_PAGER" in self.desktop.run("xprop", "-id", window.id, "_NET_WM_STATE")
