# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""What a screen reader says of its own accord: that a merge runs, what came of it, that something
went wrong. Whoever does not see the window has no other way to learn of it."""

import unittest

from driver import documents
from driver.announcements import Announcements
from window_test_case import ALERT_TITLE, WindowTestCase


class Announced(WindowTestCase):
    program_variable = "QUIREBIND_HELD_MERGE_PROGRAM"

    def setUp(self) -> None:
        super().setUp()
        self.announcements = Announcements(self.desktop)
        self.addCleanup(self.announcements.end)

    def told(self, role: str) -> list[str]:
        """The names of all of that role that were told of."""
        return [name for heard, name in self.announcements.heard() if heard == role]

    def hold_merges(self) -> None:
        (self.documents / "hold").touch()

    def let_merges_go(self) -> None:
        (self.documents / "hold").unlink(missing_ok=True)

    def test_that_a_merge_runs_and_has_ended(self) -> None:
        self.add(self.pdf("a.pdf", 2), self.pdf("b.pdf"))
        self.assertEqual(self.told("notification"), [])
        self.hold_merges()
        self.addCleanup(self.let_merges_go)
        self.press("Merge PDFs…")
        self.save_as(self.documents / "joined.pdf")
        self.expect(lambda: self.told("notification") == ["Merging…"], "it is said that it runs")
        self.assertEqual(self.told("progress bar"), ["Merging…"])
        self.let_merges_go()
        self.expect(lambda: self.told("notification") == ["Merging…", "joined.pdf, 3 pages"],
                    "it is said what came of it")
        self.assertEqual(self.button("Show in Finder").description, "joined.pdf")
        # Nothing is said again, nor kept once it no longer holds.
        self.key("F6", "F6", "F6")
        self.assertEqual(len(self.window.find_all("notification")), 1)
        self.press("Remove")
        self.expect(lambda: not self.window.find_all("notification"), "it is taken back")
        self.assertEqual(len(self.told("notification")), 2)

    def test_that_a_merge_has_failed(self) -> None:
        self.add(self.pdf("a.pdf"), self.pdf("b.pdf"))
        self.press("Merge PDFs…")
        self.save_as(self.documents / "a.pdf", replace=True)
        message = self.expect_alert()
        self.expect(lambda: self.told("dialog")[-1:] == [ALERT_TITLE], "the alert is told of")
        self.assertEqual(self.dialogs()[0].description, message)
        self.assertNotIn("a.pdf, 2 pages", self.told("notification"))

    def test_that_a_document_could_not_be_added(self) -> None:
        documents.damaged_pdf(self.documents / "damaged.pdf")
        self.key("ctrl+o")
        self.choose(self.documents / "damaged.pdf")
        self.expect_alert()
        self.expect(lambda: self.told("dialog")[-1:] == [ALERT_TITLE], "the alert is told of")
        self.expect_focus("OK")


if __name__ == "__main__":
    unittest.main()
