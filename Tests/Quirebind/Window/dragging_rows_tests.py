# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Bringing documents into order by dragging their rows."""

import unittest

from arranging_tests import ArrangingTestCase
from driver.geometry import Point, Rect
from driver.picture import Colour

TEAL: Colour = (0x00, 0x86, 0x98)


class DraggingRows(ArrangingTestCase):

    def line_length(self, y: int) -> int:
        """How much is to be seen of the line that shows where a row would go, where it is at that
        height, give or take two pixels."""
        area = self.document_list().extents
        picture = self.picture("sidebar")
        return max(picture.count_close_to(TEAL, 24, Rect(area.x, line, area.width, 1))
                   for line in range(y - 2, y + 3))

    def test_a_row_goes_where_it_is_dropped(self) -> None:
        self.list_documents()
        for letter, before, order in (("a", "d", "bcad"), ("d", "b", "dbca"), ("c", "b", "dcba"),
                                      ("d", None, "cbad")):
            with self.subTest(f"{letter} before {before}"):
                target = (self.row(f"{before}.pdf").extents.at(0.5, 0.2) if before is not None
                          else self.empty_space())
                self.input.drag(self.row(f"{letter}.pdf"), target)
                self.expect_order(order)
                self.expect_selected_letter(letter)

    def test_a_line_shows_where_it_would_go(self) -> None:
        self.list_documents()
        row = self.row("c.pdf").extents
        with self.input.begin_drag(self.row("a.pdf").extents.at(0.1, 0.5)) as drag:
            for down, border, other in ((0.3, row.y, row.bottom), (0.7, row.bottom, row.y)):
                # So far to the right that the picture of the row is beside the line.
                drag.move_to(row.at(0.7, down))
                self.expect(lambda: self.line_length(border) > 100, "there is a line")
                self.assertLess(self.line_length(other), 100)
                self.picture().save("dragging-a-row")
                # The outline around both columns is for files only.
                self.assertEqual(self.picture("preview").count_close_to(TEAL), 0)
            drag.move_to(self.region("merge bar").centre)
            self.expect(lambda: self.line_length(row.bottom) < 100, "the line has gone")
        self.expect_order("abcd")

    def test_the_dragged_row_does_not_hide_the_line(self) -> None:
        self.list_documents()
        row = self.row("c.pdf").extents
        with self.input.begin_drag(self.row("a.pdf")) as drag:
            for down, border in ((0.2, row.y), (0.8, row.bottom)):
                drag.move_to(row.at(0.5, down))
                self.expect(lambda: self.line_length(border) > 100, "there is a line", timeout=3)

    def test_dropped_on_itself_or_elsewhere_it_stays(self) -> None:
        self.list_documents()
        row = self.row("b.pdf").extents
        for target in (row.at(0.2, 0.9), self.row("a.pdf").extents.at(0.5, 0.8),
                       self.region("preview").centre, self.region("merge bar").centre,
                       Point(5, 995)):
            with self.subTest(target):
                self.input.drag(row.centre, target)
                self.expect_selected_letter("b")
                self.expect_order("abcd")
        with self.input.begin_drag(row.centre) as drag:
            drag.move_to(self.row("d.pdf"))
            drag.cancel()
        self.select("a.pdf")
        self.expect_order("abcd")

    def test_the_list_scrolls_where_a_row_is_held_at_its_edge(self) -> None:
        self.list_documents("abcdefghijkl")
        area = self.document_list().extents
        rows = self.rows()
        self.assertFalse(area.contains(rows[-1].extents))
        with self.input.begin_drag(rows[0]) as drag:
            drag.move_to(area.at(0.5, 0.98))
            self.expect(lambda: area.contains(rows[-1].extents), "the list scrolls to its end")
        self.expect_order("bcdefghijkla")
        self.expect_selected_letter("a")


if __name__ == "__main__":
    unittest.main()
