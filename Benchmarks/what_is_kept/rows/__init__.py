# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The rows of the table, by what they are about."""

from . import annotations, document, forms, layers, links, pages, structure

ALL = [
    ("Links", links.ROWS),
    ("Notes, files and articles", annotations.ROWS),
    ("Forms", forms.ROWS),
    ("Layers", layers.ROWS),
    ("Tags", structure.ROWS),
    ("Pages", pages.ROWS),
    ("Documents", document.ROWS),
]
