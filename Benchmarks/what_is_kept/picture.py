# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Comparing pictures of pages."""

# Of all pixels: the same letters come out slightly different from another font file.
_MAY_DIFFER = 0.01
_FAR = 64  # of 255, in any of red, green and blue


def looks_like(one: bytes, other: bytes) -> bool:
    """Whether two portable pixmaps show the same to the naked eye."""
    if len(one) != len(other) or one[:15] != other[:15]:
        return False
    far = sum(abs(a - b) > _FAR for a, b in zip(one, other) if a != b)
    return far <= _MAY_DIFFER * len(one)
