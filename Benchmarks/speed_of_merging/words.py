# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What stands on generated pages: text that compresses like text, and data that hardly does."""

import random

_SYLLABLES = ["ba", "co", "den", "el", "fir", "go", "hu", "in", "ka", "lo", "men", "no", "or", "pe",
              "qui", "ra", "st", "ten", "ul", "ver", "wi", "ex", "ya", "zon"]
_VOCABULARY = 3000
_LINES = 4000
_SIX_BITS = bytes(value & 63 for value in range(256))


class Words:
    """A source of text and data that gives the same for the same name, on every machine."""

    def __init__(self, name: str) -> None:
        self._random = random.Random(name)
        words = ["".join(self._random.choices(_SYLLABLES, k=self._random.randint(1, 4)))
                 for _ in range(_VOCABULARY)]
        self._lines = [" ".join(self._random.choices(words, k=12)).encode()
                       for _ in range(_LINES)]

    def page(self, heading: str, lines: int = 32) -> bytes:
        """The content stream of a page of text, with its heading."""
        text = b"".join(b"(%s) Tj T*\n" % line
                        for line in self._random.choices(self._lines, k=lines))
        return (b"BT /F1 14 Tf 16 TL 72 760 Td (%s) Tj T*\n/F2 10 Tf 20 TL\n%sET\n"
                % (heading.encode(), text))

    def incompressible(self, size: int) -> bytes:
        """Bytes as they are in a photograph."""
        return self._random.randbytes(size)

    def font(self, size: int) -> bytes:
        """Bytes that come to about this size when they are compressed."""
        return self._random.randbytes(size * 4 // 3).translate(_SIX_BITS)
