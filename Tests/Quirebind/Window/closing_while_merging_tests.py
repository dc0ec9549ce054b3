# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Closing a window, or all of them, while a merge runs: nothing is lost, and nobody waits in vain."""

import unittest
from typing import Callable

from driver.picture import Picture
from while_merging_tests import ROWS, WhileMergingTestCase


class Closing(WhileMergingTestCase):

    def expect_closing_message(self) -> None:
        """Waits for the message that the window waits for the merge."""
        wanted = ["The merge is still running",
                  "This window closes as soon as the new file is written."]
        self.expect(lambda: self.dialogs() and self.dialogs()[-1].texts() == wanted
                    and "active" in self.dialogs()[-1].states, "it is said why it stays open")

    def test_waits_for_the_merge(self) -> None:
        ways: dict[str, Callable[[], None]] = {
            "the close button": lambda: self.program.close(),
            "Ctrl+W": lambda: self.key("ctrl+w"),
            "Ctrl+Q": lambda: self.key("ctrl+q"),
        }
        for way, close in ways.items():
            with self.subTest(way):
                if way != "the close button":
                    self.output.unlink()
                    self.start_program()
                    self.add(*(self.documents / f"{row[0]}.pdf" for row in ROWS))
                    self.expect_rows(ROWS)
                self.begin_by_button()
                close()
                self.expect_closing_message()
                Picture.of_screen(self.desktop).save("closing-while-merging")
                self.assertTrue(self.program.alive())
                self.let_it_end()
                self.assertEqual(self.program.wait_exit(), 0)
                self.expect_merged()

    def test_can_be_taken_back(self) -> None:
        self.begin_by_button()
        ways = (lambda: self.press("Keep Window Open"), lambda: self.key("Escape"),
                lambda: self.key("Return"))
        for keep_open in ways:
            self.program.close()
            self.expect_closing_message()
            keep_open()
            self.expect(lambda: not self.dialogs(), "the message has gone")
            self.expect_button("Merging…")
        self.let_it_end()
        self.expect_button("Show in Finder")
        self.expect_merged()
        self.expect_rows(ROWS)

    def test_does_not_hide_a_failure(self) -> None:
        self.begin_by_button()
        self.program.close()
        self.expect_closing_message()
        (self.documents / "b.pdf").unlink()
        self.hold.unlink()
        self.assertEqual(self.expect_alert(), "Could not read every page of b.pdf.")
        self.dismiss_alert()
        self.expect_rows(ROWS)
        self.expect_enabled("Merge PDFs…")

    def test_of_the_program_closes_the_windows_that_do_not_merge_at_once(self) -> None:
        self.begin_by_button()
        self.key("ctrl+n")
        self.expect(lambda: len(self.program.windows()) == 2 and self.program.active_window()
                    == self.program.windows()[1], "there is a second window")
        self.key("ctrl+q")
        self.expect_closing_message()
        self.expect(lambda: len([frame for frame in self.program.frames()
                                 if frame.role == "frame"]) == 1, "the second window has closed")
        self.let_it_end()
        self.assertEqual(self.program.wait_exit(), 0)
        self.expect_merged()


if __name__ == "__main__":
    unittest.main()
