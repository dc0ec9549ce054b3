# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What is measured: which documents are joined, and who is asked to."""

from pathlib import Path
from typing import Callable, NamedTuple, Optional, Sequence

from . import large_files, small_files
from .sources import Names
from .words import Words

# Puts the files into a folder; gives their names in the order in which they are joined, and the
# number of all their pages.
Make = Callable[[Path], Names]
Choose = Callable[[Path, int], Names]

SMALL = 0.05  # of the sizes at full scale
WINDOW = "window"  # among their names, what is not a merge but what the window does

# What is looked at to see whether twice as much costs twice as much.
_LINEAR = ["books-classic-small", "books-classic-large", "books-packed-small", "books-packed-large",
           "fields", "names"]


class Workload(NamedTuple):
    name: str
    about: str  # {files} stands for their number
    folder: str  # of its files; the same for workloads that use the same files
    make: Make
    only: int = 0  # of the files, the first so many; 0 for all
    peers: bool = True  # whether other tools are asked, too
    merges: bool = True  # or opens each file and counts its pages


def all_workloads(factor: float, choose: Optional[Choose]) -> list[Workload]:
    """All of them, their sizes multiplied by the factor. `choose` finds so many real documents;
    without it there is no mixed workload."""
    size = _size(factor)
    mixed, opened, tiny, scans = size(800, 10), size(5000), size(5000), size(300)
    invoices, forms = size(200), size(1000)
    workloads = [
        Workload("one-page", f"{size(2000):,} files of one page of about 20 KB",
                 f"one-page-{opened}", lambda folder: _one_page(folder, opened), size(2000)),
        Workload("tiny", f"{tiny:,} files of one page of less than 1 KB", f"tiny-{tiny}",
                 lambda folder: _tiny(folder, tiny)),
        Workload("scans", f"{scans:,} files of one page, which is an image of 3.5 MB",
                 f"scans-{scans}", lambda folder: _scans(folder, scans)),
        *_books(size),
        Workload("invoices", f"{invoices:,} files with the same two fonts of 60 KB and the same "
                 "logo of 30 KB", f"invoices-{invoices}",
                 lambda folder: _invoices(folder, invoices)),
        Workload("forms", f"the same form of 20 fields, {forms:,} times", f"forms-{forms}",
                 lambda folder: _forms(folder, forms)),
        Workload("opening", f"{opened:,} files of one page, opened for the number of their pages",
                 f"one-page-{opened}", lambda folder: _one_page(folder, opened), merges=False),
        *_linear("fields", "a form of {:,} fields", large_files.write_fields, 20, size),
        *_linear("names", "{:,} named destinations, each with a link to it",
                 large_files.write_destinations, 10, size),
    ]
    if choose:
        chosen = choose
        workloads.insert(0, Workload("mixed", "{files:,} real documents of all kinds",
                                     f"mixed-{mixed}", lambda folder: chosen(folder, mixed)))
    return workloads


def shown(factor: float) -> tuple[Workload, Workload]:
    """What the window is measured with: files to be added at once, and a document to be scrolled
    through."""
    size = _size(factor)
    opened, files, pages = size(5000), size(1000), size(200, 40)
    return (Workload(WINDOW, f"{files:,} files of one page", f"one-page-{opened}",
                     lambda folder: _one_page(folder, opened), files),
            Workload(WINDOW, f"a document of {pages:,} pages", f"book-{pages}",
                     lambda folder: _book(folder, pages)))


def selected(workloads: Sequence[Workload], wanted: Sequence[str]) -> list[Workload]:
    """Those of a name that is wanted, or begins with one and a hyphen; "linear" is some of them."""
    wanted = [name for word in wanted for name in (_LINEAR if word == "linear" else [word])]
    for name in wanted:
        if name != WINDOW and not any(_goes_by(workload, name) for workload in workloads):
            raise SystemExit(f"there is no workload {name!r}; there are "
                             + ", ".join([*(workload.name for workload in workloads), WINDOW]))
    return [workload for workload in workloads
            if not wanted or any(_goes_by(workload, name) for name in wanted)]


def _goes_by(workload: Workload, name: str) -> bool:
    return workload.name == name or workload.name.startswith(name + "-")


def _size(factor: float) -> Callable[..., int]:
    """Sizes at that scale, from those at full scale and the least that makes sense."""
    return lambda full, least=2: max(least, round(full * factor))


def _books(size: Callable[[int], int]) -> list[Workload]:
    books = []
    for kind, packed, about in (("classic", False, "with a classic table"),
                                ("packed", True, "with object streams")):
        for name, full in (("small", 10_000), ("medium", 100_000), ("large", 400_000)):
            half = max(1, size(full) // 2)
            books.append(Workload(
                f"books-{kind}-{name}", f"2 files of {half:,} pages each, {about}",
                f"books-{kind}-{half}",
                lambda folder, half=half, packed=packed: _two_books(folder, half, packed)))
    return books


def _linear(kind: str, about: str, write: Callable[[Path, int], None], on_page: int,
            size: Callable[[int], int]) -> list[Workload]:
    """The same kind of document in two sizes."""
    return [Workload(f"{kind}-{name}", "1 file with " + about.format(size(full)),
                     f"{kind}-{size(full)}",
                     lambda folder, count=size(full): _single(folder, write, count, on_page),
                     peers=False)
            for name, full in (("small", 10_000), ("large", 160_000))]


def _file_names(count: int) -> list[str]:
    return [f"{index:04}.pdf" for index in range(count)]


def _one_page(folder: Path, count: int) -> Names:
    words, names = Words("one-page"), _file_names(count)
    for index, name in enumerate(names):
        small_files.write_one_page(folder / name, index, words)
    return Names(names, [1] * count)


def _tiny(folder: Path, count: int) -> Names:
    names = _file_names(count)
    for index, name in enumerate(names):
        small_files.write_tiny(folder / name, index)
    return Names(names, [1] * count)


def _scans(folder: Path, count: int) -> Names:
    words, names = Words("scans"), _file_names(count)
    for name in names:
        small_files.write_scan(folder / name, words)
    return Names(names, [1] * count)


def _invoices(folder: Path, count: int) -> Names:
    invoices, names = small_files.Invoices(Words("invoices")), _file_names(count)
    for index, name in enumerate(names):
        invoices.write(folder / name, index)
    return Names(names, [1] * count)


def _forms(folder: Path, count: int) -> Names:
    small_files.write_form(folder / "form.pdf")
    return Names(["form.pdf"] * count, [1] * count)


def _two_books(folder: Path, pages: int, packed: bool) -> Names:
    for name in ("a.pdf", "b.pdf"):
        large_files.write_book(folder / name, pages, packed, Words("book " + name))
    return Names(["a.pdf", "b.pdf"], [pages] * 2)


def _book(folder: Path, pages: int) -> Names:
    large_files.write_book(folder / "a.pdf", pages, False, Words("book"))
    return Names(["a.pdf"], [pages])


def _single(folder: Path, write: Callable[[Path, int], None], count: int, on_page: int) -> Names:
    write(folder / "a.pdf", count)
    return Names(["a.pdf"], [(count + on_page - 1) // on_page])
