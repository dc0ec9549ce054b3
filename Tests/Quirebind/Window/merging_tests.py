# SPDX-FileCopyrightText: 2026 The Quirebind authors
# SPDX-License-Identifier: MIT

"""Merging: how it is started, and where the new file goes. What is said where it cannot be made is
in failing_merges_tests.py, what the window does meanwhile in while_merging_tests.py, and showing
the file in showing_tests.py."""

import unittest
from pathlib import Path

from driver import documents
from window_test_case import WindowTestCase


class MergingTestCase(WindowTestCase):

    def setUp(self) -> None:
        super().setUp()
        self.a = self.pdf("a.pdf", 2)
        self.b = self.pdf("b.pdf")
        self.output = self.documents / "results" / "joined.pdf"
        self.output.parent.mkdir()
        self.add(self.a, self.b)
        self.expect_rows(["a.pdf, 2 pages", "b.pdf, 1 pages"])

    def expect_merged(self, path: Path, *labels: str) -> None:
        """Waits until that file has been written, with pages that say this."""
        self.expect_button("Show in Finder")
        documents.check(path)
        self.assertEqual(documents.page_labels(path), list(labels or ("a 1", "a 2", "b 1")))

    def left_beside_output(self) -> list[str]:
        return sorted(path.name for path in self.output.parent.iterdir())


class Starting(WindowTestCase):

    def test_takes_two_documents(self) -> None:
        for rows in ([], ["a.pdf, 2 pages"]):
            self.expect_rows(rows)
            button = self.expect_enabled("Merge PDFs…", False)
            self.input.click(button)
            self.key("ctrl+Return")
            self.add(self.pdf("ab"[len(rows)] + ".pdf", 2 - len(rows)))
            self.assertEqual(self.panels(), [])
        self.press("Merge PDFs…")
        self.cancel_panel()

    def test_starts_by_button_and_keys_wherever_the_focus_is(self) -> None:
        self.add(self.pdf("a.pdf"), self.pdf("b.pdf"))
        for way in ("button", "ctrl+Return", "ctrl+KP_Enter"):
            with self.subTest(way):
                if way == "button":
                    self.press("Merge PDFs…")
                else:
                    self.key("F6", way)
                self.assertEqual(self.expect_panel().text, "Quirebind.pdf")
                self.cancel_panel()
                self.expect_enabled("Merge PDFs…")


class Saving(MergingTestCase):

    def test_writes_all_pages_in_the_order_of_the_list(self) -> None:
        self.select("b.pdf")
        self.press("Up")
        self.add(self.pdf("c d.pdf", 3), self.a)
        self.expect_text("4 documents · 8 pages")
        self.merge(self.output)
        self.expect_merged(self.output, "b 1", "a 1", "a 2", "c d 1", "c d 2", "c d 3", "a 1",
                           "a 2")
        self.assertEqual(self.left_beside_output(), ["joined.pdf"])
        self.picture().save("merged")

    def test_a_name_gets_its_suffix(self) -> None:
        for typed, written in (("v1.2", "v1.2.pdf"), ("LOUD.PDF", "LOUD.PDF"),
                               ("größer 2", "größer 2.pdf")):
            with self.subTest(typed):
                self.press("Merge PDFs…")
                self.save_as(self.output.parent / typed)
                self.expect_merged(self.output.parent / written)
                # So that the next one can be waited for.
                self.press("Down")
                self.press("Up")
                self.expect_button("Show in Finder", there=False)
        self.assertEqual(self.left_beside_output(),
                         ["LOUD.PDF", "größer 2.pdf", "v1.2.pdf"])

    def test_asks_before_it_replaces_a_file(self) -> None:
        self.output.write_bytes(b"precious")
        # With the suffix typed, the panel asks; without, only then is it known that it is there.
        for typed in (self.output, self.output.with_suffix("")):
            with self.subTest(typed.name):
                self.press("Merge PDFs…")
                self.save_as(typed, replace=False)
                field = self.expect_panel()
                self.assertIn(field.text, (str(typed), "joined.pdf"))
                self.assertEqual(self.output.read_bytes(), b"precious")
                self.save_as(typed, replace=True)
                self.expect_merged(self.output)
                self.output.write_bytes(b"precious")
                self.press("Down")
                self.press("Up")
                self.expect_button("Show in Finder", there=False)
        self.press("Merge PDFs…")
        self.save_as(self.output.with_suffix(""), replace=False)
        self.cancel_panel()
        self.expect_button("Show in Finder", there=False)
        self.assertEqual(self.output.read_bytes(), b"precious")
        self.assertEqual(self.left_beside_output(), ["joined.pdf"])

    def test_asks_nothing_where_the_name_is_that_of_a_folder(self) -> None:
        folder = self.output.with_name("folder.pdf")
        folder.mkdir()
        self.press("Merge PDFs…")
        self.save_as(folder.with_suffix(""))
        self.assertEqual(self.expect_alert(), "Is a directory")
        self.dismiss_alert()
        self.assertEqual(list(folder.iterdir()), [])
        self.assertEqual(self.left_beside_output(), ["folder.pdf"])

    def test_cancelling_changes_nothing(self) -> None:
        self.press("Merge PDFs…")
        self.cancel_panel()
        self.expect_button("Show in Finder", there=False)
        self.merge(self.output)
        written = self.output.read_bytes()
        for button in ("Merge PDFs…", "Add PDFs…"):
            self.press(button)
            self.cancel_panel()
            self.expect_button("Show in Finder")
        self.assertEqual(self.output.read_bytes(), written)
        self.expect_rows(["a.pdf, 2 pages", "b.pdf, 1 pages"])
        self.assertEqual(self.left_beside_output(), ["joined.pdf"])

    def test_can_be_done_again(self) -> None:
        self.merge(self.output)
        self.press("Down")
        second = self.output.with_name("second.pdf")
        self.merge(second)
        self.expect_merged(second, "b 1", "a 1", "a 2")
        self.press("Remove")
        self.add(self.b)
        self.press("Merge PDFs…")
        self.save_as(self.output, replace=True)
        self.expect_merged(self.output, "b 1", "b 1")
        self.expect_merged(second, "b 1", "a 1", "a 2")


if __name__ == "__main__":
    unittest.main()
