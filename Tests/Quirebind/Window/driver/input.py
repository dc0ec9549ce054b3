# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Keys and pointer, as from a keyboard and a mouse: the events go to whatever has the focus or is
under the pointer, never to a window directly, which programs can tell from real ones."""

import time
from typing import Callable, Optional, Union

from .accessibility import Accessible
from .desktop import Desktop
from .geometry import Point

Target = Union[Point, Accessible]

LEFT, MIDDLE, RIGHT = 1, 2, 3
_WHEEL_UP, _WHEEL_DOWN = 4, 5

# A toolkit sees a drag, and drag-and-drop finds the window below the pointer, only where the
# pointer makes its way in steps with time between them; and a drop counts only when the target has
# answered the last move. These were measured to be enough on a busy machine.
_MOVES = 12
_BETWEEN_MOVES = 0.03
_BEFORE_RELEASE = 0.25


class Input:
    """The keyboard and mouse of a desktop.

    Traps: two clicks at one place within 400 ms are a double click to the program. Text that is
    typed should be ASCII: for other characters the keyboard is rearranged while typing, and the
    program may still read the old arrangement; set_text of a field takes anything.
    """

    def __init__(self, desktop: Desktop) -> None:
        self._desktop = desktop

    # Keys.

    def key(self, *keys: str) -> None:
        """Presses keys one after another, such as "Return", "alt+Up", "ctrl+a"."""
        self._do("key", *keys)

    def type(self, text: str) -> None:
        """Types ASCII text."""
        self._do("type", "--delay", "4", text)

    # The pointer.

    def move_to(self, target: Target) -> None:
        """Moves the pointer there, in one jump."""
        point = centre(target)
        self._do("mousemove", str(point.x), str(point.y))

    def click(self, target: Target, button: int = LEFT) -> None:
        """Clicks at a point, or into the middle of something."""
        point = centre(target)
        self._do("mousemove", str(point.x), str(point.y), "click", str(button))

    def right_click(self, target: Target) -> None:
        self.click(target, RIGHT)

    def double_click(self, target: Target) -> None:
        point = centre(target)
        self._do("mousemove", str(point.x), str(point.y), "click", "--repeat", "2", "--delay", "40",
                 str(LEFT))

    def wheel(self, target: Target, steps: int) -> None:
        """Turns the wheel over it, towards the user (down) for a positive number of steps."""
        point = centre(target)
        button = _WHEEL_DOWN if steps > 0 else _WHEEL_UP
        self._do("mousemove", str(point.x), str(point.y), "click", "--repeat", str(abs(steps)),
                 "--delay", "20", str(button))

    # Dragging.

    def begin_drag(self, origin: Target) -> "Drag":
        """Presses the button there. A `with` around the drag lets go of it at its end."""
        return Drag(self, centre(origin))

    def drag(self, origin: Target, target: Target,
             while_hovering: Optional[Callable[[], object]] = None) -> None:
        """Drags from one place to another; calls `while_hovering` before letting go there."""
        with self.begin_drag(origin) as dragging:
            dragging.move_to(target)
            if while_hovering is not None:
                while_hovering()

    def _do(self, *commands: str) -> None:
        self._desktop.run("xdotool", *commands)


class Drag:
    """A drag that is under way: the button is down."""

    def __init__(self, hand: Input, origin: Point) -> None:
        self._hand = hand
        self._at = origin
        self.down = True
        hand._do("mousemove", str(origin.x), str(origin.y), "mousedown", str(LEFT))

    def __enter__(self) -> "Drag":
        return self

    def __exit__(self, *_: object) -> None:
        self.release()

    def move_to(self, target: Target) -> None:
        """Moves on to there, in small steps, and returns when that had time to be noticed."""
        end = centre(target)
        commands: list[str] = []
        for step in range(1, _MOVES + 1):
            commands += ["mousemove", str(self._at.x + (end.x - self._at.x) * step // _MOVES),
                         str(self._at.y + (end.y - self._at.y) * step // _MOVES),
                         "sleep", str(_BETWEEN_MOVES)]
        began = time.monotonic()
        self._hand._do(*commands, "sleep", str(_BEFORE_RELEASE))
        # Where that took much longer, the machine is so busy that all programs need longer.
        late = time.monotonic() - began - _MOVES * _BETWEEN_MOVES - _BEFORE_RELEASE
        if late > _BEFORE_RELEASE:
            time.sleep(min(5.0, 4 * late))
        self._at = end

    def cancel(self) -> None:
        """Presses Escape, then lets go."""
        self._hand.key("Escape")
        self.release()

    def release(self) -> None:
        """Lets go of the button, where that has not been done."""
        if self.down:
            self.down = False
            self._hand._do("mouseup", str(LEFT))


def centre(target: Target) -> Point:
    """A point itself, or the middle of something, which must show."""
    if isinstance(target, Point):
        return target
    assert target.showing, f"{target} does not show, it cannot be clicked"
    return target.extents.centre
