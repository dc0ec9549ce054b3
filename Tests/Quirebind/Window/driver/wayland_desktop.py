# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""A virtual desktop without X11: a Wayland compositor that nobody sees. No keys and no clicks reach
a program there; what is done to it is done through the accessibility bus, as screen readers do."""

import re
import shutil
from pathlib import Path
from typing import Mapping, Optional

from .desktop import Desktop
from .geometry import Rect
from .picture import Picture
from .waiting import wait_for


class WaylandDesktop(Desktop):
    """See Desktop; what asks the X server for anything does not work here."""

    tools = ("weston", "dbus-daemon", "setpriv", "convert")

    def environment(self, home: Path, extra: Optional[Mapping[str, str]] = None) -> dict[str, str]:
        environment = super().environment(home)
        del environment["DISPLAY"]
        environment["WAYLAND_DISPLAY"] = str(self._socket)
        # Trap: there is no keyboard here either, as there is on every real desktop; asked about input
        # from one where there is none, Qt 6.4 crashes.
        environment["QT_IM_MODULE"] = "compose"
        environment.update(extra or {})
        return environment

    def picture(self) -> Picture:
        """All of the screen, as it is now."""
        folder = self.folder / "screenshots"
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        process = self.start_process(["weston-screenshooter"], working_folder=folder)
        assert process.wait(20) == 0, self._log()
        taken, = folder.glob("*.png")
        ppm = self.run("convert", str(taken), "-depth", "8", "ppm:-")
        header = re.match(rb"P6\s(\d+)\s(\d+)\s255\s", ppm)
        assert header is not None, "an unexpected kind of picture"
        width, height = int(header[1]), int(header[2])
        return Picture(Rect(0, 0, width, height), ppm[header.end():])

    def _start_screen(self) -> None:
        daemon = self._daemon_environment()
        arguments = ["weston", "--backend=headless-backend.so", "--use-pixman", "--no-config",
                     "--idle-time=0", f"--width={self.width}", f"--height={self.height}",
                     f"--socket={self._socket.name}",
                     "--debug"]  # which allows pictures
        # The socket is made in the runtime folder, and programs are told its whole path.
        daemon["XDG_RUNTIME_DIR"] = str(self._socket.parent)
        del daemon["WAYLAND_DISPLAY"]
        with open(self.folder / "weston.log", "wb") as log:
            process = self.start_process(arguments, daemon, stdout=log, stderr=log)
        wait_for(lambda: self._socket.exists() or process.poll() is not None, timeout=20,
                 message=lambda: f"the compositor has started: {self._log()}")
        assert process.poll() is None, self._log()

    def _start_window_manager(self) -> None:
        """The compositor is one."""

    @property
    def _socket(self) -> Path:
        return self.folder / "wayland"

    def _log(self) -> str:
        return (self.folder / "weston.log").read_text(errors="replace")
