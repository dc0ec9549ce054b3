# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Dragging files into the program from another one, as from a file manager."""

import os
from pathlib import Path
from typing import Callable, Optional, Sequence, Union
from urllib.parse import quote_from_bytes

from .desktop import Desktop
from .geometry import Point
from .input import Drag, Input, Target
from .program import Program
from .waiting import NotYet, wait_for

# Half of the 120 x 80 of its window.
_TO_THE_MIDDLE = (60, 40)


def file_uri(path: Union[str, bytes, Path]) -> str:
    """The file: URI of a path, all bytes but the usual ones escaped, as file managers write it."""
    return "file://" + quote_from_bytes(os.fsencode(path), safe="/-._~!$&'()*+,=:@")


class DragSource:
    """A program that files can be dragged out of; it stands in the top left corner of the screen,
    above all other windows.

        source = DragSource(desktop, "build/release/.../window_drag_source")
        assert source.drop([file_uri("/a.pdf")], point) == "copy"
    """

    def __init__(self, desktop: Desktop, binary: Union[str, Path],
                 origin: Point = Point(0, 0)) -> None:
        self._desktop = desktop
        self._hand = Input(desktop)
        self._list = desktop.folder / "dragged-uris"
        self._program = Program(desktop, binary, [str(origin.x), str(origin.y), self._list])
        wait_for(self._program.windows, message="the drag source shows")
        area = self._program.geometry()
        self._middle = Point(area.x + _TO_THE_MIDDLE[0], area.y + _TO_THE_MIDDLE[1])

    def begin(self, uris: Union[bytes, Sequence[str]]) -> "FileDrag":
        """Begins to drag: a list of URIs, or the bytes of one as they shall be delivered."""
        if not isinstance(uris, bytes):
            uris = "".join(f"{uri}\r\n" for uri in uris).encode()
        self._list.write_bytes(uris)
        active = wait_for(self._active_window, message="a window has the focus")
        drag = self._hand.begin_drag(self._middle)
        return FileDrag(drag, self._program, active)

    def drop(self, uris: Union[bytes, Sequence[str]], target: Target,
             while_hovering: Optional[Callable[[], object]] = None) -> str:
        """Drags them to a place and lets go there; returns what became of it: "copy", "move",
        "link", or "none" where they were refused."""
        with self.begin(uris) as dragging:
            dragging.move_to(target)
            if while_hovering is not None:
                while_hovering()
            return dragging.drop()

    def end(self) -> None:
        """Ends the program."""
        self._program.terminate()

    def _active_window(self) -> int:
        # Trap: one that has just closed is still said to have the focus for a moment.
        active = self._desktop.active_window()
        try:
            state = self._desktop.run("xprop", "-id", hex(active), "WM_STATE")
        except RuntimeError as error:
            raise NotYet(str(error)) from None
        return active if b"Normal" in state else 0


class FileDrag:
    """Files that are being dragged. A `with` around it lets go of them at its end.

    The press that began it gave the focus to the source, as in life: the program is dropped onto
    while another one is active. In the end the focus goes back to the window that had it.
    """

    def __init__(self, drag: Drag, source: Program, active_before: int) -> None:
        self._drag = drag
        self._source = source
        self._active_before = active_before
        self._earlier = len(source.stdout().splitlines())

    def __enter__(self) -> "FileDrag":
        return self

    def __exit__(self, *_: object) -> None:
        if self._drag.down:
            self.drop()

    def move_to(self, target: Target) -> None:
        """Moves on to there; returns when that had time to be noticed."""
        self._drag.move_to(target)

    def drop(self) -> str:
        """Lets go, and waits for what becomes of it: "copy", "move", "link" or "none"."""
        self._drag.release()
        return self._outcome()

    def cancel(self) -> str:
        """Presses Escape instead."""
        self._drag.cancel()
        return self._outcome()

    def _outcome(self) -> str:
        lines = wait_for(lambda: self._source.stdout().splitlines()[self._earlier:],
                         message="the drag is over")
        if self._active_before:
            self._source.desktop.activate(self._active_before)
            wait_for(lambda: self._source.active_window() is None,
                     message="the program that was active before the drag is so again")
        return lines[-1]
