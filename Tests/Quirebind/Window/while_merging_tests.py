# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What the window shows and allows while a merge runs. What closing it does then is in
closing_while_merging_tests.py."""

import unittest
from typing import Callable

from driver import documents
from driver.picture import Picture
from window_test_case import WindowTestCase

ROWS = ["a.pdf, 2 pages", "b.pdf, 1 pages", "c.pdf, 1 pages"]
LABELS = ["a 1", "a 2", "b 1", "c 1"]


class WhileMergingTestCase(WindowTestCase):
    """The merge begins to work only when `let_it_end` is called."""

    program_variable = "QUIREBIND_HELD_MERGE_PROGRAM"

    def setUp(self) -> None:
        super().setUp()
        self.output = self.documents / "results" / "joined.pdf"
        self.output.parent.mkdir()
        self.hold = self.output.parent / "hold"
        self.add(self.pdf("a.pdf", 2), self.pdf("b.pdf"), self.pdf("c.pdf"))
        self.expect_rows(ROWS)

    def begin(self, start: Callable[[], object]) -> None:
        """Starts a merge in the way that `start` does."""
        self.hold.touch()
        # Where a test fails the program could not end otherwise.
        self.addCleanup(self.hold.unlink, missing_ok=True)
        start()
        self.save_as(self.output)
        self.expect_button("Merging…")

    def begin_by_button(self) -> None:
        self.begin(lambda: self.press("Merge PDFs…"))

    def let_it_end(self) -> None:
        self.assertFalse(self.output.exists())
        self.hold.unlink()

    def expect_merged(self) -> None:
        documents.check(self.output)
        self.assertEqual(documents.page_labels(self.output), LABELS)
        self.assertEqual([path.name for path in self.output.parent.iterdir()], ["joined.pdf"])


class Window(WhileMergingTestCase):

    def test_says_that_it_merges_and_allows_nothing_else(self) -> None:
        self.begin_by_button()
        spinner = self.window.find("progress bar")
        self.assertEqual(spinner.name, "Merging…")
        self.assertTrue(self.region("merge bar").contains(spinner.extents))
        self.expect_text("3 documents · 4 pages")
        self.expect_button("Merge PDFs…", there=False)
        self.expect_button("Show in Finder", there=False)
        self.assertFalse(self.document_list().enabled)
        for button in ("Add PDFs…", "Up", "Down", "Remove", "Merging…"):
            self.expect_enabled(button, False)
            self.input.click(self.button(button))
        self.picture().save("merging")
        self.input.click(self.row("c.pdf"))
        self.input.right_click(self.row("b.pdf"))
        self.key("Delete", "alt+Down", "ctrl+o", "ctrl+Return", "F6", "Delete", "alt+Down")
        self.input.drag(self.row("a.pdf"), self.row("c.pdf").extents.at(0.5, 0.9))
        for column in ("sidebar", "preview"):
            self.assertEqual(self.drop([self.pdf("d.pdf")], on=column), "none")
        self.let_it_end()
        # All that has been tried was dealt with before the end of the merge.
        self.expect_button("Show in Finder")
        self.expect_rows(ROWS)
        self.expect_selected(ROWS[0])
        self.assertEqual(self.dialogs(), [])
        self.assertEqual(self.window.find_all("progress bar"), [])
        for button in ("Add PDFs…", "Up", "Down", "Remove", "Merge PDFs…"):
            self.expect_enabled(button)
        self.expect_merged()

    def test_goes_on_drawing_and_can_be_resized(self) -> None:
        self.begin_by_button()
        seen = set()

        def turns() -> bool:
            seen.add(str(Picture.of(self.desktop,
                                    self.window.find("progress bar").extents).colours()))
            return len(seen) > 2
        self.expect(turns, "the spinner turns")
        self.assertEqual(self.program.resize(1200, 800), (1200, 800))
        columns = self.expect(lambda: self.region("columns").width == 1200
                              and self.region("columns"), "the content has the new width")

        def drawn() -> bool:
            # Nothing is left of the black that is behind all windows.
            picture = self.picture()
            return picture.area.height == 800 and picture.count_close_to((0, 0, 0), 2) < 2000
        self.expect(drawn, "all of the window is drawn")
        self.assertGreater(columns.height, 467)
        self.let_it_end()
        self.expect_button("Show in Finder")

    def test_gives_the_focus_back_to_where_it_was(self) -> None:
        self.select("b.pdf")
        self.begin(lambda: self.key("ctrl+Return"))
        self.let_it_end()
        self.expect_button("Show in Finder")
        self.expect_focus(ROWS[1])
        self.key("alt+Up")
        self.expect_rows([ROWS[1], ROWS[0], ROWS[2]])
        self.key("alt+Down", "F6", "F6")
        self.expect_focus("Merge PDFs…")
        self.output.unlink()
        self.begin(lambda: self.key("space"))
        self.let_it_end()
        self.expect_button("Show in Finder")
        self.expect_focus("Merge PDFs…")

    def test_leaves_another_window_alone(self) -> None:
        self.begin_by_button()
        first = self.window
        self.key("ctrl+n")
        self.look_at(self.expect(
            lambda: next((frame for frame in self.program.frames() if frame != first), None),
            "there is a second window"))
        self.expect(lambda: "active" in self.window.states, "it has the focus")
        self.key("ctrl+o")
        self.choose(self.documents / "c.pdf", self.documents / "a.pdf")
        self.expect_rows([ROWS[2], ROWS[0]])
        self.key("ctrl+Return")
        self.save_as(self.documents / "other.pdf")
        self.expect_button("Show in Finder")
        self.assertEqual(documents.page_labels(self.documents / "other.pdf"), ["c 1", "a 1", "a 2"])
        self.assertTrue(first.find("progress bar").showing)
        self.let_it_end()
        self.look_at(first)
        self.expect_button("Show in Finder")
        self.expect_merged()


if __name__ == "__main__":
    unittest.main()
