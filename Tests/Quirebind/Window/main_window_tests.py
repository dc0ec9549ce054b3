# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""The window as it stands: its sizes, what it says, and where files can be dropped."""

import unittest

from driver.geometry import Rect, Size
from driver.picture import Colour
from driver.waiting import NotYet
from window_test_case import WindowTestCase

TEAL: Colour = (0x00, 0x86, 0x98)


class MainWindow(WindowTestCase):

    def test_opens_at_its_size(self) -> None:
        self.assertEqual(self.program.geometry().size, Size(940, 640))

    def test_does_not_become_smaller_than_its_contents_need(self) -> None:
        self.assertEqual(self.program.resize(300, 200), Size(760, 520))
        self.assertEqual(self.program.resize(1100, 700), Size(1100, 700))

    def test_says_what_to_do_while_no_document_is_listed(self) -> None:
        for text in ("Quirebind", "Bring your pages together.", "YOUR DOCUMENTS", "0",
                     "Drop your PDFs here", "Add two or more documents, arrange them, then merge.",
                     "A little preview", "Select a document to inspect its pages.",
                     "0 documents · 0 pages", "Processed privately on your Mac"):
            self.expect_text(text)
        self.expect_enabled("Add PDFs…")
        self.expect_enabled("Merge PDFs…", False)
        for name in ("Up", "Down", "Remove", "Show in Finder"):
            self.expect_button(name, there=False)

    def test_leaves_nothing_in_the_home_folder(self) -> None:
        self.add(self.pdf("a.pdf"), self.pdf("b.pdf"))
        self.merge(self.documents / "joined.pdf")
        self.assertEqual(self.program.close_all(), 0)
        self.assertEqual(self.program.left_in_home(), [])


class Dropping(WindowTestCase):

    def test_files_dropped_on_the_preview_are_listed_in_order(self) -> None:
        files = [self.pdf("b.pdf", pages=2), self.pdf("a.pdf")]
        self.assertEqual(self.drop(files, on="preview"), "copy")
        self.expect_rows(["b.pdf, 2 pages", "a.pdf, 1 pages"])
        self.expect_text("2 documents · 3 pages")

    def test_files_dropped_on_the_sidebar_are_added_behind_the_others(self) -> None:
        self.drop([self.pdf("a.pdf")], on="sidebar")
        self.expect_rows(["a.pdf, 1 pages"])
        self.assertEqual(self.drop([self.pdf("b.pdf")], on="sidebar"), "copy")
        self.expect_rows(["a.pdf, 1 pages", "b.pdf, 1 pages"])

    def test_an_outline_around_both_columns_shows_where_files_may_be_dropped(self) -> None:
        for column in ("sidebar", "preview"):
            with self.subTest(column), self.drag([self.pdf("a.pdf")]) as files:
                files.move_to(self.region(column).centre)
                self.expect(lambda: self.outline() == self.region("columns"), "there is an outline")
                self.picture().save(f"drop-on-{column}")
                files.move_to(self.region("header").centre)
                self.expect(lambda: self.outline() is None, "the outline has gone")
                files.cancel()

    def test_the_outline_goes_when_the_drag_is_given_up(self) -> None:
        with self.drag([self.pdf("a.pdf")]) as files:
            files.move_to(self.region("preview").centre)
            self.expect(self.outline, "there is an outline")
            self.assertEqual(files.cancel(), "none")
        self.expect(lambda: self.outline() is None, "the outline has gone")
        self.expect_rows([])

    def test_files_are_refused_everywhere_else(self) -> None:
        for part in ("header", "merge bar"):
            with self.subTest(part):
                outlines = []
                action = self.drop([self.pdf("a.pdf")], on=part,
                                   while_hovering=lambda: outlines.append(self.outline()))
                self.assertEqual((action, outlines), ("none", [None]))
                self.expect_rows([])

    def outline(self) -> "Rect | None":
        """What the teal line runs around; nothing where there is no line, which is to be unbroken
        but for the corners."""
        columns = self.region("columns")
        picture = self.picture("columns")
        lines = (Rect(columns.x, columns.y, columns.width, 1),
                 Rect(columns.x, columns.bottom - 1, columns.width, 1),
                 Rect(columns.x, columns.y, 1, columns.height),
                 Rect(columns.right - 1, columns.y, 1, columns.height))
        corner = 12
        drawn = [picture.count_close_to(TEAL, 8, line) for line in lines]
        expected = [max(line.width, line.height) - 2 * corner for line in lines]
        if all(there >= length for there, length in zip(drawn, expected)):
            return columns
        if any(drawn):
            raise NotYet("the outline is drawn in part")
        return None


if __name__ == "__main__":
    unittest.main()
