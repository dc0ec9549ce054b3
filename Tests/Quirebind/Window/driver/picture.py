# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Pictures of the screen, to look at single pixels and colours."""

import os
import struct
import zlib
from pathlib import Path
from typing import Optional

from .desktop import Desktop
from .geometry import Point, Rect

Colour = tuple[int, int, int]


class Picture:
    """The pixels of a part of the screen. Points and regions are those of the screen, so that
    extents of what is on it can be used as they are."""

    def __init__(self, area: Rect, pixels: bytes) -> None:
        assert len(pixels) == area.width * area.height * 3
        self.area = area
        self._pixels = pixels

    @staticmethod
    def of_screen(desktop: Desktop) -> "Picture":
        """All of the screen, as it is now."""
        return Picture.of(desktop, Rect(0, 0, desktop.width, desktop.height))

    @staticmethod
    def of(desktop: Desktop, area: Rect) -> "Picture":
        """That part of the screen, with whatever lies above the window that is there."""
        left, top = max(area.x, 0), max(area.y, 0)
        part = Rect(left, top, min(area.right, desktop.width) - left,
                    min(area.bottom, desktop.height) - top)
        assert min(part.size) > 0, f"{area} is not on the screen"
        ppm = desktop.run("import", "-silent", "-window", "root", "-crop",
                          f"{part.width}x{part.height}+{part.x}+{part.y}", "-depth", "8", "ppm:-")
        magic, width, height, depth = ppm.split(None, 4)[:4]
        assert (magic, depth) == (b"P6", b"255"), "an unexpected kind of picture"
        assert (int(width), int(height)) == part.size, "a picture of an unexpected size"
        return Picture(part, ppm[len(ppm) - part.width * part.height * 3:])

    def crop(self, area: Rect) -> "Picture":
        """The part of it within `area`."""
        left, top = max(area.x, self.area.x), max(area.y, self.area.y)
        right, bottom = min(area.right, self.area.right), min(area.bottom, self.area.bottom)
        part = Rect(left, top, max(0, right - left), max(0, bottom - top))
        return Picture(part, b"".join(self._row(part, y) for y in range(part.y, part.bottom)))

    def pixel(self, x: int, y: int) -> Colour:
        """The colour of a point of the screen, red, green and blue from 0 to 255."""
        at = ((y - self.area.y) * self.area.width + x - self.area.x) * 3
        red, green, blue = self._pixels[at:at + 3]
        return red, green, blue

    def points_close_to(self, colour: Colour, tolerance: int = 8,
                        region: Optional[Rect] = None) -> list[Point]:
        """The points of `region` whose colour differs by `tolerance` at most in each component."""
        part = self.crop(region) if region is not None else self
        matches = part._matches(colour, tolerance)
        found = []
        at = matches.find(1)
        while at >= 0:
            found.append(Point(part.area.x + at % part.area.width,
                               part.area.y + at // part.area.width))
            at = matches.find(1, at + 1)
        return found

    def count_close_to(self, colour: Colour, tolerance: int = 8,
                       region: Optional[Rect] = None) -> int:
        """How many points of `region` have that colour, or nearly."""
        part = self.crop(region) if region is not None else self
        return part._matches(colour, tolerance).count(1)

    def bounds_of(self, colour: Colour, tolerance: int = 8,
                  region: Optional[Rect] = None) -> Optional[Rect]:
        """The smallest rectangle around all points of that colour; nothing where there is none."""
        points = self.points_close_to(colour, tolerance, region)
        if not points:
            return None
        left, right = min(p.x for p in points), max(p.x for p in points)
        top, bottom = points[0].y, points[-1].y
        return Rect(left, top, right - left + 1, bottom - top + 1)

    def colours(self) -> dict[Colour, int]:
        """How often each colour occurs, the most frequent first."""
        count: dict[Colour, int] = {}
        for colour in zip(self._pixels[0::3], self._pixels[1::3], self._pixels[2::3]):
            count[colour] = count.get(colour, 0) + 1
        return dict(sorted(count.items(), key=lambda item: -item[1]))

    def save(self, name: str) -> Optional[Path]:
        """Writes it as a PNG to the folder that QUIREBIND_SCREENSHOTS names, for people to look at;
        does nothing where that is not set."""
        folder = os.environ.get("QUIREBIND_SCREENSHOTS")
        if not folder:
            return None
        path = Path(folder) / f"{name}.png"
        path.parent.mkdir(parents=True, exist_ok=True)
        rows = b"".join(b"\0" + self._row(self.area, y)
                        for y in range(self.area.y, self.area.bottom))
        header = struct.pack(">IIBBBBB", self.area.width, self.area.height, 8, 2, 0, 0, 0)
        path.write_bytes(b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", header)
                         + _chunk(b"IDAT", zlib.compress(rows, 6)) + _chunk(b"IEND", b""))
        return path

    def _matches(self, colour: Colour, tolerance: int) -> bytes:
        """A byte for each point: 1 where it has that colour, or nearly. In bulk, since a loop over
        a million points would take longer than all else in a test."""
        matches = -1
        for component, wanted in enumerate(colour):
            near = bytes(abs(value - wanted) <= tolerance for value in range(256))
            matches &= int.from_bytes(self._pixels[component::3].translate(near), "big")
        return matches.to_bytes(len(self._pixels) // 3, "big")

    def _row(self, part: Rect, y: int) -> bytes:
        begin = ((y - self.area.y) * self.area.width + part.x - self.area.x) * 3
        return self._pixels[begin:begin + part.width * 3]


def _chunk(kind: bytes, data: bytes) -> bytes:
    return (struct.pack(">I", len(data)) + kind + data
            + struct.pack(">I", zlib.crc32(kind + data)))
