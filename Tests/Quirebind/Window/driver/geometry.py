# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Points and rectangles of the screen, in its pixels."""

from typing import NamedTuple


class Point(NamedTuple):
    """A point of the screen."""

    x: int
    y: int

    def offset(self, dx: int, dy: int) -> "Point":
        """The point that far to the right and down."""
        return Point(self.x + dx, self.y + dy)


class Size(NamedTuple):
    """A width and a height."""

    width: int
    height: int


class Rect(NamedTuple):
    """A rectangle; the pixels at `right` and `bottom` are just outside it."""

    x: int
    y: int
    width: int
    height: int

    @property
    def right(self) -> int:
        return self.x + self.width

    @property
    def bottom(self) -> int:
        return self.y + self.height

    @property
    def centre(self) -> Point:
        return Point(self.x + self.width // 2, self.y + self.height // 2)

    @property
    def size(self) -> Size:
        return Size(self.width, self.height)

    def at(self, across: float, down: float) -> Point:
        """The point at these fractions of the width and height."""
        return Point(self.x + round(self.width * across), self.y + round(self.height * down))

    def inset(self, by: int) -> "Rect":
        """Smaller by that much on all four sides."""
        return Rect(self.x + by, self.y + by, self.width - 2 * by, self.height - 2 * by)

    def contains(self, other: "Rect") -> bool:
        """Whether the other one lies in this one entirely."""
        return (self.x <= other.x and self.y <= other.y and other.right <= self.right
                and other.bottom <= self.bottom)
